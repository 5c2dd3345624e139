// Reads the registry's text and a scan's result. Each is merged, or refused with the registry unchanged.
#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>

#include "FuzzTarget.h"
#include "text/ConfigurationText.h"

namespace {

using namespace zetaudiofilterhost;

void CheckText(const std::string& text)
{
    const std::string written = WriteConfiguration(ReadConfiguration(text, "fuzz"));
    zetfuzz::Require(WriteConfiguration(ReadConfiguration(written, "fuzz")) == written,
                     "a configuration written again reads the same", written);
}

void CheckMerge(const std::string& text, bool withFolders)
{
    const PluginLocator known{TechnologyType::VST, L"/v/a.so"};
    PluginModuleInfoManager registry;
    const auto info = std::make_shared<PluginModuleInfo>(known);
    info->SetEnabled(false);
    registry.AddModule(info);
    try {
        registry.AddConfiguration(text, withFolders);
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(std::string_view(error.what()).find(", line ") != std::string_view::npos,
                         "the error names the line", error.what());
        zetfuzz::Require(registry.RecordCount() == 1 && registry.Find(known) == info,
                         "the registry is unchanged after an error");
        return;
    }
    const auto now = registry.Find(known);
    zetfuzz::Require(withFolders || !now || !now->IsEnabled(),
                     "a scan does not enable what the user disabled");
    for (auto i = registry.PluginInfoBegin(); i != registry.PluginInfoEnd(); ++i)
        zetfuzz::Require(registry.Find((*i)->GetLocator()) == *i, "what is iterated is found");
    const std::string whole = registry.ToText();
    registry.UndoTo(*registry.MakeCopy());
    zetfuzz::Require(registry.ToText() == whole, "what is undone to is the same", whole);
    const std::size_t before = registry.RecordCount();
    const std::size_t back = registry.PutBackUnreached().size();
    zetfuzz::Require(registry.RecordCount() == before + back, "what is aside has no record");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceSink([](auto&&...) {});
    const std::string text(zetfuzz::Text(data, size));
    CheckMerge(text, false);
    CheckMerge(text, true);
    try {
        CheckText(text);
    } catch (const ConfigurationError& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("fuzz, line "),
                         "the error names the text", error.what());
    }
    return 0;
}
