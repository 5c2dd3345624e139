#pragma once

#include <memory>

#include <zetui/tree/UI_MultiColumnTreeRow.h>

#include "dialog/list/PluginListEntry.h"

namespace zetaudiopluginhostui {

/// A row of the plug-in list. It carries its entry, so that the list needs no table beside its rows. Rows are
/// kept from one fill of the list to the next. Main thread.
class PluginListRow final : public zetui::controls::UI_MultiColumnTreeRow
{
  public:
    /// The record is null for a banned plug-in.
    using InfoPtr = std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>;
    PluginListRow(const zetaudiofilterhost::PluginLocator& locator, const InfoPtr& info);

    const PluginListEntry& Entry() const noexcept { return entry; }
    /// True when it is the row for this record, or for this banned plug-in.
    bool IsFor(const zetaudiofilterhost::PluginLocator& locator, const InfoPtr& info) const;

  protected:
    ~PluginListRow() override;

  private:
    PluginListEntry entry;
};

} // namespace zetaudiopluginhostui
