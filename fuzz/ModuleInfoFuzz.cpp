// Reads a bundle's moduleinfo.json.
#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginModuleInfo.h>

#include "FuzzTarget.h"
#include "vst3/ModuleInfoJson.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zetaudiopluginhost::vst3;
    Vst3Description description;
    try {
        description = ParseModuleInfo(zetfuzz::Text(data, size));
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(!std::string_view(error.what()).empty(), "the error says what is wrong");
        return 0;
    }
    zetfuzz::Require(!description.classes.empty(), "what is read describes a plug-in");
    for (const Vst3Class& found : description.classes)
        zetfuzz::Require(found.id.size() == 32 &&
                             found.id.find_first_not_of(L"0123456789ABCDEF") == std::wstring::npos &&
                             !found.name.empty(),
                         "a class has an id and a name");
    const zetaudiofilterhost::PluginLocator locator(zetaudiofilterhost::TechnologyType::VST3, L"/v/a.vst3");
    const auto info = MakeVst3Info(locator, description);
    zetfuzz::Require(info && info->GetLocator() == locator &&
                         info->GetUniqueId() == description.classes[0].id,
                     "the record is the module's");
    return 0;
}
