#pragma once

#include <string>
#include <string_view>

namespace zetaudiopluginhostui {

/// How a scanner process has ended.
struct ScannerProcessEnd
{
    enum class How
    {
        Unknown,
        Exited,
        WasEnded, ///< by a signal
    };
    /// Keys of texts, one for each way. In the first two, "@0" is the number, and "@1" is the subject; in the
    /// third, "@0" is the subject.
    struct Sentences
    {
        std::string_view exited;
        std::string_view wasEnded;
        std::string_view unknown;
    };

    /// The sentence for this end in English, followed by the last output, if there is any. UTF-8.
    std::string Tell(const Sentences& sentences, const std::string& subject) const;

    How how = How::Unknown;
    /// The exit status ("127", "0xc0000135"), or the signal with its name. UTF-8, for people.
    std::string number;
    /// The last line that the process wrote to standard error. Empty on Windows, where that is not caught.
    std::string lastOutput;
};

} // namespace zetaudiopluginhostui
