#pragma once

#include <iterator>
#include <string_view>

#include <clap/ClapAbi.h>

#include "ClapCounts.h"
#include "Export.h"

/// The code that all CLAP samples share. Each brings its own clap_entry.
namespace zettestplugin {

using namespace zetaudiopluginhost::clap;

constexpr Descriptor Describe(const char* id, const char* name, const char* vendor, const char* version,
                              const char* const* features)
{
    return {interfaceVersion, id, name, vendor, "", "", "", version, "", features};
}

/// An instance that insists on a whole host, asks it what plug-ins ask, and deletes itself.
class ClapInstance
{
  public:
    ClapInstance(const Descriptor& descriptor, const Host* callback) : host(callback)
    {
        plugin.descriptor = &descriptor;
        plugin.data = this;
        plugin.init = [](const Plugin* self) { return From(self).Init(); };
        plugin.destroy = [](const Plugin* self) { delete &From(self); };
        plugin.activate = [](const Plugin*, double, std::uint32_t, std::uint32_t) { return true; };
        plugin.deactivate = [](const Plugin*) {};
        plugin.startProcessing = [](const Plugin*) { return true; };
        plugin.stopProcessing = [](const Plugin*) {};
        plugin.reset = [](const Plugin*) {};
        plugin.process = [](const Plugin*, const Process*) { return std::int32_t{0}; };
        plugin.getExtension = [](const Plugin*, const char*) { return static_cast<const void*>(nullptr); };
        plugin.onMainThread = [](const Plugin*) {};
        ++Counts().instances;
    }
    ClapInstance(const ClapInstance&) = delete;
    ClapInstance& operator=(const ClapInstance&) = delete;

    Plugin* Interface() noexcept { return &plugin; }

  private:
    ~ClapInstance() { --Counts().instances; }

    static ClapInstance& From(const Plugin* self) { return *static_cast<ClapInstance*>(self->data); }

    bool Init() const
    {
        if (!host->name || !*host->name || !host->vendor || !host->url || !host->productVersion)
            return false;
        host->requestRestart(host);
        host->requestProcess(host);
        host->requestCallback(host);
        return host->getExtension(host, "org.example.no-such-thing") == nullptr;
    }

    const Host* host;
    Plugin plugin{};
};

/// A library with the plug-ins of an array of descriptors. A sample that does otherwise copies the records
/// and changes them.
template<const auto& descriptors>
struct ClapLibrary
{
    static bool Init(const char* path)
    {
        const bool isPath = path && std::string_view(path).ends_with(".clap");
        Counts().entered += isPath ? 1 : 0;
        return isPath;
    }
    static void Deinit() { --Counts().entered; }

    static std::uint32_t Count(const PluginFactory*)
    {
        return static_cast<std::uint32_t>(std::size(descriptors));
    }
    static const Descriptor* Get(const PluginFactory*, std::uint32_t index)
    {
        return index < std::size(descriptors) ? &descriptors[index] : nullptr;
    }
    static const Plugin* Create(const PluginFactory*, const Host* host, const char* id)
    {
        if (!host || host->version.major != interfaceVersion.major)
            return nullptr;
        for (const Descriptor& each : descriptors)
            if (each.id && std::string_view(each.id) == id)
                return (new ClapInstance(each, host))->Interface();
        return nullptr;
    }
    static constexpr PluginFactory factory{&Count, &Get, &Create};

    static const void* GetFactory(const char* id)
    {
        return Counts().entered > 0 && std::string_view(id) == pluginFactoryId ? &factory : nullptr;
    }
    static constexpr Entry entry{interfaceVersion, &Init, &Deinit, &GetFactory};
};

/// For the samples of which only the behaviour matters.
inline constexpr const char* ordinaryFeatures[] = {audioEffectFeature, nullptr};
constexpr Descriptor Ordinary(const char* id, const char* name)
{
    return Describe(id, name, "Bramble Test Works", "1.0.0", ordinaryFeatures);
}

} // namespace zettestplugin

/// Declares the entry record; its value follows.
#define ZET_CLAP_ENTRY                                                                                       \
    ZET_PLUGIN_EXPORT const zettestplugin::Entry clap_entry;                                                 \
    constexpr zettestplugin::Entry clap_entry
