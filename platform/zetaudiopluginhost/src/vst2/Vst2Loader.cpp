#include "vst2/Vst2Loader.h"

#include <optional>

#include <zetcore/string/Utf.h>

#include "formats/PluginText.h"
#include "vst2/Vst2Effect.h"
#include "vst2/Vst2Host.h"
#include "vst2/Vst2Text.h"

namespace zetaudiopluginhost::vst2 {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;

namespace {

using Kind = PluginFailure::Kind;
using InfoPtr = std::shared_ptr<PluginModuleInfo>;

EntryFunction FindEntry(const LoadedModule& module)
{
    if (const auto entry = module.Find<EntryFunction>(entryName))
        return entry;
    if (const auto entry = module.Find<EntryFunction>(oldEntryName))
        return entry;
    throw PluginUnusable({.kind = Kind::NoEntryPoint});
}

void TakeTexts(Vst2Effect& effect, PluginModuleInfo& info)
{
    info.SetProduct(effect.Text(EffectGetProductString));
    info.SetVendor(effect.Text(EffectGetVendorString));
    info.SetName(effect.Text(EffectGetEffectName));
}

InfoPtr AskEffect(Vst2Effect& effect, const PluginLocator& locator, std::intptr_t category)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    TakeTexts(effect, *info);
    const std::int64_t version = effect.Version();
    info->SetNumericVersion(version);
    info->SetVersionString(VersionText(version));
    info->SetCategory(CategoryText(category));
    info->SetUniqueId(IdText(effect.UniqueId()));
    const bool isSynth = effect.IsSynth() || category == CategorySynth;
    info->SetHasAnySynth(isSynth);
    info->SetHasAnyNonSynthEffect(!isSynth);
    return info;
}

/// A plug-in without a name goes by its product's, then by its file's.
void CompleteName(PluginModuleInfo& info)
{
    if (info.GetName().empty())
        info.SetName(info.GetProduct().empty() ? FileStem(info.GetLocator().GetPath()) : info.GetProduct());
}

PluginLocator SubLocator(const PluginLocator& module, std::int32_t id)
{
    return PluginLocator(module.GetTechnologyType(), module.GetPath(), IdText(id));
}

/// The record that the enumeration alone gives. Only an instance of the sub-plug-in tells its own details.
InfoPtr SubInfo(const PluginModuleInfo& shell, const Vst2Effect::SubPlugin& sub)
{
    auto info = std::make_shared<PluginModuleInfo>(shell);
    info->SetLocator(SubLocator(shell.GetLocator(), sub.id));
    info->SetName(sub.name.empty() ? shell.GetName() + L" " + IdText(sub.id) : sub.name);
    info->SetProduct(shell.GetName());
    info->SetUniqueId(IdText(sub.id));
    info->SetCategory({});
    info->SetHasAnySynth(false);
    info->SetHasAnyNonSynthEffect(true);
    return info;
}

InfoPtr RunSubPlugin(const ModuleQuestions& questions, EntryFunction entry, const InfoPtr& listed,
                     std::int32_t id)
{
    questions.steps.Enter(ScanPhase::Entry);
    Vst2Host::SetCurrentId(id);
    std::optional<Vst2Effect> effect;
    try {
        effect.emplace(entry);
    } catch (const PluginUnusable& error) {
        // A ban would be the shell's, whose other plug-ins may be good ones.
        listed->SetStatus(ModuleStatus::Failed);
        listed->SetReason(error.what());
        return listed;
    }
    questions.steps.Enter(ScanPhase::Open);
    effect->Open();
    questions.steps.Enter(ScanPhase::Query);
    InfoPtr info = AskEffect(*effect, listed->GetLocator(), effect->Category());
    questions.steps.Enter(ScanPhase::Start);
    effect->StartAndStop();
    questions.steps.Enter(ScanPhase::Close);
    effect->Close();
    info->SetUniqueId(listed->GetUniqueId());
    if (info->GetName().empty())
        info->SetName(listed->GetName());
    return info;
}

InfoList AskShell(const ModuleQuestions& questions, EntryFunction entry, Vst2Effect& shell,
                  const PluginModuleInfo& shellInfo)
{
    std::vector<Vst2Effect::SubPlugin> subs;
    std::optional<PluginUnusable> failure;
    try {
        subs = shell.SubPlugins();
    } catch (const PluginUnusable& error) {
        failure = error;
    }
    questions.steps.Enter(ScanPhase::Close);
    shell.Close();
    if (failure)
        throw *failure;
    InfoList infos;
    for (const Vst2Effect::SubPlugin& sub : subs) {
        const bool isWanted = questions.locator.GetSubcomponent().empty() ||
                              questions.locator.GetSubcomponent() == IdText(sub.id);
        if (!isWanted)
            continue;
        const InfoPtr listed = SubInfo(shellInfo, sub);
        infos.push_back(questions.options.quickEffectScan ? listed
                                                          : RunSubPlugin(questions, entry, listed, sub.id));
    }
    if (subs.empty())
        throw PluginUnusable({.kind = Kind::ShellWithoutPlugins});
    if (infos.empty())
        throw PluginMissing("the shell does not have this plug-in any more");
    return infos;
}

constexpr TechnologyType shellsAreReplacedBy = TechnologyType::VST3;

InfoList AskModule(const ModuleQuestions& questions)
{
    const Vst2Host host(questions.locator.GetPath());
    const EntryFunction entry = FindEntry(questions.module);
    ScanSteps& steps = questions.steps;

    steps.Enter(ScanPhase::Entry);
    Vst2Effect effect(entry);
    steps.Enter(ScanPhase::Open);
    effect.Open();
    steps.Enter(ScanPhase::Query);
    const std::intptr_t category = effect.Category();
    const InfoPtr info = AskEffect(effect, questions.locator.ModuleLocator(), category);
    if (category == CategoryShell) {
        CompleteName(*info);
        if (!questions.skipsShell())
            return AskShell(questions, entry, effect, *info);
        info->SetStatus(ModuleStatus::Skipped);
        info->SetReason("it is a shell that is there as " +
                        zetcore::string::UTF16to8(TechnologyName(shellsAreReplacedBy)) + ", too");
    } else if (!questions.options.quickEffectScan) {
        steps.Enter(ScanPhase::Start);
        effect.StartAndStop();
    }
    steps.Enter(ScanPhase::Close);
    effect.Close();
    CompleteName(*info);
    return {info};
}

} // namespace

FormatLoader Loader()
{
    return {.type = TechnologyType::VST,
            .entryPoints = {entryName, oldEntryName},
            .ask = AskModule,
            .shells = {shellsAreReplacedBy, ShellComparisonName},
            .hasNumericIds = true};
}

} // namespace zetaudiopluginhost::vst2
