#pragma once

namespace zetaudiofilterscan {

/// How a process ended, as the system tells it.
struct ProcessEnd
{
    /// A signal, or an exception on Windows; otherwise it ended with an exit code.
    bool crashed = false;
    /// The signal, the exception's code or the exit code.
    long long code = 0;
};

} // namespace zetaudiofilterscan
