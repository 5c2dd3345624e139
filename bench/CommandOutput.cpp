#include "CommandOutput.h"

#include <array>
#include <cstdio>
#include <stdexcept>

#if defined(_WIN32)
#define popen _popen
#define pclose _pclose
#endif

namespace bench {

namespace {

#if defined(_WIN32)
// The shell takes the first and the last quote of a line away.
std::string ForShell(const std::string& command)
{
    return '"' + command + " 2>NUL\"";
}
#else
std::string ForShell(const std::string& command)
{
    return command + " 2>/dev/null";
}
#endif

} // namespace

std::string CommandOutput(const std::string& command)
{
    std::FILE* stream = popen(ForShell(command).c_str(), "r");
    if (!stream)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> buffer;
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), stream))
        output.append(buffer.data(), size);
    const int status = pclose(stream);
    if (status != 0)
        throw std::runtime_error(command + " failed with status " + std::to_string(status));
    return output;
}

std::string Quoted(const std::filesystem::path& path)
{
    return '"' + path.string() + '"';
}

} // namespace bench
