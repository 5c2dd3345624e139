#include <zetaudiopluginhost/ModuleLoader.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/paths/NativePath.h>

#include "formats/PluginText.h"
#include "formats/ScanSteps.h"
#include "header/ModuleFileHeader.h"
#include "process/LoadedModule.h"
#include "process/ProcessState.h"
#include "process/ProcessThreads.h"
#include "process/SharedLibraries.h"
#include "scan/FormatLoaders.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using zetcore::filesupport::File;
using zetcore::filesupport::file_exception;

namespace {

using Kind = PluginFailure::Kind;

constexpr const char* traceCategory = "ModuleLoader";

std::shared_ptr<PluginModuleInfo> FailureInfo(const PluginLocator& locator, ModuleStatus status,
                                              const std::string& reason)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(FileStem(locator.GetPath()));
    info->SetStatus(status);
    info->SetReason(ReasonText(reason));
    zetcore::debug::TraceLine(4, traceCategory,
                              File(locator.GetPath()).FullPathUTF8() + ": " + info->GetReason());
    return info;
}

ScanOutcome OneRecord(std::shared_ptr<PluginModuleInfo> info)
{
    ScanOutcome outcome;
    outcome.infos.push_back(std::move(info));
    return outcome;
}

/// Why a module is not loaded at all.
struct Refusal
{
    ModuleStatus status = ModuleStatus::NotAPlugin;
    std::string reason;
};

std::optional<Refusal> WhyNotAPlugin(const std::wstring& path, const FormatLoader& format)
{
    const auto notAPlugin = [](std::string reason) {
        return Refusal{ModuleStatus::NotAPlugin, std::move(reason)};
    };
    // Anything but a regular file may block whoever opens it.
    std::error_code error;
    const std::filesystem::file_status status =
        std::filesystem::status(zetcore::filesupport::ToNativePath(path), error);
    if (status.type() == std::filesystem::file_type::not_found)
        return notAPlugin(reasons::InEnglish(reasons::missing));
    if (error == std::errc::too_many_symbolic_link_levels)
        return notAPlugin(reasons::InEnglish(reasons::deadLink));
    if (error)
        return Refusal{ModuleStatus::Unreadable, file_exception("read", path, error).what()};
    if (std::filesystem::is_directory(status))
        return notAPlugin(reasons::InEnglish(reasons::folder));
    if (!std::filesystem::is_regular_file(status))
        return notAPlugin(reasons::InEnglish(reasons::noRegularFile));
    try {
        FileByteReader file(path);
        if (const auto reason = WhyNotLoadable(file, NativeModuleTarget(), format.entryPoints))
            return notAPlugin(reason->text);
        return std::nullopt;
    } catch (const file_exception& exception) {
        // The file may have been deleted since.
        const bool isGone = exception.Cause() == std::errc::no_such_file_or_directory;
        return Refusal{isGone ? ModuleStatus::NotAPlugin : ModuleStatus::Unreadable, exception.what()};
    }
}

std::optional<Refusal> WhyNotLoaded(const FormatLoader* format, const zetaudiofilterhost::ModuleFiles& files)
{
    if (!format)
        return Refusal{ModuleStatus::NotAPlugin, reasons::InEnglish(reasons::otherTechnology)};
    if (const auto* none = std::get_if<zetaudiofilterhost::NoLibrary>(&files.library))
        return Refusal{none->isUnreadable ? ModuleStatus::Unreadable : ModuleStatus::NotAPlugin,
                       none->reason};
    return WhyNotAPlugin(std::get<std::wstring>(files.library), *format);
}

bool AreNeighbours(const PluginLocator& one, const PluginLocator& other)
{
    return File(one.GetPath()).GetParent().FullPath() == File(other.GetPath()).GetParent().FullPath();
}

/// One visit of a module to this process.
class ModuleVisit
{
  public:
    ModuleVisit(const PluginLocator& module, const FormatLoader& formatLoader, const ScanOptions& scanOptions,
                ScanSteps& scanSteps, std::function<bool()> isShellSkipped, SharedLibraries* keptLibraries)
        : locator(module), format(formatLoader), options(scanOptions), steps(scanSteps),
          skipsShell(std::move(isShellSkipped)), sharedLibraries(keptLibraries)
    {}

    ScanOutcome Run(const std::wstring& library)
    {
        const ProcessState state;
        const std::vector<std::uint64_t> threads = ProcessThreads();
        steps.Enter(ScanPhase::Load);
        std::optional<LoadedModule> module;
        try {
            module.emplace(library);
        } catch (const ModuleLoadError& error) {
            state.Restore();
            ScanOutcome outcome = Unusable({.kind = Kind::CouldNotLoad, .details = {error.what()}});
            outcome.couldNotLoad = !error.CodeHasRun();
            return outcome;
        }
        ScanOutcome outcome = Ask(*module);
        state.Restore();
        if (hasThrown)
            return outcome;
        if (HasNewThreads(threads)) {
            zetcore::debug::TraceLine(4, traceCategory,
                                      File(locator.GetPath()).FullPathUTF8() +
                                          ": stays loaded, because it left threads running");
            return outcome;
        }
        if (sharedLibraries)
            sharedLibraries->KeepAllBut(library);
        steps.Enter(ScanPhase::Unload);
        module->Unload();
        state.Restore();
        return outcome;
    }

  private:
    ScanOutcome Ask(LoadedModule& module)
    {
        const ModuleQuestions questions{locator, options, module, steps, skipsShell};
        ScanOutcome outcome;
        try {
            outcome.infos = format.ask(questions);
        } catch (const PluginUnusable& error) {
            return Unusable(error.Failure());
        } catch (const PluginMissing& error) {
            return OneRecord(FailureInfo(locator, ModuleStatus::NotAPlugin, error.what()));
        } catch (const PluginThrew& exception) {
            hasThrown = true;
            return Unusable({.kind = Kind::Threw, .details = {exception.what()}});
        }
        return outcome;
    }

    ScanOutcome Unusable(PluginFailure failure) const
    {
        failure.phase = steps.Phase();
        for (std::string& detail : failure.details)
            detail = ReasonText(detail);
        ScanOutcome outcome;
        outcome.misbehaved = true;
        outcome.failure = std::move(failure);
        return outcome;
    }

    const PluginLocator& locator;
    const FormatLoader& format;
    const ScanOptions& options;
    ScanSteps& steps;
    std::function<bool()> skipsShell;
    SharedLibraries* sharedLibraries;
    /// The module is not called any more after it let an exception out.
    bool hasThrown = false;
};

} // namespace

ModuleLoader::ModuleLoader(ScanOptions scanOptions, PhaseCallback phaseCallback)
    : options(scanOptions), onPhase(std::move(phaseCallback))
{}

ModuleLoader::~ModuleLoader() = default;

void ModuleLoader::KeepSharedLibraries()
{
    sharedLibraries = std::make_unique<SharedLibraries>(SharedLibraries::Keeps::All);
}

void ModuleLoader::KeepSystemLibraries()
{
    sharedLibraries = std::make_unique<SharedLibraries>(SharedLibraries::Keeps::Systems);
}

bool ModuleLoader::ReplacesShells(TechnologyType type)
{
    return type != TechnologyType::Unknown &&
           std::ranges::any_of(FormatLoaders(),
                               [type](const FormatLoader& each) { return each.shells.by == type; });
}

void ModuleLoader::SetKnownModules(FindKnownModules find)
{
    findKnownModules = std::move(find);
    replacedShells.clear();
}

bool ModuleLoader::IsShellSkipped(const FormatLoader& format, const PluginLocator& shell)
{
    if (options.disableShellSkipping || !format.shells.comparisonName)
        return false;
    if (const FindKnownModules find = std::exchange(findKnownModules, {}))
        for (const PluginLocator& locator : find())
            for (const FormatLoader& each : FormatLoaders())
                if (each.shells.comparisonName && locator.GetTechnologyType() == each.shells.by)
                    replacedShells.emplace(each.type, each.shells.comparisonName(locator.GetPath()));
    return replacedShells.contains({format.type, format.shells.comparisonName(shell.GetPath())});
}

ScanOutcome ModuleLoader::Scan(const PluginLocator& locator, const std::optional<PluginLocator>& next)
{
    const FormatLoader* format = FindFormatLoader(locator.GetTechnologyType());
    // The stamp is taken before anything is loaded: a file that changes meanwhile is scanned again.
    const zetaudiofilterhost::ModuleFileStamp stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    const zetaudiofilterhost::ModuleFiles files = zetaudiofilterhost::FindModuleFiles(locator);

    ScanOutcome outcome;
    if (const auto refusal = WhyNotLoaded(format, files)) {
        outcome = OneRecord(FailureInfo(locator, refusal->status, refusal->reason));
    } else if (auto described = options.quickEffectScan && format->describe ? format->describe(locator, files)
                                                                            : std::nullopt) {
        outcome.infos = std::move(*described);
    } else {
        ScanSteps steps(onPhase);
        ModuleVisit visit(
            locator, *format, options, steps,
            [this, &locator, format] { return IsShellSkipped(*format, locator); }, sharedLibraries.get());
        outcome = visit.Run(std::get<std::wstring>(files.library));
        if (sharedLibraries && !(next && AreNeighbours(locator, *next))) {
            const ProcessState state;
            sharedLibraries->LetGo();
            state.Restore();
        }
    }
    outcome.stamp = stamp;
    for (const auto& info : outcome.infos)
        info->SetFileStamp(stamp.size, stamp.time);
    return outcome;
}

} // namespace zetaudiopluginhost
