#include <zetaudiopluginhost/ScanRules.h>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

#include "formats/PluginText.h"
#include "scan/FormatLoaders.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetcore::filesupport::File;

namespace {

constexpr const char* unsupportedReason = "it is on the list of unsupported plug-ins";

/// The unique id of a format that the list of unsupported plug-ins is about.
std::optional<std::uint32_t> NumericId(const PluginModuleInfo& info)
{
    const FormatLoader* format = FindFormatLoader(info.GetLocator().GetTechnologyType());
    if (!format || !format->hasNumericIds)
        return std::nullopt;
    return zetcore::string::ParseNumber<std::uint32_t>(zetcore::string::UTF16to8(info.GetUniqueId()));
}

ScanOutcome RefusedFile(const PluginLocator& locator)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(FileStem(locator.GetPath()));
    info->SetStatus(ModuleStatus::Skipped);
    info->SetReason(unsupportedReason);
    const zetaudiofilterhost::ModuleFileStamp stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    info->SetFileStamp(stamp.size, stamp.time);
    ScanOutcome outcome;
    outcome.infos.push_back(std::move(info));
    return outcome;
}

void RefuseUnsupported(const std::wstring& fileName, ScanOutcome& outcome)
{
    for (const auto& info : outcome.infos) {
        if (info->GetStatus() != ModuleStatus::Working)
            continue;
        const std::optional<std::uint32_t> id = NumericId(*info);
        if (id &&
            BannedPluginManager::GetInstance()->IsUnsupported(fileName, *id, info->GetNumericVersion())) {
            info->SetStatus(ModuleStatus::Skipped);
            info->SetReason(unsupportedReason);
        }
    }
}

/// Banned, and nothing has changed that a scan should try it again for.
bool StaysBanned(const PluginLocator& locator)
{
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    return banned.IsBanned(locator) && !banned.IsDueAgain(locator);
}

bool IsUnsupportedFile(const PluginLocator& locator)
{
    return BannedPluginManager::GetInstance()->IsUnsupportedFile(File(locator.GetPath()).GetTitle());
}

void NoteScannedAlone(const PluginLocator& locator, const ScanOutcome& outcome)
{
    for (const auto& info : outcome.infos)
        info->SetScannedAlone(!locator.GetSubcomponent().empty());
}

} // namespace

std::string SubcomponentText(const PluginLocator& locator)
{
    const std::string subcomponent = zetcore::string::UTF16to8(locator.GetSubcomponent());
    return subcomponent.empty() ? std::string() : " (" + subcomponent + ")";
}

std::optional<ScanOutcome> OutcomeWithoutLoading(const PluginLocator& locator)
{
    if (StaysBanned(locator))
        return ScanOutcome();
    if (!IsUnsupportedFile(locator))
        return std::nullopt;
    ScanOutcome outcome = RefusedFile(locator);
    NoteScannedAlone(locator, outcome);
    return outcome;
}

void CompleteOutcome(const PluginLocator& locator, ScanOutcome& outcome)
{
    RefuseUnsupported(File(locator.GetPath()).GetTitle(), outcome);
    NoteScannedAlone(locator, outcome);
}

} // namespace zetaudiopluginhost
