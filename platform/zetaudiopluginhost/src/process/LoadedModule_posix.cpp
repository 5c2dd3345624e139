#include "process/LoadedModule.h"

#include <utility>

#include <dlfcn.h>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginhost {

LoadedModule::LoadedModule(const std::wstring& path)
    : handle(dlopen(zetcore::string::UTF16to8(path).c_str(), RTLD_LOCAL | RTLD_NOW))
{
    if (handle == nullptr) {
        const char* message = dlerror();
        throw ModuleLoadError(message != nullptr ? message : "the system cannot load it", false);
    }
}

LoadedModule::AnyFunction LoadedModule::FindAddress(const char* name) const
{
    return reinterpret_cast<AnyFunction>(dlsym(handle, name));
}

void LoadedModule::Unload()
{
    if (void* loaded = std::exchange(handle, nullptr))
        dlclose(loaded);
}

} // namespace zetaudiopluginhost
