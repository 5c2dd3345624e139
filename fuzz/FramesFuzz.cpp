// Cuts bytes into frames. However the bytes arrive, the frames and the error must be the same.
#include <algorithm>
#include <string>
#include <vector>

#include "FrameReader.h"
#include "FuzzTarget.h"

namespace {

constexpr std::size_t headerLimit = 64;
constexpr std::size_t frameLimit = 1000;

struct Outcome
{
    std::vector<std::string> frames;
    std::string error;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome Read(std::string_view bytes, std::size_t chunk)
{
    Outcome outcome;
    zettransport::FrameReader reader(headerLimit, frameLimit);
    try {
        while (!bytes.empty()) {
            const std::string_view part = bytes.substr(0, chunk);
            bytes.remove_prefix(part.size());
            reader.Append(part);
            while (auto frame = reader.Next())
                outcome.frames.push_back(std::move(*frame));
        }
    } catch (const zettransport::FrameError& error) {
        outcome.error = error.what();
    }
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::size_t chunk = std::size_t{data[0]} + 1;
    const std::string_view bytes = zetfuzz::Text(data + 1, size - 1);
    const Outcome whole = Read(bytes, bytes.size() + 1);
    zetfuzz::Require(Read(bytes, 1) == whole, "a byte at a time reads the same");
    zetfuzz::Require(Read(bytes, chunk) == whole, "chunks read the same");

    std::string again;
    for (const std::string& frame : whole.frames) {
        zetfuzz::Require(frame.size() <= frameLimit, "a frame keeps the limit");
        again += zettransport::MakeFrame(frame);
    }
    zetfuzz::Require(Read(again, chunk) == Outcome{whole.frames, {}}, "frames written again read the same");
    return 0;
}
