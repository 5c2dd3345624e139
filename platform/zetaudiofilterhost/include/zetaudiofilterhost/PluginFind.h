#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/Export.h>

namespace zetaudiofilterhost {

/// Stands for the version of a plug-in that has none to show, because it is banned.
inline constexpr wchar_t noVersion[] = L"-";

/// Finds plug-ins by a text that a user typed: it occurs in the name, the path or the version. The letters
/// "A" to "Z" equal "a" to "z", and every other unit equals itself only. An empty text is in every one. A
/// value; any thread.
///
/// The texts to look into are gathered once, in a compact form, because many are looked into for each letter
/// that is typed.
class ZETAUDIOFILTERHOST_API PluginFind
{
  public:
    explicit PluginFind(std::wstring_view findText);

    /// The find text is empty.
    bool KeepsAll() const noexcept { return folded.empty(); }
    /// `texts` is what `AppendTexts` has appended for one plug-in.
    bool Keeps(std::string_view texts) const noexcept;

    static void AppendTexts(std::wstring_view name, std::wstring_view path, std::wstring_view version,
                            std::string& texts);

  private:
    std::string folded;
};

} // namespace zetaudiofilterhost
