#include "process/SharedLibraries.h"

#include <cstddef>
#include <utility>

#include <dlfcn.h>
#include <link.h>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginhost {

namespace {

std::vector<std::string> LoadedLibraries()
{
    std::vector<std::string> names;
    ::dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* list) {
            if (info->dlpi_name && *info->dlpi_name)
                static_cast<std::vector<std::string>*>(list)->emplace_back(info->dlpi_name);
            return 0;
        },
        &names);
    return names;
}

/// Two names of one folder become the same.
std::filesystem::path RealPath(const std::filesystem::path& folder)
{
    std::error_code error;
    return std::filesystem::weakly_canonical(folder, error);
}

/// The folders in which the system looks for a library that this program names without one.
std::set<std::filesystem::path> SystemFolders()
{
    void* const program = ::dlopen(nullptr, RTLD_LAZY);
    Dl_serinfo size{};
    std::set<std::filesystem::path> folders;
    if (program && ::dlinfo(program, RTLD_DI_SERINFOSIZE, &size) == 0) {
        std::vector<std::max_align_t> memory(size.dls_size / sizeof(std::max_align_t) + 1);
        auto* const list = reinterpret_cast<Dl_serinfo*>(memory.data());
        *list = size;
        if (::dlinfo(program, RTLD_DI_SERINFO, list) == 0)
            for (unsigned number = 0; number < list->dls_cnt; ++number)
                folders.insert(RealPath(list->dls_serpath[number].dls_name));
    }
    if (program)
        ::dlclose(program);
    return folders;
}

} // namespace

SharedLibraries::SharedLibraries(Keeps which)
{
    if (which == Keeps::Systems)
        systemFolders = SystemFolders();
}

SharedLibraries::~SharedLibraries()
{
    LetGo();
}

bool SharedLibraries::IsSystems(const std::string& library) const
{
    return systemFolders->contains(RealPath(std::filesystem::path(library).parent_path()));
}

void SharedLibraries::KeepAllBut(const std::wstring& modulePath)
{
    const std::string module = zetcore::string::UTF16to8(modulePath);
    // Another module may have loaded it.
    std::erase_if(held, [&](const Held& library) {
        if (library.name != module)
            return false;
        kept.erase(library.name);
        ::dlclose(library.handle);
        return true;
    });
    for (const std::string& name : LoadedLibraries()) {
        if (name == module || !kept.insert(name).second)
            continue;
        // A library whose handle is dropped here stays until the process ends. That is meant.
        void* const handle = ::dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD);
        if (handle && systemFolders && !IsSystems(name))
            held.push_back({name, handle});
    }
}

void SharedLibraries::LetGo()
{
    for (const Held& library : std::exchange(held, {})) {
        kept.erase(library.name);
        ::dlclose(library.handle);
    }
}

} // namespace zetaudiopluginhost
