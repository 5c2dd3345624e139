// Reads the debug database's file, and the text of ZET_TRACE. The input's first line is the key to look up;
// the rest is the file.
#include <optional>
#include <string>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/Dir.h>

#include "FuzzTarget.h"
#include "ScratchFolder.h"
#include "debug/TraceConfiguration.h"
#include "string/TextEntries.h"

namespace {

using namespace zetcore::debug;
using zetcore::string::ParseEntry;
using zetcore::string::SplitText;
using zetcore::string::TextEntry;
using zetcore::string::Trim;

std::string Expected(std::string_view text, std::string_view key)
{
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    std::string value = "default";
    for (const std::string_view line : SplitText(text, '\n')) {
        const std::optional<TextEntry> entry = ParseEntry(Trim(line));
        if (entry && entry->key == key && !entry->key.starts_with('#'))
            value = entry->value;
    }
    return value;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const zetfuzz::ScratchFolder folder;
    SetMasterTraceVolume(9);
    SetTraceSink([](auto&&...) {});
    std::string_view text = zetfuzz::Text(data, size);
    ParseTraceConfiguration(text);
    const std::string_view key = zetfuzz::TakeLine(text);
    folder.Write("DebugDatabase.txt", text);
    zetcore::filesupport::Dir::SetPrefDir(folder.Path().wstring());
    DebugDatabase& database = DebugDatabase::Instance();
    database.Reset();
    zetfuzz::Require(database.GetEntry(key, "default") == Expected(text, key),
                     "the last entry of a key counts");
    database.SetEntry(key, "mine");
    zetfuzz::Require(database.GetEntry(key, "default") == "mine", "what is set goes before the file");
    return 0;
}
