#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemView>

#include "ListData.h"

namespace bench {

/// A list under measurement, in a window of its own.
class ListSubject
{
  public:
    virtual ~ListSubject() = default;

    virtual std::string Name() const = 0;
    /// What stands for the whole list; its scroll bar is moved.
    virtual QAbstractItemView& View() = 0;
    /// From whatever it showed to these entries, in the sort order of the moment.
    virtual void Fill(const std::vector<ListEntry>& entries) = 0;
    /// Shows those of the entries that hold the text.
    virtual void Filter(const std::vector<ListEntry>& entries, const std::wstring& lowerCaseText) = 0;
    virtual void Sort(int column, bool ascending) = 0;
    virtual int ShownRows() const = 0;
};

/// The toolkit's list, filled and drawn as the manager's dialog does it.
std::unique_ptr<ListSubject> MakeOurList();
/// Qt's tree widget with one item for each row.
std::unique_ptr<ListSubject> MakeTreeWidget();
/// Qt's table view on a sort-filter proxy on a table of texts.
std::unique_ptr<ListSubject> MakeProxyTable();

} // namespace bench
