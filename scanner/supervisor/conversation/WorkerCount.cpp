#include "supervisor/conversation/WorkerCount.h"

#include <algorithm>
#include <limits>

#include <zetcore/string/ParseNumber.h>
#include <zetscanprotocol/ScanProtocol.h>

namespace zetaudiofilterscan {

namespace {

constexpr std::uint64_t bytesOfMegabyte = 1 << 20;
// Plug-ins with their own widgets take about so much.
constexpr std::uint64_t memoryOfWorker = 128 * bytesOfMegabyte;
constexpr std::size_t fewest = 4;

} // namespace

std::size_t WorkerCount(std::string_view setting, unsigned processors, std::uint64_t availableMemory)
{
    constexpr std::size_t most = zetscanprotocol::mostWorkers;
    if (const auto number = zetcore::string::ParseNumber<std::uint32_t>(setting); number && *number > 0)
        return std::min<std::size_t>(*number, most);
    const std::size_t wanted = std::clamp<std::size_t>(std::size_t{2} * processors, fewest, most);
    if (availableMemory == 0)
        return wanted;
    return std::clamp<std::size_t>(availableMemory / memoryOfWorker, 1, wanted);
}

std::uint64_t MemoryLimit(std::string_view setting, std::uint64_t machineMemory)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max() / bytesOfMegabyte;
    if (const auto number = zetcore::string::ParseNumber<std::uint64_t>(setting))
        return std::min(*number, most) * bytesOfMegabyte;
    return machineMemory / 4;
}

} // namespace zetaudiofilterscan
