#pragma once

#include <cstdint>
#include <string_view>

namespace zettestplugin {

/// The number behind "--worker" in the command line of a scanner's worker: its channel. 0 for other programs.
/// Arguments are separated by zero bytes or spaces.
std::uint64_t ChannelInCommandLine(std::string_view commandLine);

/// Writes the bytes into the channel through which this process talks to its supervisor, when it is a
/// scanner's worker.
void WriteIntoChannel(std::string_view bytes);

} // namespace zettestplugin
