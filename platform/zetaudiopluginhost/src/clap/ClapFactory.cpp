#include "clap/ClapFactory.h"

#include <algorithm>
#include <set>

#include "clap/ClapHost.h"
#include "clap/ClapText.h"
#include "formats/ScanSteps.h"

namespace zetaudiopluginhost::clap {

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

/// Empty when it can be read.
std::string WhyNotReadable(const Descriptor* descriptor)
{
    if (descriptor == nullptr)
        return "has no description";
    if (!IsKnown(descriptor->version))
        return "is described in version " + VersionText(descriptor->version) +
               " of CLAP, which this system does not know";
    return {};
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
        std::string problem = WhyNotReadable(descriptor);
        if (problem.empty()) {
            ClapPlugin plugin = Copy(*descriptor);
            if (plugin.shownId.empty())
                problem = "has no id";
            else if (!ids.insert(plugin.shownId).second)
                problem = "has the id of another one";
            else
                plugins.usable.push_back(std::move(plugin));
        }
        if (!problem.empty() && plugins.problem.empty())
            plugins.problem = "number " + std::to_string(i + 1) + " " + problem;
    }
    if (claimed > maxPlugins && plugins.problem.empty())
        plugins.problem = "only the first " + std::to_string(maxPlugins) + " are looked at";
    return plugins;
}

std::string ClapFactory::TryPlugin(const ClapPlugin& plugin) const
{
    const Plugin* instance =
        CallPlugin([&] { return factory.createPlugin(&factory, &ScanHost(), plugin.id.c_str()); });
    if (instance == nullptr)
        return "it could not be created";
    std::string problem;
    if (instance->init == nullptr || instance->destroy == nullptr)
        problem = "it lacks functions";
    else if (!CallPlugin([instance] { return instance->init(instance); }))
        problem = "it could not be initialised";
    if (instance->destroy != nullptr)
        CallPlugin([instance] { instance->destroy(instance); });
    return problem;
}

} // namespace zetaudiopluginhost::clap
