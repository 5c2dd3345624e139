#include "StopPipe_posix.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <sstream>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/utility/Backoff.h>

#include "ProcessStat_posix.h"

namespace zetaudiofilterscan {

namespace {

int Make(const std::filesystem::path& name)
{
    // It is open for both, so that neither side waits for the other.
    const int descriptor =
        ::mkfifo(name.c_str(), 0600) == 0 ? ::open(name.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC) : -1;
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), name.string());
    return descriptor;
}

} // namespace

StopPipe::StopPipe(const std::filesystem::path& path) : name(path), reader(Make(path)) {}

bool StopPipe::IsTaken() const
{
    return std::filesystem::exists(name.string() + ".taken");
}

int StopPipe::WaitForStop() const
{
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    zetcore::utility::Backoff pause;
    for (int process = 0; std::chrono::steady_clock::now() < giveUp; pause()) {
        std::array<char, 256> text{};
        std::string place;
        if (process == 0 && ::read(reader.Get(), text.data(), text.size() - 1) > 0)
            std::istringstream(text.data()) >> place >> process;
        if (process != 0 && StatOf(process).state == 'T')
            return process;
    }
    return 0;
}

} // namespace zetaudiofilterscan
