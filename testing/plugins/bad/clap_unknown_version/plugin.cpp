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

/// Its version is from before the format was stable: the functions then had other meanings.
ZET_CLAP_ENTRY{Version{0, 26, 3}, &CrashInInit, nullptr, nullptr};
