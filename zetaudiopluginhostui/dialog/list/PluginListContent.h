#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/list/PluginListRow.h"

namespace zetaudiopluginhostui {

/// All rows that the plug-in list can show: one for each plug-in of the registry, in its order, then one for
/// each banned plug-in. The texts that the find box searches are copied into one string, because a visit to
/// 100,000 records for each typed letter would take too long. Main thread.
class PluginListContent
{
  public:
    using RowPtr = zetui::utility::IntrusivePtr<PluginListRow>;

    /// Reads the registry and the list of banned plug-ins, unless nothing has changed since the last time. A
    /// plug-in that has a row keeps it. Returns true when the rows may need another order than before.
    bool Update();
    const std::vector<RowPtr>& Rows() const noexcept { return rows; }
    /// The rows that the find test lets through, in order.
    std::vector<RowPtr> Find(const zetaudiofilterhost::PluginFind& find) const;

  private:
    /// True when the plug-ins and their texts are still those that were read.
    bool IsCurrent() const;
    void Read();
    void Add(std::size_t index, const zetaudiofilterhost::PluginLocator& locator,
             const PluginListRow::InfoPtr& info);

    std::vector<RowPtr> rows;
    std::string texts;
    /// The place in `texts` where each row's texts end.
    std::vector<std::size_t> textEnds;
    /// All records of the registry, also those that are not shown.
    std::vector<PluginListRow::InfoPtr> records;
    bool withSynths = true;
    zetaudiofilterhost::PluginModuleInfoManager::RecordChanges changes;
};

} // namespace zetaudiopluginhostui
