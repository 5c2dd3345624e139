#pragma once

#include <algorithm>
#include <cmath>
#include <string>

#include <QHeaderView>
#include <QPoint>
#include <QTableView>
#include <QTest>

#include "dialog/drawing/CellDrawing.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {

/// The manager dialog, for tests of its plug-in list.
class PluginListFixture : public DialogFixture
{
  protected:
    QTableView& View() const { return dynamic_cast<QTableView&>(WidgetOf(PluginList())); }
    QWidget& Viewport() const { return *View().viewport(); }
    float Width(unsigned column) const { return PluginList().GetHeaderRow()->GetColumnWidth(column); }
    /// The width of a text, in whole pixels as for a column.
    static float TextWidth(const std::wstring& text)
    {
        return std::trunc(zetui::pixmill::GetTextWidth(GetCellFont(), text));
    }
    /// Double-clicks the right edge of the column's title.
    void FitByDoubleClick(unsigned column) const
    {
        QHeaderView& header = *View().horizontalHeader();
        const int section = static_cast<int>(column) - 1;
        const QPoint edge(header.sectionViewportPosition(section) + header.sectionSize(section) - 1,
                          header.height() / 2);
        QTest::mouseMove(header.viewport(), edge);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, edge);
        HandleEvents();
    }
    bool IsEnabled(const char* id) const { return Node<zetui::ui::UI_Node>(id).UI_IsEnabled(); }
    /// The place of the name's cell in the list.
    QPoint CellOf(const std::wstring& name, unsigned column) const
    {
        const auto names = Names();
        const int place = static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
        return View().visualRect(View().model()->index(place, static_cast<int>(column) - 1)).center();
    }
};

} // namespace zetaudiopluginhostui
