// Reads the list of unsupported plug-ins. The input's first line is a file name to look up; the rest is the
// list.
#include <stdexcept>
#include <string>

#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

#include "FuzzTarget.h"
#include "banned/UnsupportedList.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using zetaudiopluginhost::UnsupportedList;
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceSink([](auto&&...) {});
    std::string_view text = zetfuzz::Text(data, size);
    const std::wstring name = zetcore::string::UTF8to16(zetfuzz::TakeLine(text));
    try {
        const UnsupportedList list = UnsupportedList::Parse(text);
        zetfuzz::Require(!list.MatchesFile(L"") && !list.Matches(L"", 0, 0), "an entry has a file name");
        zetfuzz::Require(!list.MatchesFile(name) || list.Matches(name, 7, -7),
                         "what is refused by its file name alone is refused with any id and version");
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("line "), "the error names the line",
                         error.what());
    }
    return 0;
}
