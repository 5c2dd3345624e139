#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/serialization/Value.h>

/// The arguments of the scan requests, checked. Each function throws `zetmarshal::RPCError` with the code
/// `InvalidParams` that names the argument's number and what it should be.
namespace zetaudiofilterscan {

struct ConnectArguments
{
    std::wstring pluginSettingsPath;
    std::wstring bannedSettingsPath;
    std::wstring permanentBannedSettingsPath;
    std::wstring resultPath;
    bool disableVST2ShellSkipping = false;
    bool quickEffectScan = false;
};

ConnectArguments ReadConnectArguments(const zetcore::serialization::Array& params);
/// A text that is no locator is an error, because the host counts on every plug-in of its list being
/// reported.
std::vector<zetaudiofilterhost::PluginLocator> ReadLocators(const zetcore::serialization::Array& params);
void ReadNoArguments(const char* method, const zetcore::serialization::Array& params);

} // namespace zetaudiofilterscan
