#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <zettesting/Patience.h>

namespace zettesting {

/// The outcome of a child process.
struct ChildResult
{
    /// The exit code; -1 when a signal ended the child, or the test had to kill it.
    int exitStatus = -1;
    /// The signal that ended it; 0 for an exit.
    int signal = 0;
    /// It was killed because the time was up.
    bool timedOut = false;
    /// Some process still held the child's standard output or error open after the child had ended.
    bool outputHeldOpen = false;
    /// Lines end with '\n' on every system.
    std::string output, error;
    std::chrono::duration<double> duration{};
};

/// Runs one program as a child with empty standard input, and catches its output. One thread at a time.
class ChildProcess
{
  public:
    struct Options
    {
        std::filesystem::path program;
        /// The bytes reach the program unchanged. On Windows they are UTF-8.
        std::vector<std::string> arguments;
        /// A variable with a value is set, one without a value is removed. The child inherits all others.
        std::map<std::string, std::optional<std::string>> environment;
        /// The child's current folder; when empty, that of this process.
        std::filesystem::path folder;
        /// `Interrupt` may be called. On Windows the child then gets a console of its own, which takes some
        /// time.
        bool interruptible = false;
    };

    /// Starts it. Throws `std::runtime_error` when that fails.
    explicit ChildProcess(const Options& options);
    /// Kills the program if it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits until the program ends, or kills it when the time is up. Later calls return the same result.
    const ChildResult& Wait(std::chrono::milliseconds limit = std::chrono::minutes(2));
    /// Waits until the program has written this text to standard error. False when the program ends before
    /// that, or the time is up.
    bool WaitForError(std::string_view text, std::chrono::milliseconds limit = patience);
    /// Does what Ctrl-C does. The program must have been started as interruptible.
    void Interrupt();
    /// Sends what asks a program to end: SIGTERM, and on Windows the same as `Interrupt`.
    void Terminate();
    void Kill();

    /// Starts the program and waits.
    static ChildResult Run(const Options& options, std::chrono::milliseconds limit = std::chrono::minutes(2));

  private:
    struct State;
    std::unique_ptr<State> state;
};

/// While a process becomes another program, it shows no environment for a moment.
enum class Starting
{
    LeaveOut,
    Include
};

/// Returns a line "number name" for each other running process whose environment holds the text. Windows does
/// not tell environments; there, the processes of our scanner are returned.
std::vector<std::string> ProcessesWithEnvironment(const std::string& text,
                                                  Starting starting = Starting::LeaveOut);

/// Waits until there are no such processes. Returns those that are left when the time is up.
std::vector<std::string> WaitForProcessesToEnd(const std::string& environmentText,
                                               std::chrono::milliseconds limit = std::chrono::seconds(20));

} // namespace zettesting
