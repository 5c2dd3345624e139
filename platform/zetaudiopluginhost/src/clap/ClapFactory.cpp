#include "clap/ClapFactory.h"

#include <algorithm>
#include <set>

#include "clap/ClapHost.h"
#include "clap/ClapText.h"
#include "formats/ScanSteps.h"

namespace zetaudiopluginhost::clap {

using Kind = PluginFailure::Kind;

namespace {

/// Several times what the largest libraries have: a count beyond it is no count.
constexpr std::uint32_t maxPlugins = 10000;

ClapPlugin Copy(const Descriptor& descriptor)
{
    ClapPlugin plugin;
    plugin.shownId = Text(descriptor.id);
    plugin.id = Bytes(descriptor.id);
    plugin.name = Text(descriptor.name);
    plugin.vendor = Text(descriptor.vendor);
    plugin.version = Text(descriptor.productVersion);
    plugin.features = Features(descriptor.features);
    return plugin;
}

std::optional<PluginFailure> WhyNotReadable(const Descriptor* descriptor)
{
    if (descriptor == nullptr)
        return PluginFailure{.kind = Kind::PluginsWithoutDescription};
    if (!IsKnown(descriptor->version))
        return PluginFailure{.kind = Kind::PluginsOfUnknownVersion,
                             .details = {VersionText(descriptor->version)}};
    return std::nullopt;
}

std::optional<PluginFailure> WhyNotUsable(const ClapPlugin& plugin, const std::set<std::wstring>& idsBefore)
{
    if (plugin.shownId.empty())
        return PluginFailure{.kind = Kind::PluginsWithoutId};
    if (idsBefore.contains(plugin.shownId))
        return PluginFailure{.kind = Kind::PluginsWithOneId};
    return std::nullopt;
}

} // namespace

ClapFactory::ClapFactory(const PluginFactory& given) : factory(given)
{
    if (factory.getPluginCount == nullptr || factory.getPluginDescriptor == nullptr ||
        factory.createPlugin == nullptr)
        throw PluginUnusable({.kind = Kind::FactoryLacksFunctions});
}

ClapPlugins ClapFactory::Describe() const
{
    ClapPlugins plugins;
    const std::uint32_t claimed = CallPlugin([this] { return factory.getPluginCount(&factory); });
    plugins.claimed = claimed;
    std::set<std::wstring> ids;
    for (std::uint32_t i = 0; i < std::min(claimed, maxPlugins); ++i) {
        const Descriptor* descriptor =
            CallPlugin([this, i] { return factory.getPluginDescriptor(&factory, i); });
        std::optional<PluginFailure> problem = WhyNotReadable(descriptor);
        if (!problem) {
            ClapPlugin plugin = Copy(*descriptor);
            problem = WhyNotUsable(plugin, ids);
            ids.insert(plugin.shownId);
            if (!problem)
                plugins.usable.push_back(std::move(plugin));
        }
        if (problem && !plugins.problem) {
            problem->details.insert(problem->details.begin(), std::to_string(i + 1));
            plugins.problem = std::move(problem);
        }
    }
    if (claimed > maxPlugins && !plugins.problem)
        plugins.problem =
            PluginFailure{.kind = Kind::TooManyPlugins, .details = {std::to_string(maxPlugins)}};
    if (plugins.problem)
        plugins.problem->details.insert(
            plugins.problem->details.begin(),
            {std::to_string(claimed - plugins.usable.size()), std::to_string(claimed)});
    return plugins;
}

std::optional<PluginFailure> ClapFactory::CreateAndDestroy(const ClapPlugin& plugin) const
{
    const Plugin* instance =
        CallPlugin([&] { return factory.createPlugin(&factory, &ScanHost(), plugin.id.c_str()); });
    if (instance == nullptr)
        return PluginFailure{.kind = Kind::NotCreated};
    std::optional<PluginFailure> problem;
    if (instance->init == nullptr || instance->destroy == nullptr)
        problem = PluginFailure{.kind = Kind::LacksFunctions};
    else if (!CallPlugin([instance] { return instance->init(instance); }))
        problem = PluginFailure{.kind = Kind::NotInitialised};
    if (instance->destroy != nullptr)
        CallPlugin([instance] { instance->destroy(instance); });
    return problem;
}

} // namespace zetaudiopluginhost::clap
