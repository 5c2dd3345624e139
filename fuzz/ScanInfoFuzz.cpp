// The scanner's answer to GetScanInfo, as it comes over the wire.
#include <any>
#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetmarshal/JsonValue.h>

#include "FuzzTarget.h"
#include "scan/ScanMessages.h"

namespace {

using namespace zetcore::serialization;
using zetaudiopluginhostui::ScanInfo;

ValuePtr Reply(const ScanInfo& info)
{
    return MakeValue(
        Object{{ToUtf8String("value"),
                MakeValue(Object{
                    {ToUtf8String("locator"), MakeString(std::wstring_view(info.locator))},
                    {ToUtf8String("subcomponent"), MakeString(std::wstring_view(info.subcomponent))},
                    {ToUtf8String("progress"), MakeValue<long long>(info.progress)},
                    {ToUtf8String("total"), MakeValue<long long>(info.total)},
                    {ToUtf8String("continue"), MakeValue(info.continues)},
                })}});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ScanInfo info;
    try {
        info = zetaudiopluginhostui::ReadScanInfoReply(zetmarshal::FromJson(zetfuzz::Text(data, size)));
    } catch (const missing_key_exception& error) {
        zetfuzz::Require(!error.Key().empty(), "the missing key is named");
        return 0;
    } catch (const std::bad_any_cast&) {
        return 0;
    } catch (const std::runtime_error&) {
        return 0;
    }
    const auto locator = zetaudiofilterhost::PluginLocator::FromString(info.locator);
    zetfuzz::Require(zetaudiofilterhost::PluginLocator::FromString(locator.ToString()) == locator,
                     "a locator survives its text");
    zetfuzz::Require(zetaudiopluginhostui::ReadScanInfoReply(
                         zetmarshal::FromJson(zetmarshal::ToJson(Reply(info)))) == info,
                     "a record written again reads the same");
    return 0;
}
