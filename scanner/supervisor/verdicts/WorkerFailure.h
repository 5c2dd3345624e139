#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include <zetaudiopluginhost/ScanOutcome.h>

/// Why a plug-in is banned, in words for people.
namespace zetaudiofilterscan {

/// How a worker failed at a plug-in.
struct WorkerFailure
{
    enum class Kind
    {
        Crashed,
        Exited,
        TookTooLong,
        /// The worker lost the channel to the supervisor.
        ChannelLost,
        /// The worker sent something that is no answer.
        WrongAnswer,
        /// The worker goes on, but says that the plug-in broke a rule or cannot be used.
        Misbehaved,
    };

    Kind kind = Kind::Exited;
    /// The signal, exception or exit code.
    long long code = 0;
    zetaudiopluginhost::ScanPhase phase = zetaudiopluginhost::ScanPhase::None;
    /// For `WrongAnswer` the mistake in the answer, for `Misbehaved` the plug-in's deed.
    std::string text = {};
    /// TookTooLong: the limit.
    std::chrono::milliseconds limit{0};
    /// Misbehaved: the system did not load it.
    bool couldNotLoad = false;
};

/// For example "crashed (segmentation fault) while being loaded; its last output: out of memory". UTF-8, one
/// line; `lastLine` may be empty.
std::string DescribeFailure(const WorkerFailure& failure, std::string_view lastLine);

/// "60 seconds", "1 second", "0.25 seconds".
std::string SecondsText(std::chrono::milliseconds time);

} // namespace zetaudiofilterscan
