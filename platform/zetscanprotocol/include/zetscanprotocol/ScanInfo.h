#pragma once

#include <cstdint>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/serialization/Value.h>

/// The replies, as the scanner writes and the host reads them. Pure; any thread.
namespace zetscanprotocol {

/// How far the scanner is: the record in the reply of GetScanInfo.
struct ScanInfo
{
    /// The plug-in that the scanner is at. It is empty when there is none, and when its text is no locator.
    zetaudiofilterhost::PluginLocator locator;
    std::wstring subcomponent;
    /// Entities done in the scanner's current run, of `total`.
    std::int32_t progress = 0;
    std::int32_t total = 0;
    /// False when the scanner has finished.
    bool continues = false;

    friend bool operator==(const ScanInfo&, const ScanInfo&) = default;
};

zetcore::serialization::ValuePtr BuildScanInfoReply(const ScanInfo& info);

/// A missing key throws `missing_key_exception`, a value of a wrong type `std::bad_any_cast`; both messages
/// name it. Integers are narrowed to their low 32 bits; "continue" may also be an `int` (true when it is not
/// 0) or the string "true" or "false".
ScanInfo ReadScanInfoReply(const zetcore::serialization::ValuePtr& reply);

/// The reply of the other three requests: an object without keys. The host does not look into it.
zetcore::serialization::ValuePtr BuildDoneReply();

} // namespace zetscanprotocol
