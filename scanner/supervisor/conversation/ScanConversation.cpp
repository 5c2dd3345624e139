#include "supervisor/conversation/ScanConversation.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetaudiopluginhost/ScanRules.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/TimeEntry.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/process/OwnProcess.h>
#include <zetcore/string/Utf.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanLogFormat.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "TraceCategory.h"
#include "supervisor/conversation/BannedLists.h"
#include "supervisor/conversation/PluginFiles.h"
#include "supervisor/conversation/WorkerCount.h"
#include "supervisor/conversation/WorkingModules.h"
#include "supervisor/process/ProcessIdentity.h"
#include "supervisor/process/SystemMemory.h"

namespace zetaudiofilterscan {

namespace protocol = zetscanprotocol;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::ModuleLoader;
using zetcore::debug::FaultPoint;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;
using zetcore::process::OwnProcessNumber;
using zetcore::serialization::Array;
using zetcore::serialization::ValuePtr;
using zetmarshal::RPCError;
using zetmarshal::RPCErrorCode;

namespace {

constexpr char refuseNetworkKey[] = "zetaudiofilterscan.RefuseNetwork";
constexpr char hideDisplayKey[] = "zetaudiofilterscan.HideDisplay";
constexpr char memoryLimitKey[] = "zetaudiofilterscan.MemoryLimitMB";
// Two hosts that scan fast may replace each other's file several times in a row, but not so often.
constexpr int maxWrites = 20;
// A result that is gone was deleted by the host that has read it, or by another host, which deletes it only
// when its own scan begins or ends. So a second time is enough.
constexpr int maxTimesGone = 2;
// When the file cannot be written at all, more rounds would not help.
constexpr int maxExtraRounds = 20;

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

ScanConversation::ScanConversation(AheadScanner& aheadScanner, std::uint64_t host)
    : scanner(aheadScanner), hostProcess(host)
{}

ScanConversation::~ScanConversation() = default;

void ScanConversation::Take(const std::string& method, const Array& params)
{
    if (method == protocol::connectMethod) {
        Require(!connected, "Connect has been done already");
        Connect(protocol::ReadConnect(params));
        asked = Asked::Done;
    } else if (method == protocol::beginScanMethod) {
        Require(connected.has_value(), "BeginScanForPlugins must follow Connect");
        BeginScan(protocol::ReadBeginScanForPlugins(params));
        asked = Asked::Done;
    } else if (method == protocol::getScanInfoMethod) {
        Require(hasList, "GetScanInfo must follow BeginScanForPlugins");
        protocol::ReadGetScanInfo(params);
        LookWhetherResultWasRead();
        asked = Asked::WhatIsNext;
    } else {
        Require(round != Round::None, "ScanOneEntity must follow a GetScanInfo whose \"continue\" is true");
        protocol::ReadScanOneEntity(params);
        if (round == Round::Plugin)
            FaultPoint("supervisor.entity");
        asked = Asked::ToScan;
    }
}

std::optional<ValuePtr> ScanConversation::Reply()
{
    if (asked == Asked::WhatIsNext)
        return GetScanInfo();
    if (asked == Asked::ToScan && !ScanOneEntity())
        return std::nullopt;
    return protocol::BuildDoneReply();
}

void ScanConversation::Connect(protocol::ConnectArguments arguments)
{
    // The debug database and the lists are the host's from here on.
    const std::wstring preferences = File(arguments.pluginSettingsPath).GetParent().FullPath();
    Dir::SetPrefDir(preferences);
    entityLimit =
        zetcore::debug::TimeFromDebugDatabase(protocol::entityTimeoutKey, protocol::defaultEntityTimeout);
    log = std::make_unique<ScanLog>(File(Dir(preferences), zetscanprotocol::logFolder).FullPath(),
                                    std::to_string(OwnProcessNumber()));
    memory = std::make_unique<CulpritMemory>(IdentifyHost(hostProcess), arguments.pluginSettingsPath,
                                             IdentifyProcess(OwnProcessNumber()));
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
    AheadScanner::Task task;
    task.locators = locators;
    WorkerSettings& settings = task.terms.settings;
    settings.preferencesFolder = Dir::PrefDir().FullPath();
    settings.traceVolume = zetcore::debug::GetMasterTraceVolume();
    settings.options = {connected->disableVST2ShellSkipping, connected->quickEffectScan};
    auto& debugDatabase = zetcore::debug::DebugDatabase::Instance();
    settings.refuseNetwork = debugDatabase.GetEntry(refuseNetworkKey, "true") != "false";
    DecidePluginFiles(settings, *log);
    if (settings.refuseWriting)
        task.terms.beforeFirstTrial = [this] { MakePluginFiles(*log); };
    settings.hideDisplay = debugDatabase.IsOn(hideDisplayKey, false);
    // A scanner that only tells what the one before it has found out needs no lists, which may be long.
    if (!hasBannedLists)
        task.beforeFirstLook = [this] {
            LoadBannedLists(connected->bannedSettingsPath, connected->permanentBannedSettingsPath);
            hasBannedLists = true;
        };
    task.terms.entityLimit = entityLimit;
    task.terms.findKnownModules = [this] { return FindKnownModules(); };
    const SystemMemory systemMemory = GetSystemMemory();
    task.terms.memoryLimit = MemoryLimit(debugDatabase.GetEntry(memoryLimitKey, ""), systemMemory.total);
    task.workers = WorkerCount(debugDatabase.GetEntry(protocol::workersKey, ""),
                               std::thread::hardware_concurrency(), systemMemory.available);
    replacing.clear();
    std::ranges::copy_if(locators, std::back_inserter(replacing), [](const PluginLocator& locator) {
        return ModuleLoader::ReplacesShells(locator.GetTechnologyType());
    });

    hasList = true;
    total = static_cast<std::int32_t>(locators.size());
    done = 0;
    round = Round::None;
    unread.clear();
    resultIsOut = false;
    extraRounds = 0;
    scanner.Begin(std::move(task), *log, *memory);
    FaultPoint("supervisor.list");
}

std::optional<ValuePtr> ScanConversation::GetScanInfo()
{
    using Says = LookAhead::Announcement::Kind;
    if (!unread.empty() && extraRounds < maxExtraRounds) {
        ++extraRounds;
        round = Round::Delivery;
        return protocol::BuildScanInfoReply({{}, {}, done, total, true});
    }
    const std::optional<AheadScanner::Announcement> next = scanner.AnnounceNext();
    if (!next)
        return std::nullopt;
    done = static_cast<std::int32_t>(next->done);
    const auto sub = zetcore::string::UTF8to16(zetaudiopluginhost::SubcomponentText(next->locator));
    if (next->kind == Says::Next) {
        round = Round::Plugin;
        return protocol::BuildScanInfoReply({next->locator, sub, done, total, true});
    }
    if (next->kind == Says::WaitsFor) {
        FaultPoint("supervisor.waiting-told");
        round = Round::Wait;
        const auto path = zetcore::string::ForDisplay(next->locator.GetPath());
        return protocol::BuildScanInfoReply({{}, path + sub, done, total, true});
    }
    round = Round::None;
    memory->Forget();
    return protocol::BuildScanInfoReply({{}, {}, total, total, false});
}

// True when it is done.
bool ScanConversation::ScanOneEntity()
{
    if (round == Round::Wait && !scanner.IsWaitOver())
        return false;
    if (round == Round::Plugin) {
        const std::optional<zetaudiopluginhost::ScanOutcome> outcome = scanner.TakeAnswer();
        if (!outcome)
            return false;
        FaultPoint("supervisor.scanned");
        ++done;
        for (const auto& info : outcome->infos)
            unread.push_back({info});
    }
    round = Round::None;
    WriteResult();
    return true;
}

void ScanConversation::LookWhetherResultWasRead()
{
    if (!std::exchange(resultIsOut, false))
        return;
    try {
        const File file(connected->resultFilePath);
        if (!file.Exists())
            std::ranges::for_each(unread, [](Unread& each) { ++each.timesGone; });
        else if (zetcore::filesupport::FileUtils::ReadFile(file) == lastResult)
            unread.clear();
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
    std::erase_if(unread, [](const Unread& each) {
        return each.writes >= maxWrites || each.timesGone >= maxTimesGone;
    });
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
                     std::to_string(OwnProcessNumber()) + ", result " + std::to_string(++resultNumber) +
                     " -->\n";
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

void ScanConversation::Abandon()
{
    if (memory)
        memory->Forget();
}

void ScanConversation::RecordFailure(const PluginFailed& failure)
{
    scanner.LeaveCulprits();
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
