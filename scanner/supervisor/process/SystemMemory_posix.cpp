#include "supervisor/process/SystemMemory.h"

#include <fstream>
#include <limits>
#include <string>

namespace zetaudiofilterscan {

SystemMemory GetSystemMemory()
{
    constexpr std::uint64_t bytesOfKilobyte = 1024;
    SystemMemory memory;
    std::ifstream file("/proc/meminfo");
    std::string name;
    std::uint64_t kilobytes = 0;
    while (file >> name >> kilobytes) {
        if (name == "MemTotal:")
            memory.total = kilobytes * bytesOfKilobyte;
        else if (name == "MemAvailable:")
            memory.available = kilobytes * bytesOfKilobyte;
        file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return memory;
}

} // namespace zetaudiofilterscan
