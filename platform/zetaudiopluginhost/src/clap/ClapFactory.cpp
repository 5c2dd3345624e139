#include "clap/ClapFactory.h"

#include <algorithm>
#include <set>

#include "clap/ClapHost.h"
#include "clap/ClapText.h"
#include "formats/ScanSteps.h"

namespace zetaudiopluginhost::clap {

using zetcore::utility::Reason;

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

std::optional<Reason> WhyNotReadable(const Descriptor* descriptor)
{
    if (descriptor == nullptr)
        return Reason{"has no description"};
    if (!IsKnown(descriptor->version))
        return Reason{"is described in version " + VersionText(descriptor->version) +
                      " of CLAP, which this system does not know"};
    return std::nullopt;
}

std::optional<Reason> WhyNotUsable(const ClapPlugin& plugin, const std::set<std::wstring>& idsBefore)
{
    if (plugin.shownId.empty())
        return Reason{"has no id"};
    if (idsBefore.contains(plugin.shownId))
        return Reason{"has the id of another one"};
    return std::nullopt;
}

} // namespace

ClapFactory::ClapFactory(const PluginFactory& given) : factory(given)
{
    if (factory.getPluginCount == nullptr || factory.getPluginDescriptor == nullptr ||
        factory.createPlugin == nullptr)
        throw PluginUnusable("its plug-in factory lacks functions");
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
        std::optional<Reason> problem = WhyNotReadable(descriptor);
        if (!problem) {
            ClapPlugin plugin = Copy(*descriptor);
            problem = WhyNotUsable(plugin, ids);
            ids.insert(plugin.shownId);
            if (!problem)
                plugins.usable.push_back(std::move(plugin));
        }
        if (problem && !plugins.problem)
            plugins.problem = Reason{"number " + std::to_string(i + 1) + " " + problem->text};
    }
    if (claimed > maxPlugins && !plugins.problem)
        plugins.problem = Reason{"only the first " + std::to_string(maxPlugins) + " are looked at"};
    return plugins;
}

std::optional<Reason> ClapFactory::CreateAndDestroy(const ClapPlugin& plugin) const
{
    const Plugin* instance =
        CallPlugin([&] { return factory.createPlugin(&factory, &ScanHost(), plugin.id.c_str()); });
    if (instance == nullptr)
        return Reason{"it could not be created"};
    std::optional<Reason> problem;
    if (instance->init == nullptr || instance->destroy == nullptr)
        problem = Reason{"it lacks functions"};
    else if (!CallPlugin([instance] { return instance->init(instance); }))
        problem = Reason{"it could not be initialised"};
    if (instance->destroy != nullptr)
        CallPlugin([instance] { instance->destroy(instance); });
    return problem;
}

} // namespace zetaudiopluginhost::clap
