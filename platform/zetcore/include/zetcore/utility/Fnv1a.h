#pragma once

#include <cstdint>
#include <string_view>

namespace zetcore::utility {

/// Returns the 64-bit FNV-1a hash of the bytes. The offset basis and the prime are those of its public
/// description. The hash tells contents apart that differ by chance. It does not protect against people, who
/// can make two contents with the same hash.
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
