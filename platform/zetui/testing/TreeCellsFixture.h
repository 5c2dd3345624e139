#pragma once

#include <map>
#include <memory>
#include <set>

#include <QCheckBox>

#include "testing/TreeFixture.h"

namespace zetui::controls {

/// A list with a checkbox in the first cell and a button in the third of each visible row.
class TreeCellsFixture : public TreeFixture
{
  protected:
    TreeCellsFixture()
    {
        MakeColumns();
        tree->SetSupportUserSelectableCells(true);
        tree->SetRowVisibilityChangedCallback([this](RowPtr row) { RowChanged(row); });
        tree->SetCellSelectionChangedCallback([this] {
            const int cell = tree->GetSelectedCellOfSelectedRow();
            const auto cellView = cell < 0 ? nullptr : tree->GetSelectedRows().front()->GetCellView(cell);
            if (cellView && cellView->ChildCount() > 0)
                cellView->GetChild(0)->UI_GainKeyboardFocus(ui::kFocusChangeProgram);
        });
    }
    ~TreeCellsFixture() override
    {
        checkboxes.clear();
        buttons.clear();
    }

    void RowChanged(const RowPtr& row)
    {
        if (!tree->IsRowVisible(row.get())) {
            EXPECT_EQ(checkboxes.erase(row.get()), 1U) << "a row left that had not come";
            buttons.erase(row.get());
            return;
        }
        EXPECT_EQ(checkboxes.count(row.get()), 0U) << "a row came twice";
        const auto checkbox = utility::MakeIntrusive<UI_Checkbox>();
        checkbox->UI_SetLocalRectF({4, 3, 200, 14});
        row->GetCellView(0)->InsertChild(checkbox);
        checkbox->UI_Show(true);
        checkbox->SetWantsKeyboardFocus(true);
        checkboxes[row.get()] = checkbox;
        const auto button = utility::MakeIntrusive<UI_TextButton>();
        button->UI_SetLocalRectF({10, 2, 60, 16});
        row->GetCellView(2)->InsertChild(button);
        button->UI_Show(true);
        button->SetWantsKeyboardFocus(true);
        buttons[row.get()] = button;
    }

    QWidget* CheckboxAt(int place) { return ui::WidgetOf(checkboxes[tree->GetRowAt(place).get()].get()); }
    QWidget* ButtonAt(int place) { return ui::WidgetOf(buttons[tree->GetRowAt(place).get()].get()); }
    std::size_t WidgetCount() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return static_cast<std::size_t>(view.findChildren<QCheckBox*>().size());
    }
    std::set<const UI_MultiColumnTreeRow*> RowsWithWidgets() const
    {
        std::set<const UI_MultiColumnTreeRow*> rows;
        for (const auto& [row, checkbox] : checkboxes)
            rows.insert(row);
        return rows;
    }
    std::set<const UI_MultiColumnTreeRow*> RowsInSight()
    {
        std::set<const UI_MultiColumnTreeRow*> rows;
        const int top = view.verticalScrollBar()->value();
        for (int place = 0; place < tree->GetRowCount(); ++place) {
            if ((place + 1) * rowHeight > top && place * rowHeight < top + view.viewport()->height())
                rows.insert(tree->GetRowAt(place).get());
        }
        return rows;
    }

    std::map<const UI_MultiColumnTreeRow*, utility::IntrusivePtr<UI_Checkbox>> checkboxes;
    std::map<const UI_MultiColumnTreeRow*, utility::IntrusivePtr<UI_TextButton>> buttons;
};

} // namespace zetui::controls
