#pragma once

#include <cstdint>
#include <string_view>

namespace zetcore::utility {

/// The 64-bit FNV-1a hash of the bytes (the offset basis and the prime are those of its public description).
/// It tells one content from another, and nothing more: whoever wants two contents with one hash can make
/// them.
constexpr std::uint64_t Fnv1a(std::string_view bytes) noexcept
{
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3;
    }
    return hash;
}

} // namespace zetcore::utility
