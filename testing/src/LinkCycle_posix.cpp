#include <zettesting/TestPlugins.h>

namespace zettesting {

namespace fs = std::filesystem;

fs::path MakeLinkCycle(const fs::path& folder)
{
    const fs::path cycle = folder / "cycle";
    fs::create_directory(cycle);
    fs::create_directory_symlink(cycle, cycle / "again");
    fs::create_directory_symlink(folder, cycle / "up");
    const fs::path first = (cycle / "first").concat(ModuleSuffix());
    const fs::path second = (cycle / "second").concat(ModuleSuffix());
    fs::create_symlink(second, first);
    fs::create_symlink(first, second);
    return cycle;
}

bool MakeFolderLink(const fs::path& target, const fs::path& link)
{
    fs::create_directory_symlink(target, link);
    return true;
}

} // namespace zettesting
