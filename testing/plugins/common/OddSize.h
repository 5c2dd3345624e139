#pragma once

#include <array>
#include <cstddef>
#include <cstdlib>

namespace zettestplugin {

/// A block size that hardly anybody else asks for.
inline constexpr std::size_t oddSize = 1000;

/// Some blocks at once, and then all of them given back. `afterwards` sees them when they are.
template<class Afterwards>
void UseBlocks(Afterwards&& afterwards)
{
    std::array<void* volatile, 4> blocks{};
    for (void* volatile& block : blocks)
        block = std::malloc(oddSize);
    for (void* volatile& block : blocks)
        std::free(block);
    for (void* volatile& block : blocks)
        afterwards(static_cast<volatile unsigned char*>(static_cast<void*>(block)));
}

} // namespace zettestplugin
