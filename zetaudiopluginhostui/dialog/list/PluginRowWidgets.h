#pragma once

#include <map>
#include <optional>

#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/nodes/UI_Message.h>
#include <zetui/tree/UI_MultiColumnTree.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/list/PluginListEntry.h"

namespace zetaudiopluginhostui {

/// The controls in the rows of the plug-in list that are visible: a checkbox that enables the plug-in, and,
/// for a banned plug-in, a "Reload" button. They take part in the keyboard's tour of the list, and are named
/// after their plug-in for screen readers. Main thread.
class PluginRowWidgets
{
  public:
    using Row = zetui::controls::UI_MultiColumnTreeRow;
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;

    /// The controls of all rows send their messages here.
    struct Handlers
    {
        zetui::ui::MessageFunction enableChanged, reloadPressed;
    };

    /// The tree and the supplier are not owned.
    PluginRowWidgets(const zetui::controls::UI_MultiColumnTree& tree,
                     const zetui::pixmill::SupplierInterface* supplier, Handlers handlers);

    /// The control that `Add` puts into a cell.
    static zetui::controls::CellControl ControlOf(const PluginListEntry& entry, int cellIndex);
    /// A row without the cells for its controls raises the null-pointer error.
    void Add(Row& row, const PluginListEntry& entry);
    /// Shows in the row's checkbox that its plug-in has been switched elsewhere.
    void ShowEnabled(const Row& row, bool enabled);
    void Remove(const Row& row);
    void RemoveAll();

    /// The row that holds the control. Null when no row does. A control of another class raises the
    /// invalid-type-conversion error.
    const Row* RowOfCheckbox(const zetui::ui::UI_Node* control) const;
    const Row* RowOfReloadButton(const zetui::ui::UI_Node* control) const;
    /// The left edge of the row's "Reload" button, counted from that of its cell. Empty without a button.
    std::optional<float> ReloadButtonLeft(const Row& row) const;
    float ReloadButtonWidth() const;

  private:
    void AddEnableCheckbox(Row& row, const PluginListEntry& entry);
    void AddReloadButton(Row& row, const PluginListEntry& entry);

    const zetui::controls::UI_MultiColumnTree& tree;
    const zetui::pixmill::SupplierInterface* supplier;
    Handlers handlers;
    std::map<const Row*, Ptr<zetui::controls::UI_Checkbox>> checkboxOfRow;
    std::map<const Row*, Ptr<zetui::controls::UI_TextButton>> reloadButtonOfRow;
};

} // namespace zetaudiopluginhostui
