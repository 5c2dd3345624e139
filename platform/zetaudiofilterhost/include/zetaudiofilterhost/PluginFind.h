#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/Export.h>

namespace zetaudiofilterhost {

/// The version that is shown for a banned plug-in, which has none.
inline constexpr wchar_t noVersion[] = L"-";

/// Finds plug-ins by a text that a user typed. It finds a plug-in when the text occurs in its name, path or
/// version. The letters "A" to "Z" equal "a" to "z", and every other unit equals itself only. An empty text
/// occurs everywhere. A value. Any thread.
///
/// The texts of all plug-ins are searched for each letter that is typed. Therefore they are made into a
/// compact form once.
class ZETAUDIOFILTERHOST_API PluginFind
{
  public:
    explicit PluginFind(std::wstring_view findText);

    /// True for an empty find text, which keeps every plug-in.
    bool KeepsAll() const noexcept { return folded.empty(); }
    /// `texts` is the part that `AppendTexts` has appended for one plug-in.
    bool Keeps(std::string_view texts) const noexcept;

    static void AppendTexts(std::wstring_view name, std::wstring_view path, std::wstring_view version,
                            std::string& texts);

  private:
    std::string folded;
};

} // namespace zetaudiofilterhost
