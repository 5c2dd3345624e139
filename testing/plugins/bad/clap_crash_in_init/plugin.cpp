#include "ClapPlugin.h"
#include "Crash.h"

using namespace zettestplugin;

namespace {

constexpr Descriptor plugins[] = {Ordinary("org.bramble.crash-in-init", "Crash In Init")};
using Library = ClapLibrary<plugins>;

bool CrashInInit(const char*)
{
    Crash();
    return true;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &CrashInInit, &Library::Deinit, &Library::GetFactory};
