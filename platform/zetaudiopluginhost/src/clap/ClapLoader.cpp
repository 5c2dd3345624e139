#include "clap/ClapLoader.h"

#include <algorithm>

#include <zetcore/string/Utf.h>

#include "clap/ClapFactory.h"
#include "clap/ClapText.h"
#include "formats/PluginText.h"

namespace zetaudiopluginhost::clap {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using Kind = PluginFailure::Kind;

namespace {

using InfoPtr = std::shared_ptr<PluginModuleInfo>;

const Entry& FindEntry(const LoadedModule& module)
{
    const auto* entry = module.Find<const Entry*>(entryName);
    if (entry == nullptr)
        throw PluginUnusable({.kind = Kind::NoEntryPoint});
    // The version first: of another one, the rest of the record may be anything.
    if (!IsKnown(entry->version))
        throw PluginUnusable({.kind = Kind::UnknownClapVersion, .details = {VersionText(entry->version)}});
    if (entry->init == nullptr || entry->deinit == nullptr || entry->getFactory == nullptr)
        throw PluginUnusable({.kind = Kind::EntryLacksFunctions});
    return *entry;
}

ClapFactory GetFactory(const Entry& entry)
{
    const void* factory = CallPlugin([&entry] { return entry.getFactory(pluginFactoryId); });
    if (factory == nullptr)
        throw PluginUnusable({.kind = Kind::NoFactory});
    return ClapFactory(*static_cast<const PluginFactory*>(factory));
}

bool HasFeature(const ClapPlugin& plugin, const char* feature)
{
    return std::find(plugin.features.begin(), plugin.features.end(),
                     zetcore::string::AsciiToUTF16(feature)) != plugin.features.end();
}

InfoPtr MakeInfo(const PluginLocator& locator, const ClapPlugin& plugin)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(plugin.name);
    if (plugin.name.empty())
        info->SetName(locator.GetSubcomponent().empty() ? FileStem(locator.GetPath()) : plugin.shownId);
    info->SetProduct(info->GetName());
    info->SetVendor(plugin.vendor);
    info->SetVersionString(plugin.version);
    info->SetUniqueId(plugin.shownId);
    info->SetCategory(CategoryText(plugin.features));
    const bool isInstrument = HasFeature(plugin, instrumentFeature);
    info->SetHasAnySynth(isInstrument);
    info->SetHasAnyNonSynthEffect(!isInstrument || HasFeature(plugin, audioEffectFeature));
    return info;
}

void Fail(PluginModuleInfo& info, const PluginFailure& failure)
{
    info.SetStatus(ModuleStatus::Failed);
    info.SetReason(WordFailures({failure}));
}

/// The record of the file itself says which of its plug-ins are not there.
InfoPtr LeftOutInfo(const PluginLocator& module, const PluginFailure& problem)
{
    auto info = std::make_shared<PluginModuleInfo>(module);
    info->SetName(FileStem(module.GetPath()));
    Fail(*info, problem);
    return info;
}

InfoPtr AskPlugin(const ModuleQuestions& questions, const ClapFactory& factory, const ClapPlugin& plugin,
                  bool hasSubcomponent)
{
    const PluginLocator& locator = questions.locator;
    InfoPtr info = MakeInfo(
        hasSubcomponent ? PluginLocator(locator.GetTechnologyType(), locator.GetPath(), plugin.shownId)
                        : locator.ModuleLocator(),
        plugin);
    if (questions.options.quickEffectScan)
        return info;
    questions.steps.Enter(ScanPhase::Create);
    if (const std::optional<PluginFailure> failure = factory.CreateAndDestroy(plugin)) {
        if (!hasSubcomponent)
            throw PluginUnusable(*failure);
        // A ban would be the file's, whose other plug-ins may be good ones.
        Fail(*info, *failure);
    }
    return info;
}

InfoList AskEntered(const ModuleQuestions& questions, const Entry& entry)
{
    const ClapFactory factory = GetFactory(entry);
    questions.steps.Enter(ScanPhase::Query);
    const ClapPlugins plugins = factory.Describe();
    if (plugins.claimed == 0)
        throw PluginUnusable({.kind = Kind::NoPlugins});
    if (plugins.usable.empty())
        throw PluginUnusable(plugins.problem.value());

    const std::wstring& wanted = questions.locator.GetSubcomponent();
    const bool hasSubcomponents = plugins.claimed > 1 || !wanted.empty();
    InfoList infos;
    for (const ClapPlugin& plugin : plugins.usable) {
        if (wanted.empty() || wanted == plugin.shownId)
            infos.push_back(AskPlugin(questions, factory, plugin, hasSubcomponents));
    }
    if (infos.empty())
        throw PluginMissing("the file does not have this plug-in any more");
    if (wanted.empty() && plugins.problem)
        infos.push_back(LeftOutInfo(questions.locator, *plugins.problem));
    return infos;
}

void Leave(const ModuleQuestions& questions, const Entry& entry)
{
    questions.steps.Enter(ScanPhase::Close);
    CallPlugin(entry.deinit);
}

InfoList AskModule(const ModuleQuestions& questions)
{
    const Entry& entry = FindEntry(questions.module);
    questions.steps.Enter(ScanPhase::Entry);
    const std::string path = zetcore::string::UTF16to8(questions.locator.GetPath());
    if (!CallPlugin([&] { return entry.init(path.c_str()); }))
        throw PluginUnusable({.kind = Kind::EntryRefused});
    InfoList infos;
    try {
        infos = AskEntered(questions, entry);
    } catch (const PluginThrew&) {
        // The plug-in is not called any more after it let an exception out.
        throw;
    } catch (...) {
        Leave(questions, entry);
        throw;
    }
    Leave(questions, entry);
    return infos;
}

} // namespace

FormatLoader Loader()
{
    return {.type = TechnologyType::CLAP, .entryPoints = {{entryName, true}}, .ask = AskModule};
}

} // namespace zetaudiopluginhost::clap
