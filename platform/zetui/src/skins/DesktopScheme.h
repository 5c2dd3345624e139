#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace zetui::skins {

/// Follows the desktop's setting of light or dark: on Windows the registry's, elsewhere the one that the
/// desktop's portal tells on the session bus. Main thread; it needs an application object.
class DesktopScheme
{
  public:
    /// `changed` is called from the event loop.
    explicit DesktopScheme(std::function<void()> changed);
    ~DesktopScheme();
    DesktopScheme(const DesktopScheme&) = delete;
    DesktopScheme& operator=(const DesktopScheme&) = delete;

    /// Empty where there is no such setting, or one without a preference. Then the toolkit's palette tells.
    std::optional<bool> AsksForDark() const;

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetui::skins
