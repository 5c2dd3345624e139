#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// The function of a target. It throws nothing, and stops the process when these bytes break one of its
/// rules. The fuzzer calls it with inputs that it makes up, the ordinary build with the seeds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace zetfuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Stops the process, so that the input is kept.
inline void Require(bool holds, const char* property, std::string_view detail = "")
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s %.*s\n", property, static_cast<int>(detail.size()),
                 detail.data());
    std::abort();
}

/// Removes the first line from the input and returns it.
inline std::string_view TakeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

} // namespace zetfuzz
