#include <zetaudiopluginhost/ModuleLoader.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/FileException.h>
#include <zetcore/filesupport/FileUtils.h>

#include "header/ModuleFileHeader.h"
#include "process/LoadedModule.h"
#include "process/NativePath.h"
#include "process/ProcessState.h"
#include "process/ProcessThreads.h"
#include "scan/ModuleQuestions.h"
#include "scan/PluginText.h"
#include "scan/ScanSteps.h"
#include "scan/ShellNames.h"
#include "vst2/Vst2Abi.h"
#include "vst3/ModuleInfoJson.h"
#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using namespace zetcore::filesupport;

namespace {

constexpr const char* traceCategory = "ModuleLoader";
/// Such a file takes about a kilobyte for each class.
constexpr std::uint64_t maxModuleInfoSize = 4 << 20;

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

std::vector<EntryPoint> EntryPoints(TechnologyType technology)
{
    if (technology == TechnologyType::VST3)
        return {vst3::factoryEntryName};
    return {vst2::entryName, vst2::oldEntryName};
}

/// Why a module is not loaded at all.
struct Refusal
{
    ModuleStatus status = ModuleStatus::NotAPlugin;
    std::string reason;
};

/// Nothing when the file can be loaded as a plug-in of the technology.
std::optional<Refusal> WhyNotAPlugin(const std::wstring& path, TechnologyType technology)
{
    const auto notAPlugin = [](std::string reason) {
        return Refusal{ModuleStatus::NotAPlugin, std::move(reason)};
    };
    // Anything but a regular file may block whoever opens it.
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(NativePath(path), error);
    if (status.type() == std::filesystem::file_type::not_found)
        return notAPlugin("the file does not exist");
    if (error == std::errc::too_many_symbolic_link_levels)
        return notAPlugin("a link that leads nowhere");
    if (error)
        return Refusal{ModuleStatus::Unreadable, file_exception("read", path, error).what()};
    if (std::filesystem::is_directory(status))
        return notAPlugin("a folder");
    if (!std::filesystem::is_regular_file(status))
        return notAPlugin("not a regular file");
    try {
        FileByteReader file(path);
        std::string reason = WhyNotLoadable(file, NativeModuleTarget(), EntryPoints(technology));
        return reason.empty() ? std::nullopt : std::optional(notAPlugin(std::move(reason)));
    } catch (const file_exception& exception) {
        // It may have been deleted since.
        const bool isGone = exception.Cause() == std::errc::no_such_file_or_directory;
        return Refusal{isGone ? ModuleStatus::NotAPlugin : ModuleStatus::Unreadable, exception.what()};
    }
}

/// The description that came with the module, when it can be used.
std::optional<vst3::Vst3Description> ReadModuleInfo(const std::optional<File>& file)
{
    if (!file)
        return std::nullopt;
    try {
        return vst3::ParseModuleInfo(FileUtils::ReadFile(*file, maxModuleInfoSize));
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    } catch (const std::runtime_error& error) {
        zetcore::debug::TraceLine(1, traceCategory, file->FullPathUTF8() + ": " + ReasonText(error.what()));
    }
    return std::nullopt;
}

std::string ExceptionReason(const std::string& message, ScanPhase phase)
{
    const std::string text = ReasonText(message);
    return "threw an exception " + (text.empty() ? std::string() : "(" + text + ") ") + ScanPhaseText(phase);
}

/// One visit of a module to this process.
class ModuleVisit
{
  public:
    ModuleVisit(const PluginLocator& module, const ScanOptions& scanOptions, ScanSteps& scanSteps,
                std::function<bool()> isShellSkipped)
        : locator(module), options(scanOptions), steps(scanSteps), skipsShell(std::move(isShellSkipped))
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
            ScanOutcome outcome = Unusable("could not be loaded: " + ReasonText(error.what()));
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
            outcome.infos = locator.GetTechnologyType() == TechnologyType::VST3 ? AskVst3Module(questions)
                                                                                : AskVst2Module(questions);
        } catch (const PluginUnusable& error) {
            return Unusable(ReasonText(error.what()));
        } catch (const PluginMissing& error) {
            return OneRecord(FailureInfo(locator, ModuleStatus::NotAPlugin, error.what()));
        } catch (const PluginThrew& exception) {
            hasThrown = true;
            return Unusable(ExceptionReason(exception.what(), steps.Phase()));
        }
        return outcome;
    }

    ScanOutcome Unusable(const std::string& reason) const
    {
        ScanOutcome outcome;
        outcome.misbehaved = true;
        outcome.phase = steps.Phase();
        outcome.reason = reason;
        return outcome;
    }

    const PluginLocator& locator;
    const ScanOptions& options;
    ScanSteps& steps;
    std::function<bool()> skipsShell;
    /// Nothing of it is called any more then.
    bool hasThrown = false;
};

} // namespace

const char* ScanPhaseText(ScanPhase phase)
{
    switch (phase) {
    case ScanPhase::None:
        break;
    case ScanPhase::Load:
        return "while being loaded";
    case ScanPhase::Entry:
        return "in its entry function";
    case ScanPhase::Open:
        return "while being opened";
    case ScanPhase::Query:
        return "while being asked what it is";
    case ScanPhase::Create:
        return "while a component was being created";
    case ScanPhase::Start:
        return "while being started and stopped";
    case ScanPhase::Close:
        return "while being closed";
    case ScanPhase::Unload:
        return "while being unloaded";
    }
    return "while being scanned";
}

ModuleLoader::ModuleLoader(ScanOptions scanOptions, PhaseCallback phaseCallback)
    : options(scanOptions), onPhase(std::move(phaseCallback))
{}

void ModuleLoader::SetKnownModules(FindKnownModules find)
{
    findKnownModules = std::move(find);
    vst3ShellNames.clear();
}

bool ModuleLoader::IsShellSkipped(const PluginLocator& shell)
{
    if (options.disableVST2ShellSkipping)
        return false;
    if (const FindKnownModules find = std::exchange(findKnownModules, {})) {
        for (const PluginLocator& locator : find())
            if (locator.GetTechnologyType() == TechnologyType::VST3)
                vst3ShellNames.push_back(ShellComparisonName(locator.GetPath()));
        std::sort(vst3ShellNames.begin(), vst3ShellNames.end());
    }
    return std::binary_search(vst3ShellNames.begin(), vst3ShellNames.end(),
                              ShellComparisonName(shell.GetPath()));
}

ScanOutcome ModuleLoader::Scan(const PluginLocator& locator)
{
    const TechnologyType technology = locator.GetTechnologyType();
    // Before anything is loaded: a file that changes meanwhile is scanned again.
    const zetaudiofilterhost::ModuleFileStamp stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    zetaudiofilterhost::ModuleFiles files;
    if (technology == TechnologyType::VST3)
        files = zetaudiofilterhost::FindModuleFiles(locator.GetPath());
    else
        files.library = locator.GetPath();
    if (technology != TechnologyType::VST && technology != TechnologyType::VST3)
        files.problem = "a plug-in of a technology that this system does not have";
    std::optional<Refusal> refusal;
    if (!files.problem.empty())
        refusal = {files.isUnreadable ? ModuleStatus::Unreadable : ModuleStatus::NotAPlugin, files.problem};
    else
        refusal = WhyNotAPlugin(files.library, technology);

    ScanOutcome outcome;
    if (refusal) {
        outcome = OneRecord(FailureInfo(locator, refusal->status, refusal->reason));
    } else if (const auto description =
                   options.quickEffectScan ? ReadModuleInfo(files.moduleInfo) : std::nullopt) {
        outcome = OneRecord(vst3::MakeVst3Info(locator, *description));
    } else {
        ScanSteps steps(onPhase);
        ModuleVisit visit(locator, options, steps, [this, &locator] { return IsShellSkipped(locator); });
        outcome = visit.Run(files.library);
    }
    outcome.stamp = stamp;
    for (const auto& info : outcome.infos)
        info->SetFileStamp(stamp.size, stamp.time);
    return outcome;
}

} // namespace zetaudiopluginhost
