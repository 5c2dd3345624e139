#include "supervisor/conversation/ScanConversation.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/TimeEntry.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "supervisor/conversation/BannedLists.h"
#include "supervisor/conversation/WorkingModules.h"
#include "supervisor/process/SupervisorProcess.h"

namespace zetaudiofilterscan {

namespace protocol = zetscanprotocol;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::ModuleLoader;
using zetcore::debug::FaultPoint;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;
using zetcore::serialization::Array;
using zetcore::serialization::ValuePtr;
using zetmarshal::RPCError;
using zetmarshal::RPCErrorCode;

namespace {

constexpr char traceCategory[] = "zetaudiofilterscan";
constexpr char refuseNetworkKey[] = "zetaudiofilterscan.RefuseNetwork";
constexpr char hideDisplayKey[] = "zetaudiofilterscan.HideDisplay";
// Two hosts that scan fast may replace each other's file several times in a row, but not so often.
constexpr int maxWrites = 20;
// A result that is gone was deleted by the host that has read it, or by another host, which deletes it only
// when its own scan begins or ends. So a second time is enough.
constexpr int maxWritesWhenDeleted = 2;
// When the file cannot be written at all, more rounds would not help.
constexpr int maxExtraRounds = 20;
constexpr wchar_t logFolder[] = L"scan-logs";

std::vector<zetaudiofilterhost::TechnologyType> TechnologiesThatReplaceShells()
{
    std::vector<zetaudiofilterhost::TechnologyType> types;
    for (const auto& format : zetaudiofilterhost::PluginFormats())
        if (ModuleLoader::ReplacesShells(format.type))
            types.push_back(format.type);
    return types;
}

void Require(bool inOrder, const char* message)
{
    if (!inOrder)
        throw RPCError(RPCErrorCode::OutOfOrder, message);
}

} // namespace

ScanConversation::ScanConversation(EntityScanner& scanner) : entityScanner(scanner) {}

ScanConversation::~ScanConversation() = default;

ValuePtr ScanConversation::Handle(const std::string& method, const Array& params)
{
    if (method == protocol::connectMethod) {
        Require(!connected, "Connect has been done already");
        Connect(protocol::ReadConnect(params));
    } else if (method == protocol::beginScanMethod) {
        Require(connected.has_value(), "BeginScanForPlugins must follow Connect");
        BeginScan(protocol::ReadBeginScanForPlugins(params));
    } else if (method == protocol::getScanInfoMethod) {
        Require(engine != nullptr, "GetScanInfo must follow BeginScanForPlugins");
        protocol::ReadGetScanInfo(params);
        return GetScanInfo();
    } else {
        Require(atPlugin, "ScanOneEntity must follow a GetScanInfo whose \"continue\" is true");
        protocol::ReadScanOneEntity(params);
        ScanOneEntity();
    }
    return protocol::BuildDoneReply();
}

void ScanConversation::Connect(protocol::ConnectArguments arguments)
{
    // The debug database and the lists are the host's from here on.
    const std::wstring preferences = File(arguments.pluginSettingsPath).GetParent().FullPath();
    Dir::SetPrefDir(preferences);
    LoadBannedLists(arguments.bannedSettingsPath, arguments.permanentBannedSettingsPath);
    entityLimit =
        zetcore::debug::TimeFromDebugDatabase(protocol::entityTimeoutKey, protocol::defaultEntityTimeout);
    log = std::make_unique<ScanLog>(File(Dir(preferences), logFolder).FullPath(), OwnProcessNumber());
    connected = std::move(arguments);
    FaultPoint("supervisor.connected");
}

std::vector<PluginLocator> ScanConversation::FindKnownModules() const
{
    std::vector<PluginLocator> known =
        WorkingModules(connected->pluginSettingsPath, TechnologiesThatReplaceShells());
    known.insert(known.end(), replacing.begin(), replacing.end());
    return known;
}

void ScanConversation::BeginScan(const std::vector<PluginLocator>& locators)
{
    WorkerSettings settings;
    settings.preferencesFolder = Dir::PrefDir().FullPath();
    settings.traceVolume = zetcore::debug::GetMasterTraceVolume();
    settings.options = {connected->disableVST2ShellSkipping, connected->quickEffectScan};
    auto& debugDatabase = zetcore::debug::DebugDatabase::Instance();
    settings.refuseNetwork = debugDatabase.GetEntry(refuseNetworkKey, "true") != "false";
    settings.hideDisplay = debugDatabase.IsOn(hideDisplayKey, false);
    replacing.clear();
    std::ranges::copy_if(locators, std::back_inserter(replacing), [](const PluginLocator& locator) {
        return ModuleLoader::ReplacesShells(locator.GetTechnologyType());
    });
    entityScanner.Configure(std::move(settings), entityLimit, log.get(),
                            [this] { return FindKnownModules(); });

    engine = std::make_unique<zetaudiopluginhost::PluginModuleScanner>(
        locators, connected->disableVST2ShellSkipping, connected->quickEffectScan, true);
    engine->SetEntityScan([this](const PluginLocator& locator) { return entityScanner.Scan(locator); });
    engine->BeginScan();
    total = static_cast<std::int32_t>(locators.size());
    atPlugin = false;
    unread.clear();
    resultIsOut = false;
    extraRounds = 0;
    FaultPoint("supervisor.list");
}

ValuePtr ScanConversation::GetScanInfo()
{
    PluginLocator locator;
    std::string statusText;
    int progress = 0;
    int count = 0;
    onlyDelivers = false;
    atPlugin = engine->GetCurrentProgressInfo(locator, statusText, progress, count);
    // This comes first, so that the plug-in is loaded while the rest goes on.
    if (atPlugin && engine->WillLoadCurrent())
        entityScanner.Begin(locator);
    LookWhetherResultWasRead();
    if (!unread.empty() && extraRounds < maxExtraRounds) {
        ++extraRounds;
        const std::int32_t done = atPlugin ? progress : total;
        atPlugin = onlyDelivers = true;
        return protocol::BuildScanInfoReply({{}, {}, done, total, true});
    }
    if (!atPlugin)
        return protocol::BuildScanInfoReply({{}, {}, total, total, false});
    return protocol::BuildScanInfoReply(
        {locator, zetcore::string::UTF8to16(statusText), progress, count, true});
}

void ScanConversation::ScanOneEntity()
{
    if (!onlyDelivers) {
        FaultPoint("supervisor.entity");
        engine->ContinueScan();
        FaultPoint("supervisor.scanned");
        for (const auto& info : engine->LastOutcome().infos)
            unread.push_back({info});
    }
    atPlugin = false;
    WriteResult();
}

void ScanConversation::LookWhetherResultWasRead()
{
    if (!std::exchange(resultIsOut, false))
        return;
    int max = maxWrites;
    try {
        const File file(connected->resultFilePath);
        if (!file.Exists())
            max = maxWritesWhenDeleted;
        else if (zetcore::filesupport::FileUtils::ReadFile(file) == lastResult)
            unread.clear();
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
    std::erase_if(unread, [max](const Unread& each) { return each.writes >= max; });
    if (unread.empty())
        extraRounds = 0;
    else
        zetcore::debug::TraceLine(2, traceCategory,
                                  "the result file is not as it was left; what was in it is written again");
}

void ScanConversation::WriteResult()
{
    std::vector<std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>> infos;
    for (const Unread& each : unread)
        infos.push_back(each.info);
    lastResult.clear();
    // The text has a mark of its own, because another scanner may find, and write, the very same.
    if (!infos.empty())
        lastResult = PluginModuleInfoManager::ToConfigurationText(infos) + "<!-- scanner " +
                     OwnProcessNumber() + ", result " + std::to_string(++resultNumber) + " -->\n";
    resultIsOut = true;
    try {
        zetcore::filesupport::FileUtils::ReplaceContent(connected->resultFilePath, lastResult,
                                                        zetcore::filesupport::Durability::Handover);
        for (Unread& each : unread)
            ++each.writes;
    } catch (const zetcore::filesupport::file_exception& error) {
        // An error reply would end the host's chain of requests and leave its scan waiting. The host cannot
        // save either and tells the user.
        zetcore::debug::TraceLine(1, traceCategory, error.what());
        log->Note(error.what());
    }
}

void ScanConversation::RecordFailure(const PluginFailed& failure)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    zetaudiopluginhost::BanInfo info = failure.Ban();
    info.time = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    zetcore::debug::TraceLine(1, traceCategory, NameForLog(failure.Locator()) + " " + info.reason);
    try {
        zetaudiopluginhost::RecordBanReason(connected->bannedSettingsPath, failure.Locator(), info);
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

} // namespace zetaudiofilterscan
