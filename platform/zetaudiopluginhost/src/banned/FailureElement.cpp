#include "banned/FailureElement.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include <zetcore/string/ParseNumber.h>

#include "banned/BanListFile.h"

namespace zetaudiopluginhost {

using Kind = PluginFailure::Kind;

namespace {

constexpr std::array detailNames{"detail", "detail2", "detail3", "detail4"};
/// A flaky plug-in has two.
constexpr std::size_t mostFailures = 2;

/// The names stand in users' files: they never change.
constexpr std::array<std::pair<Kind, const char*>, static_cast<std::size_t>(PluginFailure::lastKind) + 1>
    kindNames{{{Kind::Misbehaved, "misbehaved"},
               {Kind::Crashed, "crashed"},
               {Kind::Exited, "exited"},
               {Kind::TookTooLong, "tooktoolong"},
               {Kind::TookTooMuchMemory, "tooktoomuchmemory"},
               {Kind::ChannelLost, "channellost"},
               {Kind::WrongAnswer, "wronganswer"},
               {Kind::CouldNotLoad, "couldnotload"},
               {Kind::Threw, "threw"},
               {Kind::EndedTheHost, "endedthehost"},
               {Kind::BannedByUser, "bannedbyuser"},
               {Kind::NoEntryPoint, "noentrypoint"},
               {Kind::EntryLacksFunctions, "entrylacksfunctions"},
               {Kind::EntryRefused, "entryrefused"},
               {Kind::EntryGaveNothing, "entrygavenothing"},
               {Kind::EntryGaveNoPlugin, "entrygavenoplugin"},
               {Kind::NoFactory, "nofactory"},
               {Kind::FactoryLacksFunctions, "factorylacksfunctions"},
               {Kind::NoPlugins, "noplugins"},
               {Kind::NoAudioClass, "noaudioclass"},
               {Kind::ShellWithoutPlugins, "shellwithoutplugins"},
               {Kind::EndlessShell, "endlessshell"},
               {Kind::UnknownClapVersion, "unknownclapversion"},
               {Kind::NotCreated, "notcreated"},
               {Kind::NotCreatedResult, "notcreatedresult"},
               {Kind::LacksFunctions, "lacksfunctions"},
               {Kind::NotInitialised, "notinitialised"},
               {Kind::NotInitialisedResult, "notinitialisedresult"},
               {Kind::PluginsWithoutDescription, "pluginswithoutdescription"},
               {Kind::PluginsOfUnknownVersion, "pluginsofunknownversion"},
               {Kind::PluginsWithoutId, "pluginswithoutid"},
               {Kind::PluginsWithOneId, "pluginswithoneid"},
               {Kind::TooManyPlugins, "toomanyplugins"}}};

constexpr std::array<std::pair<ScanPhase, const char*>, 9> phaseNames{{{ScanPhase::Unknown, ""},
                                                                       {ScanPhase::Load, "load"},
                                                                       {ScanPhase::Entry, "entry"},
                                                                       {ScanPhase::Open, "open"},
                                                                       {ScanPhase::Query, "query"},
                                                                       {ScanPhase::Create, "create"},
                                                                       {ScanPhase::Start, "start"},
                                                                       {ScanPhase::Close, "close"},
                                                                       {ScanPhase::Unload, "unload"}}};

template<typename Names>
auto ValueOf(const Names& names, std::string_view name)
{
    const auto found = std::find_if(std::begin(names), std::end(names),
                                    [name](const auto& each) { return name == each.second; });
    return found == std::end(names) ? std::nullopt : std::optional(found->first);
}

template<typename Names, typename Value>
const char* NameOf(const Names& names, Value value)
{
    const auto found = std::find_if(std::begin(names), std::end(names),
                                    [value](const auto& each) { return value == each.first; });
    return found == std::end(names) ? "" : found->second;
}

/// A number that is left out is 0.
std::optional<std::int64_t> NumberOf(const pugi::xml_attribute& attribute)
{
    return attribute ? zetcore::string::ParseNumber<std::int64_t>(attribute.value()) : 0;
}

std::optional<PluginFailure> ReadFailure(const pugi::xml_node& element)
{
    const auto kind = ValueOf(kindNames, element.attribute("kind").value());
    const auto phase = ValueOf(phaseNames, element.attribute("phase").value());
    const auto code = NumberOf(element.attribute("code"));
    const auto limit = NumberOf(element.attribute("milliseconds"));
    if (!kind || !phase || !code || !limit || *limit < 0)
        return std::nullopt;
    PluginFailure failure{
        .kind = *kind, .phase = *phase, .code = *code, .limit = std::chrono::milliseconds(*limit)};
    for (const char* name : detailNames) {
        const pugi::xml_attribute detail = element.attribute(name);
        if (!detail)
            break;
        failure.details.push_back(CleanReason(detail.value()));
    }
    failure.lastOutput = CleanReason(element.attribute("lastoutput").value());
    return failure;
}

void WriteFailure(pugi::xml_node element, const PluginFailure& failure)
{
    element.append_attribute("kind") = NameOf(kindNames, failure.kind);
    if (failure.phase != ScanPhase::Unknown)
        element.append_attribute("phase") = NameOf(phaseNames, failure.phase);
    if (failure.code != 0)
        element.append_attribute("code") = std::to_string(failure.code).c_str();
    if (failure.limit.count() != 0)
        element.append_attribute("milliseconds") = std::to_string(failure.limit.count()).c_str();
    for (std::size_t i = 0; i < std::min(failure.details.size(), detailNames.size()); ++i)
        element.append_attribute(detailNames[i]) = failure.details[i].c_str();
    if (!failure.lastOutput.empty())
        element.append_attribute("lastoutput") = failure.lastOutput.c_str();
}

} // namespace

PluginFailures ReadFailures(const pugi::xml_node& plugin)
{
    PluginFailures failures;
    for (const pugi::xml_node& element : plugin.children(failureElement)) {
        std::optional<PluginFailure> failure = ReadFailure(element);
        if (!failure || failures.size() == mostFailures)
            return {};
        failures.push_back(std::move(*failure));
    }
    return failures;
}

void WriteFailures(pugi::xml_node& plugin, const PluginFailures& failures)
{
    while (plugin.remove_child(failureElement)) {
    }
    for (const PluginFailure& failure : failures)
        WriteFailure(plugin.append_child(failureElement), failure);
}

bool IsPlainFailure(const pugi::xml_node& element)
{
    constexpr std::array<std::string_view, 5> names{"kind", "phase", "code", "milliseconds", "lastoutput"};
    if (std::string_view(element.name()) != failureElement || element.first_child())
        return false;
    return std::ranges::all_of(element.attributes(), [&names](const pugi::xml_attribute& attribute) {
        const std::string_view name = attribute.name();
        return std::ranges::find(names, name) != names.end() ||
               std::ranges::find(detailNames, name) != detailNames.end();
    });
}

PluginFailures CleanFailures(const PluginFailures& failures)
{
    PluginFailures cleaned(failures.begin(), failures.begin() + static_cast<std::ptrdiff_t>(
                                                                    std::min(failures.size(), mostFailures)));
    for (PluginFailure& failure : cleaned) {
        failure.details.resize(std::min(failure.details.size(), detailNames.size()));
        for (std::string& detail : failure.details)
            detail = CleanReason(detail);
        failure.lastOutput = CleanReason(failure.lastOutput);
    }
    return cleaned;
}

} // namespace zetaudiopluginhost
