#include "ClapPlugin.h"
#include "Crash.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.before-the-crash", "Before The Crash"),
                                  Ordinary("org.bramble.crash-in-descriptor", "Crash In Descriptor")};
using Library = ClapLibrary<plugins>;

const Descriptor* GetOrCrash(const PluginFactory* factory, std::uint32_t index)
{
    if (index == 1)
        Crash();
    return Library::Get(factory, index);
}

constexpr PluginFactory crashing{&Library::Count, &GetOrCrash, &Library::Create};

const void* GetFactory(const char*)
{
    return &crashing;
}

} // namespace

/// It crashes after it has told of its first plug-in.
ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
