#include "ClapPlugin.h"
#include "Crash.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.crash-in-factory", "Crash In Factory")};
using Library = ClapLibrary<plugins>;

const void* CrashInFactory(const char*)
{
    Crash();
    return nullptr;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &CrashInFactory};
