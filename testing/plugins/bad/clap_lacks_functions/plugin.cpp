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

/// It cannot be left again, so nobody must enter it.
ZET_CLAP_ENTRY{interfaceVersion, &CrashInInit, nullptr, nullptr};
