#include <zettesting/TestPlugins.h>

#include <stdexcept>

#include <zettesting/Emulation.h>

#include <windows.h>

namespace zettesting {

namespace fs = std::filesystem;

namespace {

void MakeLink(const fs::path& target, const fs::path& link, DWORD kind)
{
    constexpr DWORD withoutPrivilege = 2;
    if (!::CreateSymbolicLinkW(link.c_str(), target.c_str(), kind | withoutPrivilege))
        throw std::runtime_error("cannot make the link " + link.string());
}

} // namespace

fs::path MakeLinkCycle(const fs::path& folder)
{
    const fs::path cycle = folder / "cycle";
    fs::create_directory(cycle);
    // Wine 8 makes no links: CreateSymbolicLink claims success and does nothing.
    if (IsWine())
        return cycle;
    MakeLink(cycle, cycle / "again", SYMBOLIC_LINK_FLAG_DIRECTORY);
    MakeLink(folder, cycle / "up", SYMBOLIC_LINK_FLAG_DIRECTORY);
    const fs::path first = (cycle / "first").concat(ModuleSuffix());
    const fs::path second = (cycle / "second").concat(ModuleSuffix());
    MakeLink(second, first, 0);
    MakeLink(first, second, 0);
    return cycle;
}

bool MakeFolderLink(const fs::path& target, const fs::path& link)
{
    if (IsWine())
        return false;
    MakeLink(target, link, SYMBOLIC_LINK_FLAG_DIRECTORY);
    return true;
}

} // namespace zettesting
