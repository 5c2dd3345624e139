#pragma once

#include <array>
#include <memory>
#include <optional>

#include <zetui/tree/UI_MultiColumnTreeRow.h>

#include "dialog/list/PluginListEntry.h"
#include "dialog/list/PluginListText.h"

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

    /// The width of a column's text, once somebody has measured it.
    std::optional<float>& TextWidth(unsigned column)
    {
        return textWidths[column < textWidths.size() ? column : 0];
    }
    void ForgetTextWidths() { textWidths.fill(std::nullopt); }

  protected:
    ~PluginListRow() override;

  private:
    PluginListEntry entry;
    std::array<std::optional<float>, kColumnPath + 1> textWidths;
};

} // namespace zetaudiopluginhostui
