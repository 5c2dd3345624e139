#pragma once

namespace zetaudiopluginmanager {

/// The meaning of the program's exit status; the help text lists the same.
enum class ExitStatus : int
{
    Done = 0,
    /// The work is done, but something could not be saved or written to standard output, or a damaged
    /// preferences file was put aside. Also: an existing one could not be read, and nothing was done.
    NotSaved = 1,
    /// Also: a window was asked for, but there is no display.
    WrongUsage = 2,
    /// The scanner process could not be started, and nothing was scanned. Also: it failed again and again,
    /// and not everything was scanned.
    ScannerNotStarted = 3,
    /// An unexpected error ended the program.
    Unexpected = 4,
    /// The user cancelled. The program keeps what it had found until then.
    Cancelled = 130,
};

/// The status to report when two things went wrong: the one that says more about what was not done.
constexpr ExitStatus Worse(ExitStatus left, ExitStatus right)
{
    const auto rank = [](ExitStatus status) {
        switch (status) {
        case ExitStatus::Done:
            return 0;
        case ExitStatus::NotSaved:
            return 1;
        case ExitStatus::ScannerNotStarted:
            return 2;
        case ExitStatus::Cancelled:
            return 3;
        case ExitStatus::WrongUsage:
        case ExitStatus::Unexpected:
            break;
        }
        return 4;
    };
    return rank(left) < rank(right) ? right : left;
}

} // namespace zetaudiopluginmanager
