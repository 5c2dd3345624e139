#include <cstdlib>
#include <string>

#include "Vst2Plugin.h"
#include "WriteIntoChannel.h"

using namespace zettestplugin;

std::uint64_t zettestplugin::ChannelInCommandLine(std::string_view commandLine)
{
    constexpr std::string_view option = "--worker";
    const std::size_t at = commandLine.find(option);
    if (at == std::string_view::npos || at + option.size() >= commandLine.size())
        return 0;
    return std::strtoull(std::string(commandLine.substr(at + option.size() + 1)).c_str(), nullptr, 10);
}

ZET_VST2_ENTRY
{
    // A worker asks once which modules may replace a shell: a message of one byte behind its length.
    const std::string question{"\1\0\0\0Q", 5};
    WriteIntoChannel(question + question);
    return MakeEffect(Ordinary("Writes Into Channel", "BaWc"), host);
}
