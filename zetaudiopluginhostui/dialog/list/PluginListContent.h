#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/list/PluginListRow.h"

namespace zetaudiopluginhostui {

/// All that the plug-in list can show: a row for each plug-in of the registry, in its order, then one for
/// each banned one; and the texts that the find box looks into. These stand one behind the other, because to
/// visit 100,000 records for each typed letter takes longer than the letter may. Main thread.
class PluginListContent
{
  public:
    using RowPtr = zetui::utility::IntrusivePtr<PluginListRow>;

    /// Reads the registry and the list of banned plug-ins, as far as they have changed since it did so last.
    /// A plug-in that has a row keeps it. True when rows may belong into another order than before.
    bool Update();
    const std::vector<RowPtr>& Rows() const noexcept { return rows; }
    /// The rows that are found, in order.
    std::vector<RowPtr> Find(const zetaudiofilterhost::PluginFind& find) const;

  private:
    /// The same plug-ins are there as when they were read, with the same texts.
    bool IsCurrent() const;
    void Read();
    void Add(std::size_t index, const zetaudiofilterhost::PluginLocator& locator,
             const PluginListRow::InfoPtr& info);

    std::vector<RowPtr> rows;
    std::string texts;
    /// By row.
    std::vector<std::size_t> textEnds;
    /// Every record of the registry's iteration, those that are not shown included.
    std::vector<PluginListRow::InfoPtr> records;
    bool withSynths = true;
    zetaudiofilterhost::PluginModuleInfoManager::RecordChanges changes;
};

} // namespace zetaudiopluginhostui
