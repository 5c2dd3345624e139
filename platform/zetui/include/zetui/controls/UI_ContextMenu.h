#pragma once

#include <functional>
#include <string>
#include <vector>

#include <zetui/Export.h>

namespace zetui::controls {

/// A menu for the thing that the user points at. It is a value; whoever asks for it shows it. "&" before a
/// letter makes that letter the command's key while the menu is open; `AddCommand` takes the text as it is
/// written in string tables.
class ZETUI_API UI_ContextMenu
{
  public:
    struct Item
    {
        /// Empty for a line between the commands around it.
        std::wstring text;
        bool enabled = true;
        std::function<void()> chosen;
    };

    /// `chosen` is called when the menu has closed. The modal run that is going on throws its exceptions
    /// again.
    void AddCommand(const std::wstring& text, std::function<void()> chosen, bool enabled = true);
    /// Does nothing where there is nothing to separate.
    void AddSeparator();

    bool IsEmpty() const noexcept { return items.empty(); }
    const std::vector<Item>& Items() const noexcept { return items; }

  private:
    std::vector<Item> items;
};

} // namespace zetui::controls
