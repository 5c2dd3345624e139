#include "module/DebugSwitch.h"

#include <zetcore/debug/DebugDatabase.h>

namespace zetaudiopluginhostui {

bool IsDebugSwitchOn(std::string_view key, std::string_view defaultValue)
{
    return zetcore::debug::DebugDatabase::Instance().GetEntry(key, defaultValue) == "true";
}

} // namespace zetaudiopluginhostui
