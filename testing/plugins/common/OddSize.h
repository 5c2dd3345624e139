#pragma once

#include <array>
#include <cstddef>
#include <cstdlib>

namespace zettestplugin {

/// Hardly any other code asks for blocks of this size.
inline constexpr std::size_t oddSize = 1000;

/// Takes some blocks and frees all of them. `afterwards` then gets their addresses.
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
