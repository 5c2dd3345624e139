#include "commands/LookNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "commands/UsageError.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

using zetui::skins::Scheme;
using zetui::skins::Skin;

namespace {

constexpr std::array<std::pair<std::string_view, Scheme>, 3> schemes{
    {{"light", Scheme::Light}, {"dark", Scheme::Dark}, {"system", Scheme::FollowDesktop}}};

} // namespace

std::vector<std::string> SkinNames()
{
    std::vector<std::string> names;
    for (const Skin skin : zetui::skins::AllSkins())
        names.push_back(NameOf(skin));
    return names;
}

Skin SkinOfName(const std::string& name)
{
    for (const Skin skin : zetui::skins::AllSkins()) {
        if (CLI::detail::to_lower(name) == NameOf(skin))
            return skin;
    }
    throw usage_error("--skin " + name + ": there are " + JoinWords(SkinNames()));
}

std::vector<std::string> ThemeNames()
{
    std::vector<std::string> names;
    for (const auto& scheme : schemes)
        names.emplace_back(scheme.first);
    return names;
}

Scheme SchemeOfName(const std::string& name)
{
    const auto found =
        std::ranges::find(schemes, CLI::detail::to_lower(name), &std::pair<std::string_view, Scheme>::first);
    if (found == schemes.end())
        throw usage_error("--theme " + name + ": there are " + JoinWords(ThemeNames()));
    return found->second;
}

} // namespace zetaudiopluginmanager
