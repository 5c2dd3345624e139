#include "dialog/FindMatch.h"

#include <algorithm>

#include "dialog/PluginListText.h"

namespace zetaudiopluginhostui {

namespace {

constexpr wchar_t Fold(wchar_t unit)
{
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}

} // namespace

FindMatch::FindMatch(std::wstring_view findText) : folded(findText)
{
    std::transform(folded.begin(), folded.end(), folded.begin(), Fold);
}

bool FindMatch::OccursIn(std::wstring_view text) const
{
    return std::search(text.begin(), text.end(), folded.begin(), folded.end(),
                       [](wchar_t inText, wchar_t wanted) { return Fold(inText) == wanted; }) != text.end() ||
           folded.empty();
}

bool FindMatch::Keeps(const PluginListEntry& entry) const
{
    if (folded.empty())
        return true;
    for (const unsigned column : {kColumnName, kColumnPath, kColumnVersion}) {
        if (OccursIn(GetCellText(column, entry)))
            return true;
    }
    return false;
}

} // namespace zetaudiopluginhostui
