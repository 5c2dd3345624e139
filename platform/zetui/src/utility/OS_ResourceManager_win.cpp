#include <zetui/utility/OS_ResourceManager.h>

#include <windows.h>

#include <zetcore/string/Utf.h>

namespace zetui::utility {

OS_ResourceManager::OS_ResourceManager(ModuleHandle instance) : module(instance) {}

OS_ResourceManager::~OS_ResourceManager() = default;

std::vector<unsigned char> OS_ResourceManager::LoadResource(const std::string& name,
                                                            const std::string& type) const
{
    const HMODULE instance = static_cast<HMODULE>(module);
    const std::wstring wideName = zetcore::string::UTF8to16(name);
    const std::wstring wideType = zetcore::string::UTF8to16(type);
    const HRSRC found = ::FindResourceW(instance, wideName.c_str(), wideType.c_str());
    const HGLOBAL loaded = found ? ::LoadResource(instance, found) : nullptr;
    const auto* bytes = loaded ? static_cast<const unsigned char*>(::LockResource(loaded)) : nullptr;
    if (!bytes)
        return {};
    return {bytes, bytes + ::SizeofResource(instance, found)};
}

} // namespace zetui::utility
