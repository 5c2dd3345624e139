#include <zettesting/ChildProcess.h>

#include <zetcore/utility/Backoff.h>

namespace zettesting {

ChildResult ChildProcess::Run(const Options& options, std::chrono::milliseconds limit)
{
    return ChildProcess(options).Wait(limit);
}

std::vector<std::string> WaitForProcessesToEnd(const std::string& environmentText,
                                               std::chrono::milliseconds limit)
{
    const auto until = std::chrono::steady_clock::now() + limit;
    zetcore::utility::Backoff wait;
    for (;;) {
        std::vector<std::string> left = ProcessesWithEnvironment(environmentText, Starting::Include);
        if (left.empty() || std::chrono::steady_clock::now() >= until)
            return left;
        wait();
    }
}

} // namespace zettesting
