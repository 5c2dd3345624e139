#pragma once

#include <string>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/list/PluginListContent.h"
#include "dialog/list/PluginListEntry.h"
#include "dialog/list/PluginMultiColumnTree.h"
#include "dialog/list/PluginRowWidgets.h"

namespace zetaudiopluginhostui {

/// The list of all plug-ins, known and banned, with its columns and the controls in its rows. It reads the
/// registry and the list of banned plug-ins when it is filled. The tree's callbacks are set by the owner, who
/// hands them on to the operations here. Main thread.
class PluginListView
{
  public:
    using Row = zetui::controls::UI_MultiColumnTreeRow;
    using Header = zetui::controls::UI_MultiColumnTreeHeaderRow;
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;
    using RectF = zetcore::geom::RectT<float>;

    /// The tree is not null. The handlers get the messages of the controls in the rows.
    PluginListView(Ptr<PluginMultiColumnTree> tree, const zetui::pixmill::SupplierInterface* supplier,
                   PluginRowWidgets::Handlers handlers);

    PluginMultiColumnTree& Tree() const noexcept { return *tree; }
    Header& HeaderRow() const;

    /// Shows the plug-ins that the find test lets through.
    void Fill(const zetaudiofilterhost::PluginFind& find, bool resizeColumns, bool scrollToTop);
    /// Makes the controls of a row that has come into sight, and drops those of one that has left. A null row
    /// raises the null-pointer error.
    void OnRowVisibilityChanged(Row* row);
    /// The control in the selected cell gets the keyboard focus.
    void FocusControlOfSelectedCell();
    /// Enables or disables the plug-in of a checkbox that was clicked.
    void SwitchPluginOf(const zetui::ui::UI_Node* checkbox);
    /// Null when no row has the button.
    const PluginListEntry* EntryOfReloadButton(const zetui::ui::UI_Node* button) const;

    // The cells. A row that this list has not made has empty texts.
    std::wstring GetCellSortData(const Row* row, int cellIndex) const;
    /// For screen readers.
    std::wstring GetCellDescription(const Row* row, int cellIndex) const;
    /// The Status cell of a banned plug-in tells when and why it was banned.
    std::wstring GetCellTooltip(const Row* row, int cellIndex) const;
    void DrawCell(zetui::pixmill::Pixmill* context, const Row* row, int cellIndex, const RectF& cell) const;
    /// 0 for an empty list.
    float GetColumnBestFitWidth(unsigned column) const;

  private:
    void SetUpTree();
    void AppendColumns();
    void FitColumns();
    /// Null for a row that this list has not made, or that is not in it.
    const PluginListEntry* FindEntry(const Row* row) const;
    unsigned GetColumnOfCell(int cellIndex) const;

    Ptr<PluginMultiColumnTree> tree;
    PluginListContent plugins;
    PluginRowWidgets widgets;
};

} // namespace zetaudiopluginhostui
