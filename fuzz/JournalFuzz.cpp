// Reads the registry's journal beside a whole registry file. The input is the part of the journal after its
// first line, or, when it begins with "!", the text of one whole entry.
#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>

#include "FuzzTarget.h"
#include "ScratchFolder.h"
#include "text/ConfigurationJournal.h"
#include "text/ConfigurationText.h"

namespace {

using namespace zetaudiofilterhost;

std::string Hex(std::uint64_t number)
{
    char digits[17];
    std::snprintf(digits, sizeof digits, "%llx", static_cast<unsigned long long>(number));
    return digits;
}

std::string Head(std::string_view mark, std::string_view content)
{
    const ContentFingerprint fingerprint = FingerprintOf(content);
    return std::string(mark) + Hex(fingerprint.length) + " " + Hex(fingerprint.hash) + "\n";
}

const std::string base = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<audioplugins version=\"1.0\">\n"
                         "  <module locator=\"VST|/v/a.so|\" name=\"A\" enabled=\"true\" effect=\"true\" "
                         "synth=\"false\" status=\"working\"/>\n</audioplugins>\n";

void CheckChanges(std::string_view text)
{
    try {
        const std::string written = WriteChanges(ReadChanges(text, "fuzz"));
        zetfuzz::Require(WriteChanges(ReadChanges(written, "fuzz")) == written,
                         "changes written again read the same", written);
    } catch (const ConfigurationError& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("fuzz, line "),
                         "the error names the line", error.what());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const zetfuzz::ScratchFolder folder;
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceSink([](auto&&...) {});
    std::string journal = Head("zetaudiofilterhost-journal-1 ", base);
    std::string_view input = zetfuzz::Text(data, size);
    if (input.starts_with('!')) {
        input.remove_prefix(1);
        CheckChanges(input);
        journal += Head("entry ", input);
        journal.append(input).append("\n");
    } else {
        journal += input;
    }
    folder.Write("r.xml", base);
    folder.Write("r.xml.journal", journal);

    const zetcore::filesupport::File file(folder.File("r.xml"));
    PluginModuleInfoManager registry;
    zetfuzz::Require(registry.LoadConfiguration(file), "a bad journal does not damage the registry");
    registry.SaveConfiguration(file, true);
    PluginModuleInfoManager again;
    zetfuzz::Require(again.LoadConfiguration(file), "what was saved loads",
                     again.GetLoadError().value_or(zetcore::utility::Reason()).text);
    zetfuzz::Require(again.RecordCount() == registry.RecordCount(), "what was saved is complete");
    zetfuzz::Require(again.PutBackUnreached() == registry.PutBackUnreached(), "what is aside is saved, too");
    return 0;
}
