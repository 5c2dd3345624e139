#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr const char* both[] = {instrumentFeature, audioEffectFeature, nullptr};
constexpr Descriptor plugins[] = {
    Describe(nullptr, nullptr, nullptr, nullptr, nullptr),
    Describe("org.bramble.only-an-id", nullptr, nullptr, nullptr, nullptr),
    Describe("", "Empty Id", "", "", ordinaryFeatures),
    Describe("org.bramble.empty-name", "", "", "", both),
    Ordinary("org.bramble.only-an-id", "Not The First With This Id"),
};
using Library = ClapLibrary<plugins>;

std::uint32_t OneTooMany(const PluginFactory* factory)
{
    return Library::Count(factory) + 1;
}

constexpr PluginFactory lying{&OneTooMany, &Library::Get, &Library::Create};

const void* GetFactory(const char*)
{
    return &lying;
}

} // namespace

/// Many fields are null that must not be. Two of the six plug-ins can be used.
ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
