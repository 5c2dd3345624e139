#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.works", "Works"),
                                  Ordinary("org.bramble.is-not-created", "Is Not Created"),
                                  Ordinary("org.bramble.is-not-initialised", "Is Not Initialised")};
using Library = ClapLibrary<plugins>;

const Plugin* Create(const PluginFactory* factory, const Host* host, const char* id)
{
    if (std::string_view(id) == plugins[1].id)
        return nullptr;
    const Plugin* const plugin = Library::Create(factory, host, id);
    if (plugin && std::string_view(id) == plugins[2].id)
        static_cast<ClapInstance*>(plugin->data)->Interface()->init = [](const Plugin*) { return false; };
    return plugin;
}

constexpr PluginFactory factory{&Library::Count, &Library::Get, &Create};

const void* GetFactory(const char*)
{
    return &factory;
}

} // namespace

/// One of its three plug-ins works.
ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
