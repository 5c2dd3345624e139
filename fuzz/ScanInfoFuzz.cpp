// Reads the scanner's answer to GetScanInfo, as it comes over the connection.
#include <any>
#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetmarshal/JsonValue.h>
#include <zetscanprotocol/ScanInfo.h>

#include "FuzzTarget.h"

using namespace zetcore::serialization;
using namespace zetscanprotocol;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ScanInfo info;
    try {
        info = ReadScanInfoReply(zetmarshal::FromJson(zetfuzz::Text(data, size)));
    } catch (const missing_key_exception& error) {
        zetfuzz::Require(!error.Key().empty(), "the missing key is named");
        return 0;
    } catch (const std::bad_any_cast&) {
        return 0;
    } catch (const std::runtime_error&) {
        return 0;
    }
    zetfuzz::Require(zetaudiofilterhost::PluginLocator::FromString(info.locator.ToString()) == info.locator,
                     "a locator survives its text");
    zetfuzz::Require(ReadScanInfoReply(zetmarshal::FromJson(zetmarshal::ToJson(BuildScanInfoReply(info)))) ==
                         info,
                     "a record written again reads the same");
    return 0;
}
