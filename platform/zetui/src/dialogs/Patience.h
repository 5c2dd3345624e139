#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace zetui::dialogs {

/// Says when a dialog whose text stays the same tells how long that has been, and with which words. The
/// caller brings the time.
class Patience
{
  public:
    using Clock = std::chrono::steady_clock;
    using Text = std::function<std::string(std::chrono::seconds)>;

    /// Without a function it says nothing.
    void Set(std::chrono::seconds after, Text text);
    /// The dialog's text is a new one since `now`.
    void Restart(Clock::time_point now);
    /// The words that are to be shown from `now` on; nothing when those of the last call still hold.
    std::optional<std::string> Ask(Clock::time_point now);

  private:
    std::chrono::seconds limit{0};
    Text words;
    Clock::time_point since{};
    /// The seconds that the last words told.
    std::optional<std::chrono::seconds> told;
};

} // namespace zetui::dialogs
