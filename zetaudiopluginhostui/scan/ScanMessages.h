#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/serialization/Value.h>

/// The requests to the scanner process, and what it answers. Pure; any thread.
namespace zetaudiopluginhostui {

struct ConnectArguments
{
    std::wstring pluginSettingsPath;
    std::wstring bannedSettingsPath;
    std::wstring permanentBannedSettingsPath;
    std::wstring resultFilePath;
    bool disableVST2ShellSkipping = false;
    bool quickEffectScan = false;
};

zetcore::serialization::Call BuildConnect(const ConnectArguments& arguments);
zetcore::serialization::Call
BuildBeginScanForPlugins(const std::vector<zetaudiofilterhost::PluginLocator>& locators);
zetcore::serialization::Call BuildGetScanInfo();
zetcore::serialization::Call BuildScanOneEntity();

/// Where the scanner is.
struct ScanInfo
{
    /// The text form of the locator that it is at; empty when there is none.
    std::wstring locator;
    std::wstring subcomponent;
    /// Entities done in the scanner's current run, of `total`.
    std::int32_t progress = 0;
    std::int32_t total = 0;
    /// False when the scanner has finished.
    bool continues = false;

    friend bool operator==(const ScanInfo&, const ScanInfo&) = default;
};

/// Reads the reply of GetScanInfo. A missing key throws `missing_key_exception`, a value of a wrong type
/// `std::bad_any_cast`; both messages name it. Integers are narrowed to their low 32 bits; "continue" may
/// also be an `int` (true when it is not 0) or the string "true" or "false".
ScanInfo ReadScanInfoReply(const zetcore::serialization::ValuePtr& reply);

} // namespace zetaudiopluginhostui
