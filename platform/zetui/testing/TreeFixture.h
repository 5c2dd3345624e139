#pragma once

#include <map>
#include <string>
#include <vector>

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <zettesting/Patience.h>
#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include "nodes/NodeAccess.h"
#include "testing/WindowsFixture.h"

namespace zetui::controls {

/// A tree in a window of its own between two buttons, and data for its rows.
class TreeFixture : public WindowsFixture
{
  protected:
    using RowPtr = UI_MultiColumnTree::RowPtr;
    using Names = std::vector<std::wstring>;
    struct Entry
    {
        std::wstring name, version;
    };
    static constexpr unsigned onColumn = 1, nameColumn = 2, versionColumn = 3;
    static constexpr int rowHeight = 20;

    TreeFixture()
        : tree(utility::MakeIntrusive<UI_MultiColumnTree>(1U, static_cast<float>(rowHeight))),
          view(static_cast<QTableView&>(*ui::WidgetOf(tree.get())))
    {
        window.resize(400, 300);
        before.setGeometry(0, 0, 60, 20);
        ui::NodeAccess::Embed(tree.get(), &window, nullptr);
        view.setGeometry(0, 30, 400, 230);
        after.setParent(&window);
        after.setGeometry(0, 270, 60, 20);
        QWidget::setTabOrder(&before, &view);
        QWidget::setTabOrder(&view, &after);
        tree->SetWantsKeyboardFocus(true);
    }
    ~TreeFixture() override { tree->RemoveAllRows(); }

    /// Titles, and texts of the data, as a list of plug-ins has them.
    void MakeColumns()
    {
        tree->SetNumberOfColumns(0);
        header = utility::MakeIntrusive<UI_MultiColumnTreeHeaderRow>(tree.get());
        header->AppendColumn(L"On", onColumn);
        header->AppendColumn(L"Name", nameColumn);
        header->AppendColumn(L"Version", versionColumn);
        header->SetColumnWidth(onColumn, 50);
        header->SetColumnWidth(nameColumn, 150);
        header->SetColumnWidth(versionColumn, 100);
        tree->SetCellSortDataFunction([this](RowPtr row, int position) {
            ++sortDataCalls;
            const Entry& entry = entries[row.get()];
            switch (header->GetColumnAt(position)) {
            case nameColumn:
                return entry.name;
            case versionColumn:
                return entry.version;
            default:
                return std::wstring(L"1");
            }
        });
        tree->SetRowsSelectionChangedCallback([this] { ++selectionCalls; });
        tree->SetCellSelectionChangedCallback([this] { ++cellCalls; });
    }

    RowPtr Append(const std::wstring& name, const std::wstring& version = L"1.0")
    {
        const auto row = utility::MakeIntrusive<UI_MultiColumnTreeRow>(true);
        entries[row.get()] = {name, version};
        tree->AppendRow(row, nullptr, true);
        return row;
    }

    void Fill(int count)
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        for (int i = 0; i < count; ++i)
            Append(L"Plug-In " + std::to_wstring(i));
    }

    void Fill(const Names& names)
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        for (const std::wstring& name : names)
            Append(name);
    }

    void Show()
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, zettesting::patienceInMilliseconds));
        view.setFocus();
        ASSERT_TRUE(view.hasFocus());
    }

    Names ShownNames()
    {
        Names names;
        for (int place = 0; place < tree->GetRowCount(); ++place)
            names.push_back(entries[tree->GetRowAt(place).get()].name);
        return names;
    }

    Names SelectedNames()
    {
        Names names;
        for (const RowPtr& row : tree->GetSelectedRows())
            names.push_back(entries[row.get()].name);
        return names;
    }

    QPoint CellCenter(int place, int position) const
    {
        const int column = view.horizontalHeader()->logicalIndex(position);
        return {view.columnViewportPosition(column) + view.columnWidth(column) / 2,
                view.rowViewportPosition(place) + rowHeight / 2};
    }

    void ClickCell(int place, int position, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, CellCenter(place, position));
    }

    static void SendMouse(QWidget* widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button,
                          Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, at, widget->mapToGlobal(at), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }

    static void Drag(QWidget* widget, const QPoint& from, const QPoint& to)
    {
        SendMouse(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        for (int step = 1; step <= 10; ++step)
            SendMouse(widget, QEvent::MouseMove, from + (to - from) * step / 10, Qt::NoButton,
                      Qt::LeftButton);
        SendMouse(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }

    QWidget window;
    QPushButton before{&window};
    utility::IntrusivePtr<UI_MultiColumnTree> tree;
    QTableView& view;
    QPushButton after;
    utility::IntrusivePtr<UI_MultiColumnTreeHeaderRow> header;
    std::map<const UI_MultiColumnTreeRow*, Entry> entries;
    int sortDataCalls = 0, selectionCalls = 0, cellCalls = 0;
};

} // namespace zetui::controls
