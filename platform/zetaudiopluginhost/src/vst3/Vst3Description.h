#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiopluginhost::vst3 {

/// One class that is a plug-in.
struct Vst3Class
{
    std::wstring id; ///< 32 hexadecimal digits
    std::wstring name, vendor, version;
    std::wstring subCategories; ///< joined by '|'
};

/// Several times what any module has: a count beyond it is no count.
constexpr std::int32_t mostVst3Classes = 10000;

/// A module's own description, from its factory or from its moduleinfo.json.
struct Vst3Description
{
    std::wstring vendor;
    std::vector<Vst3Class> classes;
};

/// One record for the module. With one class it is that class's; a module with several goes by its file's
/// name, with the sub-categories of all and the first one's version and id.
std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>
MakeVst3Info(const zetaudiofilterhost::PluginLocator& locator, const Vst3Description& description);

} // namespace zetaudiopluginhost::vst3
