#pragma once

#include <string>
#include <string_view>

#include "dialog/PluginListEntry.h"

namespace zetaudiopluginhostui {

/// The find box keeps those texts in the list in which its own occurs. The letters "A" to "Z" are equal to
/// "a" to "z", and every other unit to itself only. An empty find text is in every text. Main thread.
class FindMatch
{
  public:
    explicit FindMatch(std::wstring_view findText);

    /// There is no find text.
    bool KeepsAll() const noexcept { return folded.empty(); }
    bool OccursIn(std::wstring_view text) const;
    /// Looks into the Name, then the Path, then the Version.
    bool Keeps(const PluginListEntry& entry) const;

    /// Appends what `Keeps` looks into, in a compact form for `KeepsTexts`.
    static void AppendTexts(const PluginListEntry& entry, std::string& texts);
    bool KeepsTexts(std::string_view texts) const noexcept;

  private:
    std::string folded;
};

} // namespace zetaudiopluginhostui
