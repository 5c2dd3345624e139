#include "ClapPlugin.h"
#include "Crash.h"

using namespace zettestplugin;

namespace {

bool Refuse(const char*)
{
    return false;
}

void CrashInDeinit()
{
    Crash();
}

const void* CrashInFactory(const char*)
{
    Crash();
    return nullptr;
}

} // namespace

/// It is not ready for any further call.
ZET_CLAP_ENTRY{interfaceVersion, &Refuse, &CrashInDeinit, &CrashInFactory};
