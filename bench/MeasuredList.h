#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemView>

#include "ListData.h"

namespace bench {

/// A list under measurement, in a window of its own.
class MeasuredList
{
  public:
    virtual ~MeasuredList() = default;

    virtual std::string Name() const = 0;
    /// The view of the whole list. Its scroll bar is moved.
    virtual QAbstractItemView& View() = 0;
    /// Shows these entries in place of others, in the current sort order.
    virtual void Fill(const std::vector<ListEntry>& entries) = 0;
    /// Shows the entries that contain the text.
    virtual void Filter(const std::vector<ListEntry>& entries, const std::wstring& lowerCaseText) = 0;
    virtual void Sort(int column, bool ascending) = 0;
    virtual int ShownRows() const = 0;
};

/// Makes our list, filled and drawn as the manager's dialog does it.
std::unique_ptr<MeasuredList> MakeOurList();
/// Makes Qt's tree widget with one item for each row.
std::unique_ptr<MeasuredList> MakeTreeWidget();
/// Makes Qt's table view on a sort-filter proxy on a table of texts.
std::unique_ptr<MeasuredList> MakeProxyTable();

} // namespace bench
