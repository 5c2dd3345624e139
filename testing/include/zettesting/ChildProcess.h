#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zettesting {

/// What a child process left behind.
struct ChildResult
{
    /// -1 when a signal ended it or it had to be killed.
    int exitStatus = -1;
    /// The signal that ended it; 0 for an exit.
    int signal = 0;
    /// It was killed because the time was up.
    bool timedOut = false;
    /// Some process still held its standard output or error after it had ended.
    bool outputHeldOpen = false;
    /// With '\n' at the ends of lines on every system.
    std::string output, error;
    std::chrono::duration<double> duration{};
};

/// One program, run as a child with its standard input empty and its output caught. One thread at a time.
class ChildProcess
{
  public:
    struct Options
    {
        std::filesystem::path program;
        /// Bytes as they are; on Windows UTF-8.
        std::vector<std::string> arguments;
        /// Set, or (without a value) taken out; all else is inherited.
        std::map<std::string, std::optional<std::string>> environment;
        /// The current folder; inherited when empty.
        std::filesystem::path folder;
        /// On Windows it gets a console of its own, which takes its time; there `Interrupt` needs it.
        bool interruptible = false;
    };

    /// Starts it. Throws `std::runtime_error` when that fails.
    explicit ChildProcess(const Options& options);
    /// Kills it when it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits until it ends, or kills it when the time is up. Later calls return the same.
    const ChildResult& Wait(std::chrono::milliseconds limit = std::chrono::minutes(2));
    /// Waits until what it has written to standard error contains the text; false when it ends before that or
    /// the time is up.
    bool WaitForError(std::string_view text, std::chrono::milliseconds limit = std::chrono::minutes(1));
    /// What Ctrl-C does. Of an interruptible one.
    void Interrupt();
    void Kill();

    /// Start and wait.
    static ChildResult Run(const Options& options, std::chrono::milliseconds limit = std::chrono::minutes(2));

  private:
    struct State;
    std::unique_ptr<State> state;
};

/// A line for each running process (but this one) whose environment holds the text: "number name". On
/// Windows, which does not tell, the processes of our scanner.
std::vector<std::string> ProcessesWithEnvironment(const std::string& text);

/// Waits until there are none; returns those that are left when the time is up.
std::vector<std::string> WaitForProcessesToEnd(const std::string& environmentText,
                                               std::chrono::milliseconds limit = std::chrono::seconds(20));

} // namespace zettesting
