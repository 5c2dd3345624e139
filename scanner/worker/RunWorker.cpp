#include "RunWorker.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/NativePath.h>

#include "ExitCodes.h"
#include "FileGuard.h"
#include "OneProcessor.h"
#include "PluginHome.h"
#include "RefusalNotes.h"
#include "TraceCategory.h"
#include "WorkerChannel.h"
#include "WorkerCopies.h"
#include "WorkerMessages.h"
#include "WorkerPrivileges.h"
#include "WorkerProcessSetup.h"

namespace zetaudiofilterscan {

namespace {

using zetaudiopluginhost::ModuleLoader;
using zetaudiopluginhost::ScanPhase;
using zetcore::debug::FaultPoint;

void SendOrEnd(WorkerChannel& channel, const WorkerReport& report)
{
    // A plug-in may have opened something else in the channel's place. The worker must never write into that.
    if (!channel.IsIntact() || !channel.Write(EncodeReport(report)))
        EndWorkerProcess(exitChannelLost);
}

std::vector<zetaudiofilterhost::PluginLocator> AskForKnownModules(WorkerChannel& channel)
{
    SendOrEnd(channel, KnownModulesQuestion());
    const std::optional<std::string> message = channel.Read();
    if (!message)
        EndWorkerProcess(exitConnectionClosed);
    return std::get<KnownModules>(DecodeCommand(*message)).locators;
}

void RefuseWritingElsewhere(const std::vector<std::wstring>& writable, std::uint64_t supervisor)
{
    const std::filesystem::path home = PluginHomePath(supervisor);
    SetVariables(PluginHomeVariables(home));
    std::vector<std::string> except{home.string()};
    for (const std::wstring& path : writable)
        except.push_back(zetcore::filesupport::ToNativePath(path).string());
    if (const auto problem = RefuseWriting(except, FileGuardVersion()))
        zetcore::debug::TraceLine(1, traceCategory, problem->text);
    NoteRefusals();
}

void Apply(const WorkerSettings& settings, std::uint64_t supervisor, WorkerChannel& channel,
           std::optional<ModuleLoader>& loader)
{
    zetcore::filesupport::Dir::SetPrefDir(settings.preferencesFolder);
    // One line at a time, whatever threads trace.
    zetcore::debug::SetTraceSink([&channel, mutex = std::make_shared<std::mutex>()](
                                     int level, std::string_view category, std::string_view text) {
        const std::lock_guard lock(*mutex);
        SendOrEnd(channel, WorkerTrace{level, std::string(category), std::string(text)});
    });
    zetcore::debug::SetMasterTraceVolume(settings.traceVolume);
    ChooseDisplay(settings.hideDisplay);
    if (settings.refuseNetwork)
        if (const auto problem = RefuseNetwork())
            zetcore::debug::TraceLine(1, traceCategory, problem->text);
    if (settings.refuseWriting && !loader)
        RefuseWritingElsewhere(settings.writable, supervisor);
    loader.emplace(settings.options, [&page = channel.Page()](ScanPhase phase) {
        page.phase = static_cast<std::uint32_t>(phase);
    });
    loader->KeepSharedLibraries();
    loader->SetKnownModules([&channel] { return AskForKnownModules(channel); });
    FaultPoint("worker.settings");
}

EntityAnswer ScanEntity(const EntityRequest& request, WorkerPage& page, ModuleLoader& loader)
{
    page.phase = static_cast<std::uint32_t>(ScanPhase::Unknown);
    page.entity = request.number;
    FaultPoint("worker.entity");
    std::optional<OneProcessor> oneProcessor;
    if (request.onOneProcessor)
        oneProcessor.emplace();
    return {request.number, loader.Scan(request.locator)};
}

void Answer(WorkerChannel& channel, const EntityAnswer& answer)
{
    FaultPoint("worker.scanned");
    SendOrEnd(channel, answer);
    FaultPoint("worker.answered");
}

void Serve(std::uint64_t supervisor, WorkerChannel& channel)
{
    std::optional<ModuleLoader> loader;
    while (const std::optional<std::string> message = channel.Read()) {
        const WorkerCommand command = DecodeCommand(*message);
        if (const auto* settings = std::get_if<WorkerSettings>(&command))
            Apply(*settings, supervisor, channel, loader);
        else if (loader)
            Answer(channel, ScanEntity(std::get<EntityRequest>(command), channel.Page(), *loader));
    }
}

} // namespace

void RunWorker(const WorkerArguments& arguments)
{
    if (arguments.makesCopies)
        MakeCopies(arguments);
    SetUpWorkerProcess(arguments.parentProcess);
    try {
        FaultPoint("worker.started");
        if (const auto problem = RefuseToEnd(arguments.parentProcess))
            zetcore::debug::TraceLine(1, traceCategory, problem->text);
        WorkerChannel channel(arguments);
        Serve(arguments.parentProcess, channel);
        EndWorkerProcess(channel.IsIntact() ? exitConnectionClosed : exitChannelLost);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zetaudiofilterscan: worker: %s\n", error.what());
        EndWorkerProcess(exitWrongUsage);
    }
}

} // namespace zetaudiofilterscan
