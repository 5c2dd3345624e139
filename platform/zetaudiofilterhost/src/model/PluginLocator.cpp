#include <zetaudiofilterhost/PluginLocator.h>

#include <utility>

#include "model/LocatorText.h"
#include <zetaudiofilterhost/PluginFormat.h>

namespace zetaudiofilterhost {

std::wstring TechnologyName(TechnologyType type)
{
    const PluginFormat* format = FindPluginFormat(type);
    return format ? std::wstring(format->name) : std::wstring();
}

PluginLocator::PluginLocator(TechnologyType technologyType, std::wstring modulePath,
                             std::wstring subcomponentName)
    : technology(technologyType), path(std::move(modulePath)), subcomponent(std::move(subcomponentName))
{}

PluginLocator PluginLocator::ModuleLocator() const
{
    return {technology, path};
}

bool PluginLocator::IsValid() const
{
    return !IsEmpty() && FindPluginFormat(technology);
}

std::wstring PluginLocator::ToString() const
{
    if (!IsValid())
        return {};
    return TechnologyName(technology) + L'|' + EscapeLocatorPart(path) + L'|' +
           EscapeLocatorPart(subcomponent);
}

PluginLocator PluginLocator::FromString(const std::wstring& text)
{
    const std::wstring_view whole = text;
    const std::size_t first = whole.find(L'|');
    const std::size_t second = first == whole.npos ? whole.npos : whole.find(L'|', first + 1);
    if (second == whole.npos)
        return {};
    const PluginFormat* format = FindPluginFormat(whole.substr(0, first));
    std::optional<std::wstring> modulePath = UnescapeLocatorPart(whole.substr(first + 1, second - first - 1));
    // A third separator is not plain, so it is refused here.
    std::optional<std::wstring> subcomponentName = UnescapeLocatorPart(whole.substr(second + 1));
    if (!format || !modulePath || modulePath->empty() || !subcomponentName)
        return {};
    return {format->type, std::move(*modulePath), std::move(*subcomponentName)};
}

std::strong_ordering operator<=>(const PluginLocator& left, const PluginLocator& right)
{
    if (const int order = left.path.compare(right.path); order != 0)
        return order <=> 0;
    if (left.technology != right.technology)
        return left.technology <=> right.technology;
    return left.subcomponent.compare(right.subcomponent) <=> 0;
}

} // namespace zetaudiofilterhost
