// Reads a worker's messages, into which a plug-in may have written anything.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "shared/Frames.h"
#include "shared/WorkerMessages.h"

namespace {

using namespace zetaudiofilterscan;

std::vector<std::string> Messages(std::string_view bytes, std::size_t chunk)
{
    std::vector<std::string> messages;
    FrameBuffer buffer;
    try {
        while (!bytes.empty()) {
            buffer.Append(bytes.substr(0, chunk));
            bytes.remove_prefix(std::min(chunk, bytes.size()));
            while (auto message = buffer.Take())
                messages.push_back(std::move(*message));
        }
    } catch (const std::length_error&) {
        messages.push_back("too long");
    }
    return messages;
}

template<typename Decode, typename Encode>
void Check(std::string_view message, Decode&& decode, Encode&& encode)
{
    try {
        const std::string written = encode(decode(message));
        zetfuzz::Require(encode(decode(written)) == written, "a message written again reads the same");
    } catch (const std::runtime_error& error) {
        const std::string_view what = error.what();
        zetfuzz::Require(what.starts_with("cut off: ") || what.starts_with("wrong value: ") ||
                             what.ends_with(" bytes too many"),
                         "the error names the field", what);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = zetfuzz::Text(data, size);
    Check(bytes, DecodeCommand, EncodeCommand);
    Check(bytes, DecodeReport, EncodeReport);
    const std::vector<std::string> whole = Messages(bytes, bytes.size() + 1);
    zetfuzz::Require(Messages(bytes, 1) == whole && Messages(bytes, 7) == whole, "chunks read the same");
    return 0;
}
