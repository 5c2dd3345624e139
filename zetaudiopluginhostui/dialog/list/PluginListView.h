#pragma once

#include <string>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/drawing/CellDrawing.h"
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
    /// Sets the text that stands in the place of rows. While a scan runs, it asks for no scan.
    void SayWhyItIsEmpty(bool scans);
    /// The number of plug-ins without a find test.
    std::size_t CountOfAll() const noexcept { return plugins.Rows().size(); }
    /// Makes the controls of a row that has come into sight, and drops those of one that has left. A null row
    /// raises the null-pointer error.
    void OnRowVisibilityChanged(Row* row);
    /// The control in the selected cell gets the keyboard focus.
    void FocusControlOfSelectedCell();
    /// The place of the plug-in's row; without one, that of another plug-in in the same module. -1 when there
    /// is none.
    int PlaceOf(const zetaudiofilterhost::PluginLocator& locator) const;
    /// Gives the focus to the plug-in's row, and there to the "Reload" button if the row has one in sight. A
    /// plug-in that has no row any more leaves the focus at its last place. The list is not scrolled.
    void FocusPlugin(const zetaudiofilterhost::PluginLocator& locator, int lastPlace);
    /// Enables or disables the plug-in of a checkbox that was clicked.
    void SwitchPluginOf(const zetui::ui::UI_Node* checkbox);
    /// The same from elsewhere. The row's checkbox shows it.
    void EnablePlugin(const PluginListEntry& entry, bool enable);
    /// Null for a row that this list has not made.
    const PluginListEntry* EntryOf(const Row* row) const { return FindEntry(row); }
    /// Null when no row has the button.
    const PluginListEntry* EntryOfReloadButton(const zetui::ui::UI_Node* button) const;

    // The cells. A row that this list has not made has empty texts.
    std::wstring GetCellSortData(const Row* row, int cellIndex) const;
    /// For screen readers.
    std::wstring GetCellDescription(const Row* row, int cellIndex) const;
    /// The Enabled and the Status cell of a banned plug-in tell when and why it was banned.
    std::wstring GetCellTooltip(const Row* row, int cellIndex) const;
    /// The whole text of a cell that is so wide and shows only a part of it; otherwise empty.
    std::wstring GetCutText(const Row* row, int cellIndex, float cellWidth) const;
    /// The text about a row at the foot of the list.
    std::wstring GetRowDetails(const Row* row) const;
    /// The control that a cell has, or would have in sight.
    zetui::controls::CellControl GetCellControl(const Row* row, int cellIndex) const;
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
    CellText ShownText(const Row& row, const PluginListEntry& entry, int cellIndex) const;

    Ptr<PluginMultiColumnTree> tree;
    PluginListContent plugins;
    PluginRowWidgets widgets;
    /// The last fill was one without a find test.
    bool keepsAll = true;
};

} // namespace zetaudiopluginhostui
