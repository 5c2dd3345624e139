#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

/// The messages between supervisor and worker. A plug-in lives in the worker and may have written all over
/// it, so the supervisor takes what comes from there as bytes from outside: decoding checks every length and
/// value.
namespace zetaudiofilterscan {

/// How the worker shall scan; sent before the first entity, and again when it changes.
struct WorkerSettings
{
    std::wstring preferencesFolder;
    int traceVolume = 0;
    zetaudiopluginhost::ScanOptions options;
    /// Plug-ins get no network. Once it was refused, the worker cannot have it back.
    bool refuseNetwork = true;
    /// Plug-ins can write to their own home (`PluginHome`) and to these files and folders only. Once it was
    /// refused, the worker cannot have it back, and later exceptions have no effect.
    bool refuseWriting = true;
    std::vector<std::wstring> writable;
    /// Plug-ins find no display, also where the host has one.
    bool hideDisplay = false;
};

/// The request to scan one plug-in.
struct EntityRequest
{
    /// Comes back in the answer and stands in the worker's page while the entity is scanned. Not 0.
    std::uint32_t number = 0;
    zetaudiofilterhost::PluginLocator locator;
    /// The plug-in and the threads that it starts share one processor.
    bool onOneProcessor = false;
};

/// The answer to `KnownModulesQuestion`: the modules that may be why a shell is skipped.
struct KnownModules
{
    std::vector<zetaudiofilterhost::PluginLocator> locators;
};

using WorkerCommand = std::variant<WorkerSettings, EntityRequest, KnownModules>;

/// The outcome of an entity. The stamp of its file is not sent, because the supervisor takes it itself.
struct EntityAnswer
{
    std::uint32_t number = 0;
    zetaudiopluginhost::ScanOutcome outcome;
};

/// A trace line of the worker's, to be written by the supervisor.
struct WorkerTrace
{
    int level = 0;
    std::string category;
    std::string text;
};

/// The worker has met a shell and asks, once, for the modules that might replace it. Few scans meet one, so
/// the supervisor reads the host's registry only then.
struct KnownModulesQuestion
{};

using WorkerReport = std::variant<EntityAnswer, WorkerTrace, KnownModulesQuestion>;

std::string EncodeCommand(const WorkerCommand& command);
std::string EncodeReport(const WorkerReport& report);
/// Both throw `std::runtime_error` naming the field that is wrong or missing; bytes left over are wrong too.
WorkerCommand DecodeCommand(std::string_view message);
WorkerReport DecodeReport(std::string_view message);

/// The phase with this number; `Unknown` for a number that is no phase.
zetaudiopluginhost::ScanPhase PhaseFromNumber(std::uint32_t number) noexcept;

} // namespace zetaudiofilterscan
