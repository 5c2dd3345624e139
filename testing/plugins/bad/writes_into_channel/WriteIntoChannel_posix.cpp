#include "WriteIntoChannel.h"

#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace zettestplugin {

void WriteIntoChannel(std::string_view bytes)
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string commandLine{std::istreambuf_iterator<char>(file), {}};
    const std::uint64_t channel = ChannelInCommandLine(commandLine);
    if (channel != 0 && ::write(static_cast<int>(channel), bytes.data(), bytes.size()) < 0)
        ::_exit(1);
}

} // namespace zettestplugin
