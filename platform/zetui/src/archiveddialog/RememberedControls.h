#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

class QWidget;

namespace zetui::ui {

class UI_SubView;

/// Carries between the host's store and the controls of one window what they remember. Without a store it
/// does nothing.
class RememberedControls
{
  public:
    explicit RememberedControls(std::string layoutArchive) : archive(std::move(layoutArchive)) {}

    /// To be called before the window is shown for the first time.
    void Restore(UI_SubView& root, QWidget& window);
    /// Writes what is no longer as it was.
    void Remember(UI_SubView& root, const QWidget& window);

  private:
    /// `use` gives the control the value, and answers whether it could. `valueNow` is what the control has
    /// without the store.
    void RestoreValue(const std::string& key, const std::string& valueNow,
                      const std::function<bool(const std::string& value)>& use);
    void RememberValue(const std::string& key, const std::string& valueNow);

    const std::string archive;
    /// The values by key that need not be written.
    std::map<std::string, std::string> known;
};

} // namespace zetui::ui
