#pragma once

#include <memory>
#include <string>

#include <zetui/Export.h>

namespace zetui::ui {

/// Keeps for controls what they remember from one opening of a window to the next: the order of a list's
/// columns, and that a window was maximised. The host provides the store, and the toolkit alone knows what
/// the values mean. A key begins with the name of the layout archive and names the control. Keys and values
/// are short texts in ASCII. Main thread.
///
/// The toolkit reads when a window opens. When it closes, the toolkit writes what the user has changed, and
/// replaces what could not be used. What a store throws is traced, and the window works without the store
/// then.
class ZETUI_API ControlStore
{
  public:
    virtual ~ControlStore();
    /// Empty for a key that has no value.
    virtual std::string Read(const std::string& key) const = 0;
    virtual void Write(const std::string& key, const std::string& value) = 0;
    /// Called for a value that was read and cannot be used, such as an order that does not name all columns.
    /// Its control is as it would be without the value. The base traces it.
    virtual void OnUnusable(const std::string& key, const std::string& value);
};

/// Null, which it is at first, for a host whose windows remember nothing.
ZETUI_API void SetControlStore(std::shared_ptr<ControlStore> store);
ZETUI_API std::shared_ptr<ControlStore> GetControlStore();

} // namespace zetui::ui
