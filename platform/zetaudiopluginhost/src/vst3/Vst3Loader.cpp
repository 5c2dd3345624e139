#include "vst3/Vst3Loader.h"

#include <stdexcept>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "formats/PluginText.h"
#include "vst3/ModuleInfoJson.h"
#include "vst3/Vst3Factory.h"
#include "vst3/Vst3Platform.h"

namespace zetaudiopluginhost::vst3 {

using zetaudiofilterhost::ModuleFiles;
using zetaudiofilterhost::PluginLocator;
using zetcore::filesupport::FileUtils;
using Kind = PluginFailure::Kind;

namespace {

constexpr const char* traceCategory = "ModuleLoader";
/// Such a file takes about a kilobyte for each class.
constexpr std::uint64_t maxModuleInfoSize = 4 << 20;

std::optional<InfoList> Describe(const PluginLocator& module, const ModuleFiles& files)
{
    if (!files.description)
        return std::nullopt;
    try {
        const std::string text = FileUtils::ReadFile(*files.description, maxModuleInfoSize);
        return InfoList{MakeVst3Info(module, ParseModuleInfo(text))};
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    } catch (const std::runtime_error& error) {
        zetcore::debug::TraceLine(1, traceCategory,
                                  files.description->FullPathUTF8() + ": " + ReasonText(error.what()));
    }
    return std::nullopt;
}

IPluginFactory* GetFactory(const LoadedModule& module)
{
    const auto getFactory = module.Find<GetPluginFactoryFunction>(factoryEntryName);
    if (getFactory == nullptr)
        throw PluginUnusable({.kind = Kind::NoEntryPoint});
    return CallPlugin([getFactory] { return getFactory(); });
}

/// Leaves out the classes that cannot be made. Gives the reason why none can.
std::optional<PluginFailure> KeepWorkingClasses(Vst3Factory& factory, Vst3Description& description,
                                                const std::vector<Uid>& ids)
{
    std::optional<PluginFailure> first;
    std::vector<Vst3Class> working;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        std::optional<PluginFailure> failure = factory.CreateAndRelease(ids[i]);
        if (!failure)
            working.push_back(description.classes[i]);
        else if (!first)
            first = std::move(failure);
    }
    description.classes = std::move(working);
    return description.classes.empty() ? first : std::nullopt;
}

InfoList AskModule(const ModuleQuestions& questions)
{
    ScanSteps& steps = questions.steps;
    steps.Enter(ScanPhase::Entry);
    if (!EnterModule(questions.module))
        throw PluginUnusable({.kind = Kind::EntryRefused});
    std::optional<PluginFailure> problem;
    Vst3Description description;
    if (IPluginFactory* given = GetFactory(questions.module)) {
        steps.Enter(ScanPhase::Query);
        Vst3Factory factory(given);
        std::vector<Uid> ids;
        description = factory.Describe(ids);
        if (ids.empty()) {
            problem = PluginFailure{.kind = Kind::NoAudioClass};
        } else if (!questions.options.quickEffectScan) {
            steps.Enter(ScanPhase::Create);
            problem = KeepWorkingClasses(factory, description, ids);
        }
        steps.Enter(ScanPhase::Close);
        factory.Release();
    } else {
        problem = PluginFailure{.kind = Kind::EntryGaveNothing};
    }
    steps.Enter(ScanPhase::Close);
    LeaveModule(questions.module);
    if (problem)
        throw PluginUnusable(*problem);
    return {MakeVst3Info(questions.locator, description)};
}

} // namespace

FormatLoader Loader()
{
    return {.type = zetaudiofilterhost::TechnologyType::VST3,
            .entryPoints = {factoryEntryName},
            .ask = AskModule,
            .describe = Describe};
}

} // namespace zetaudiopluginhost::vst3
