#pragma once

#include <cstdint>

namespace zetaudiofilterscan {

/// The machine's memory in bytes; 0 for what the system does not tell.
struct SystemMemory
{
    std::uint64_t total = 0;
    /// Programs can have so much without swapping.
    std::uint64_t available = 0;
};

SystemMemory GetSystemMemory();

} // namespace zetaudiofilterscan
