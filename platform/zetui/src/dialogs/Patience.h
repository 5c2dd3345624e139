#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace zetui::dialogs {

/// Decides when a dialog whose text stays the same tells how long that has been, and in which words. The
/// caller brings the time.
class Patience
{
  public:
    using Clock = std::chrono::steady_clock;
    using Text = std::function<std::string(std::chrono::seconds)>;

    /// Without a function it says nothing.
    void Set(std::chrono::seconds after, Text text);
    /// To be called when the dialog has a new text since `now`.
    void Restart(Clock::time_point now);
    /// The words to show from `now` on. Empty when the words of the last call still hold.
    std::optional<std::string> Ask(Clock::time_point now);

  private:
    std::chrono::seconds limit{0};
    Text words;
    Clock::time_point since{};
    /// The number of seconds in the last words.
    std::optional<std::chrono::seconds> told;
};

} // namespace zetui::dialogs
