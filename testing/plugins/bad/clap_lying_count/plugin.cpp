#include <limits>

#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.the-only-one", "The Only One")};
using Library = ClapLibrary<plugins>;

std::uint32_t CountFarTooMany(const PluginFactory*)
{
    return std::numeric_limits<std::uint32_t>::max();
}

constexpr PluginFactory lying{&CountFarTooMany, &Library::Get, &Library::Create};

const void* GetFactory(const char*)
{
    return &lying;
}

} // namespace

/// It has one plug-in and claims more.
ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
