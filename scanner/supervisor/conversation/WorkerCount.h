#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zetaudiofilterscan {

/// How many workers scan at the same time, from 1 to `zetscanprotocol::mostWorkers`. `setting` is the user's
/// number as text; without one that can be read it is twice the number of processors, because plug-ins wait
/// about as long as they compute, but not more than the memory that is available (in bytes) has room for.
std::size_t WorkerCount(std::string_view setting, unsigned processors, std::uint64_t availableMemory);

/// The memory in bytes that one worker may take. `setting` is the user's number of megabytes as text, 0 for
/// no limit; without one that can be read it is a quarter of the machine's memory. 0 stands for no limit.
std::uint64_t MemoryLimit(std::string_view setting, std::uint64_t machineMemory);

} // namespace zetaudiofilterscan
