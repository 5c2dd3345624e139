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

/// Of the time before the format was stable: its functions are not what they seem.
ZET_CLAP_ENTRY{Version{0, 26, 3}, &CrashInInit, nullptr, nullptr};
