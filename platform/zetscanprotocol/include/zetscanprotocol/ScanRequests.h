#pragma once

#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/serialization/Value.h>

/// The four requests, as the host writes and the scanner reads them. Pure; any thread.
///
/// The readers check number, types and values. They throw `zetmarshal::RPCError` with the code
/// `InvalidParams`; its message names the method, the argument and, in a list, the element.
namespace zetscanprotocol {

struct ConnectArguments
{
    std::wstring pluginSettingsPath;
    std::wstring bannedSettingsPath;
    std::wstring permanentBannedSettingsPath;
    std::wstring resultFilePath;
    bool disableVST2ShellSkipping = false;
    bool quickEffectScan = false;

    friend bool operator==(const ConnectArguments&, const ConnectArguments&) = default;
};

zetcore::serialization::Call BuildConnect(const ConnectArguments& arguments);
ConnectArguments ReadConnect(const zetcore::serialization::Array& params);

zetcore::serialization::Call
BuildBeginScanForPlugins(const std::vector<zetaudiofilterhost::PluginLocator>& locators);
/// A text that is no locator is an error, because the host counts on every plug-in of its list being
/// reported.
std::vector<zetaudiofilterhost::PluginLocator>
ReadBeginScanForPlugins(const zetcore::serialization::Array& params);

zetcore::serialization::Call BuildGetScanInfo();
void ReadGetScanInfo(const zetcore::serialization::Array& params);

zetcore::serialization::Call BuildScanOneEntity();
void ReadScanOneEntity(const zetcore::serialization::Array& params);

} // namespace zetscanprotocol
