#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.create-fails", "Create Fails")};
using Library = ClapLibrary<plugins>;

const Plugin* CreateNothing(const PluginFactory*, const Host*, const char*)
{
    return nullptr;
}

constexpr PluginFactory factory{&Library::Count, &Library::Get, &CreateNothing};

const void* GetFactory(const char*)
{
    return &factory;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
