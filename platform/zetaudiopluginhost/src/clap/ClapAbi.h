#pragma once

#include <cstddef>
#include <cstdint>

/// The part of the CLAP binary interface that finding out about a plug-in needs. Layouts, identifiers and
/// names are those of the published CLAP plug-in format, which is plain C: records of data and functions. The
/// calling convention is the platform's own C one. All texts are UTF-8 and end with a zero.
namespace zetaudiopluginhost::clap {

/// The version of the interface that somebody was built for. Major version 1 is stable; 0 was the time of
/// development, in which layouts changed.
struct Version
{
    std::uint32_t major, minor, revision;
};
static_assert(sizeof(Version) == 12);

inline constexpr Version interfaceVersion{1, 2, 2};

/// A library describes one of its plug-ins with this. `id` and `name` must be there, the rest may be null.
struct Descriptor
{
    Version version;
    const char* id; ///< unique in the world, for example "org.example.delay"
    const char* name;
    const char* vendor;
    const char* url;
    const char* manualUrl;
    const char* supportUrl;
    const char* productVersion;
    const char* description;
    const char* const* features; ///< ends with a null
};
static_assert(sizeof(void*) == 8, "the layouts below are those of 64-bit processes");
static_assert(offsetof(Descriptor, id) == 16);
static_assert(offsetof(Descriptor, productVersion) == 64);
static_assert(offsetof(Descriptor, features) == 80);
static_assert(sizeof(Descriptor) == 88);

/// Features that say which kind of plug-in it is. A plug-in may have several.
inline constexpr const char* instrumentFeature = "instrument";
inline constexpr const char* audioEffectFeature = "audio-effect";

/// The host's side. It lives longer than every plug-in that was given it. All of its functions must be there.
struct Host
{
    Version version;
    void* data; ///< the host's
    const char* name;
    const char* vendor;
    const char* url;
    const char* productVersion;
    const void* (*getExtension)(const Host* host, const char* id); ///< null for one that it does not have
    void (*requestRestart)(const Host* host);
    void (*requestProcess)(const Host* host);
    void (*requestCallback)(const Host* host); ///< asks for a call of `Plugin::onMainThread`
};
static_assert(offsetof(Host, data) == 16);
static_assert(offsetof(Host, getExtension) == 56);
static_assert(sizeof(Host) == 88);

/// A shape that a scanner only passes by.
struct Process;

/// One instance. It is given back with `destroy`, whatever `init` has answered.
struct Plugin
{
    const Descriptor* descriptor;
    void* data;                         ///< the plug-in's
    bool (*init)(const Plugin* plugin); ///< the first call; false: of no use
    void (*destroy)(const Plugin* plugin);
    bool (*activate)(const Plugin* plugin, double sampleRate, std::uint32_t minFrames,
                     std::uint32_t maxFrames);
    void (*deactivate)(const Plugin* plugin);
    bool (*startProcessing)(const Plugin* plugin);
    void (*stopProcessing)(const Plugin* plugin);
    void (*reset)(const Plugin* plugin);
    std::int32_t (*process)(const Plugin* plugin, const Process* process);
    const void* (*getExtension)(const Plugin* plugin, const char* id);
    void (*onMainThread)(const Plugin* plugin);
};
static_assert(offsetof(Plugin, init) == 16);
static_assert(offsetof(Plugin, destroy) == 24);
static_assert(offsetof(Plugin, onMainThread) == 88);
static_assert(sizeof(Plugin) == 96);

inline constexpr const char* pluginFactoryId = "clap.plugin-factory";

/// Owned by the library, as are its descriptors: they are there until `Entry::deinit`.
struct PluginFactory
{
    std::uint32_t (*getPluginCount)(const PluginFactory* factory);
    const Descriptor* (*getPluginDescriptor)(const PluginFactory* factory, std::uint32_t index);
    /// Null when it could not be made.
    const Plugin* (*createPlugin)(const PluginFactory* factory, const Host* host, const char* pluginId);
};
static_assert(sizeof(PluginFactory) == 24);

/// A library exports this record, and not a function.
struct Entry
{
    Version version;
    /// The first call, with the library's path. `deinit` is called exactly when this gave true.
    bool (*init)(const char* path);
    void (*deinit)();
    const void* (*getFactory)(const char* id); ///< null for one that it does not have
};
static_assert(offsetof(Entry, init) == 16);
static_assert(sizeof(Entry) == 40);

inline constexpr const char* entryName = "clap_entry";

} // namespace zetaudiopluginhost::clap
