#include <zetui/utility/OS_ResourceManager.h>

#include <dlfcn.h>

#include <memory>

namespace zetui::utility {

namespace {

struct CloseLibrary
{
    void operator()(void* library) const { ::dlclose(library); }
};
using Library = std::unique_ptr<void, CloseLibrary>;

/// A handle of the module that is loaded at this address. Nothing is loaded for it.
Library OpenLoaded(ModuleHandle module, Dl_info& info)
{
    if (!module || !::dladdr(module, &info))
        return nullptr;
    Library library(::dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD));
    // The program itself cannot be found by its file name.
    return library ? std::move(library) : Library(::dlopen(nullptr, RTLD_LAZY));
}

const EmbeddedResource* FindTable(void* library, const void* loadAddress)
{
    void* const table = ::dlsym(library, "zetModuleResources");
    // The lookup goes on into the libraries that the module uses. Their tables are not the module's.
    Dl_info owner{};
    if (!table || !::dladdr(table, &owner) || owner.dli_fbase != loadAddress)
        return nullptr;
    return static_cast<const EmbeddedResource*>(table);
}

} // namespace

OS_ResourceManager::OS_ResourceManager(ModuleHandle loadAddress) : module(loadAddress) {}

OS_ResourceManager::~OS_ResourceManager() = default;

std::vector<unsigned char> OS_ResourceManager::LoadResource(const std::string& name,
                                                            const std::string& type) const
{
    Dl_info info{};
    const Library library = OpenLoaded(module, info);
    if (!library)
        return {};
    for (const EmbeddedResource* entry = FindTable(library.get(), info.dli_fbase); entry && entry->name;
         ++entry) {
        if (name == entry->name && type == entry->type)
            return {entry->bytes, entry->bytes + entry->size};
    }
    return {};
}

} // namespace zetui::utility
