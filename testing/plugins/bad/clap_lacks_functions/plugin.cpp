#include "ClapPlugin.h"
#include "Crash.h"

using namespace zettestplugin;

namespace {

bool CrashInInit(const char*)
{
    Crash();
    return true;
}

} // namespace

/// It has no function to leave it, so nobody must enter it.
ZET_CLAP_ENTRY{interfaceVersion, &CrashInInit, nullptr, nullptr};
