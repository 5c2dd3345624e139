#include <stdexcept>

#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.throws-exception", "Throws Exception")};
using Library = ClapLibrary<plugins>;

std::uint32_t ThrowInsteadOfCount(const PluginFactory*)
{
    throw std::runtime_error("the plug-in lost count");
}

constexpr PluginFactory throwing{&ThrowInsteadOfCount, &Library::Get, &Library::Create};

const void* GetFactory(const char*)
{
    return &throwing;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
