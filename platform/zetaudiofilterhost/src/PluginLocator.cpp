#include <zetaudiofilterhost/PluginLocator.h>

#include <array>
#include <utility>

#include "LocatorText.h"

namespace zetaudiofilterhost {

namespace {

struct NamedTechnology
{
    TechnologyType type;
    std::wstring_view name;
};
constexpr std::array<NamedTechnology, 3> namedTechnologies{{
    {TechnologyType::VST, L"VST"},
    {TechnologyType::VST3, L"VST3"},
    {TechnologyType::AU, L"AU"},
}};

TechnologyType TechnologyFromName(std::wstring_view name)
{
    for (const NamedTechnology& technology : namedTechnologies)
        if (technology.name == name)
            return technology.type;
    return TechnologyType::None;
}

} // namespace

std::wstring TechnologyName(TechnologyType type)
{
    for (const NamedTechnology& technology : namedTechnologies)
        if (technology.type == type)
            return std::wstring(technology.name);
    return {};
}

PluginLocator::PluginLocator(TechnologyType technologyType, std::wstring modulePath,
                             std::wstring subcomponentName)
    : technology(technologyType), path(std::move(modulePath)), subcomponent(std::move(subcomponentName))
{}

PluginLocator PluginLocator::ModuleLocator() const
{
    return {technology, path};
}

std::wstring PluginLocator::ToString() const
{
    const std::wstring technologyName = TechnologyName(technology);
    if (IsEmpty() || technologyName.empty())
        return {};
    return technologyName + L'|' + EscapeLocatorPart(path) + L'|' + EscapeLocatorPart(subcomponent);
}

PluginLocator PluginLocator::FromString(const std::wstring& text)
{
    const std::wstring_view whole = text;
    const std::size_t first = whole.find(L'|');
    const std::size_t second = first == whole.npos ? whole.npos : whole.find(L'|', first + 1);
    if (second == whole.npos)
        return {};
    const TechnologyType type = TechnologyFromName(whole.substr(0, first));
    std::optional<std::wstring> modulePath = UnescapeLocatorPart(whole.substr(first + 1, second - first - 1));
    // A third separator is not plain, so it is refused here.
    std::optional<std::wstring> subcomponentName = UnescapeLocatorPart(whole.substr(second + 1));
    if (type == TechnologyType::None || !modulePath || modulePath->empty() || !subcomponentName)
        return {};
    return {type, std::move(*modulePath), std::move(*subcomponentName)};
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
