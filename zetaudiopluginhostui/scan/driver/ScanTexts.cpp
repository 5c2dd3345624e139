#include "scan/driver/ScanTexts.h"

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

namespace {

constexpr char stillScanningKey[] = "$$$/AudioPluginManager/StillScanning=@0 s, will be stopped after @1 s";
constexpr char scanningAgainKey[] = "$$$/AudioPluginManager/StillScanningAgain=@0 s";

constexpr char scannerIsGoneKey[] =
    "$$$/AudioPluginManager/ScannerIsGone=the scanner could not be started again, please cancel";

} // namespace

std::string ScannedPluginText(const zetaudiofilterhost::PluginLocator& plugin, const std::string& statusText)
{
    return zetcore::string::UTF16to8(
               zetaudiofilterhost::PluginModuleInfoManager::GetInstance()->GetDisplayStringForLocator(
                   plugin)) +
           statusText;
}

std::string StillScanningText(std::chrono::seconds passed, std::chrono::milliseconds limit)
{
    // The limit is rounded up. A plug-in is never ended after the second that the text names.
    const auto wholeLimit = std::chrono::ceil<std::chrono::seconds>(limit);
    const bool isAgain = passed > wholeLimit;
    return zetcore::config::Localizer::Get().Localize(
        isAgain ? scanningAgainKey : stillScanningKey,
        {std::to_string(passed.count()), std::to_string(wholeLimit.count())});
}

std::string ScannerIsGoneText()
{
    return zetcore::config::Localizer::Get().Localize(scannerIsGoneKey);
}

} // namespace zetaudiopluginhostui
