#include <zetaudiopluginhost/PluginFailure.h>

#include <string_view>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/string/OutputTail.h>

#include "banned/CrashWords.h"

namespace zetaudiopluginhost {

using zetcore::config::Localizer;
using Kind = PluginFailure::Kind;
using Texts = std::vector<std::string>;

namespace {

constexpr std::size_t maxTextCharacters = 300;

std::string_view PhaseKey(ScanPhase phase)
{
    switch (phase) {
    case ScanPhase::Unknown:
        break;
    case ScanPhase::Load:
        return "$$$/AudioPluginManager/BanPhase/Load=while being loaded";
    case ScanPhase::Entry:
        return "$$$/AudioPluginManager/BanPhase/Entry=in its entry function";
    case ScanPhase::Open:
        return "$$$/AudioPluginManager/BanPhase/Open=while being opened";
    case ScanPhase::Query:
        return "$$$/AudioPluginManager/BanPhase/Query=while being asked what it is";
    case ScanPhase::Create:
        return "$$$/AudioPluginManager/BanPhase/Create=while a component was being created";
    case ScanPhase::Start:
        return "$$$/AudioPluginManager/BanPhase/Start=while being started and stopped";
    case ScanPhase::Close:
        return "$$$/AudioPluginManager/BanPhase/Close=while being closed";
    case ScanPhase::Unload:
        return "$$$/AudioPluginManager/BanPhase/Unload=while being unloaded";
    }
    return "$$$/AudioPluginManager/BanPhase/Scan=while being scanned";
}

/// The text of a kind that its details, if any, complete.
std::string_view KeyWithDetails(Kind kind)
{
    switch (kind) {
    case Kind::Misbehaved:
    case Kind::Crashed:
    case Kind::Exited:
    case Kind::TookTooLong:
    case Kind::Threw:
        break;
    case Kind::TookTooMuchMemory:
        return "$$$/AudioPluginManager/BanReason/TookTooMuchMemory=took more than @0 MB of memory";
    case Kind::ChannelLost:
        return "$$$/AudioPluginManager/BanReason/ChannelLost=closed files of the process that had loaded it";
    case Kind::WrongAnswer:
        return "$$$/AudioPluginManager/BanReason/WrongAnswer=damaged the process that had loaded it (@0)";
    case Kind::CouldNotLoad:
        return "$$$/AudioPluginManager/BanReason/CouldNotLoad=could not be loaded: @0";
    case Kind::EndedTheHost:
        return "$$$/AudioPluginManager/BanReason/EndedTheHost=brought the host down when it was scanned in "
               "the "
               "host's own process";
    case Kind::BannedByUser:
        return "$$$/AudioPluginManager/BanReason/BannedByUser=banned by the user";
    case Kind::NoEntryPoint:
        return reasons::noEntryPoint;
    case Kind::EntryLacksFunctions:
        return "$$$/AudioPluginManager/BanReason/EntryLacksFunctions=its entry point lacks functions";
    case Kind::EntryRefused:
        return "$$$/AudioPluginManager/BanReason/EntryRefused=its entry function refused";
    case Kind::EntryGaveNothing:
        return "$$$/AudioPluginManager/BanReason/EntryGaveNothing=its entry function returned nothing";
    case Kind::EntryGaveNoPlugin:
        return "$$$/AudioPluginManager/BanReason/EntryGaveNoPlugin=its entry function returned something "
               "that "
               "is no VST plug-in";
    case Kind::NoFactory:
        return "$$$/AudioPluginManager/BanReason/NoFactory=it has no plug-in factory";
    case Kind::FactoryLacksFunctions:
        return "$$$/AudioPluginManager/BanReason/FactoryLacksFunctions=its plug-in factory lacks functions";
    case Kind::NoPlugins:
        return "$$$/AudioPluginManager/BanReason/NoPlugins=it has no plug-ins";
    case Kind::NoAudioClass:
        return "$$$/AudioPluginManager/BanReason/NoAudioClass=it has no audio module class";
    case Kind::ShellWithoutPlugins:
        return "$$$/AudioPluginManager/BanReason/ShellWithoutPlugins=it is a shell without plug-ins";
    case Kind::EndlessShell:
        return "$$$/AudioPluginManager/BanReason/EndlessShell=it is a shell that never ends its list of "
               "plug-ins";
    case Kind::UnknownClapVersion:
        return "$$$/AudioPluginManager/BanReason/UnknownClapVersion=it was built for version @0 of CLAP, "
               "which "
               "this system does not know";
    case Kind::NotCreated:
        return "$$$/AudioPluginManager/BanReason/NotCreated=it could not be created";
    case Kind::NotCreatedResult:
        return "$$$/AudioPluginManager/BanReason/NotCreatedResult=it could not be created (result @0)";
    case Kind::LacksFunctions:
        return "$$$/AudioPluginManager/BanReason/LacksFunctions=it lacks functions";
    case Kind::NotInitialised:
        return "$$$/AudioPluginManager/BanReason/NotInitialised=it could not be initialised";
    case Kind::NotInitialisedResult:
        return "$$$/AudioPluginManager/BanReason/NotInitialisedResult=it could not be initialised (result "
               "@0)";
    case Kind::PluginsWithoutDescription:
        return "$$$/AudioPluginManager/BanReason/PluginsWithoutDescription=@0 of its @1 plug-ins cannot be "
               "used: number @2 has no description";
    case Kind::PluginsOfUnknownVersion:
        return "$$$/AudioPluginManager/BanReason/PluginsOfUnknownVersion=@0 of its @1 plug-ins cannot be "
               "used: "
               "number @2 is described in version @3 of CLAP, which this system does not know";
    case Kind::PluginsWithoutId:
        return "$$$/AudioPluginManager/BanReason/PluginsWithoutId=@0 of its @1 plug-ins cannot be used: "
               "number "
               "@2 has no id";
    case Kind::PluginsWithOneId:
        return "$$$/AudioPluginManager/BanReason/PluginsWithOneId=@0 of its @1 plug-ins cannot be used: "
               "number "
               "@2 has the id of another one";
    case Kind::TooManyPlugins:
        return "$$$/AudioPluginManager/BanReason/TooManyPlugins=@0 of its @1 plug-ins cannot be used: only "
               "the "
               "first @2 are looked at";
    }
    return "$$$/AudioPluginManager/BanReason/Misbehaved=misbehaved @0";
}

/// "60 seconds", "1 second", "0.25 seconds".
std::string Seconds(std::chrono::milliseconds time, const Localizer& language)
{
    if (time == std::chrono::seconds(1))
        return language.Localize("$$$/AudioPluginManager/BanReason/OneSecond=1 second");
    std::string number = std::to_string(time.count() / 1000);
    if (const auto rest = time.count() % 1000; rest > 0) {
        std::string digits = std::to_string(1000 + rest).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        number += "." + digits;
    }
    return language.Localize("$$$/AudioPluginManager/BanReason/Seconds=@0 seconds", {number});
}

std::string WhatHappened(const PluginFailure& failure, const Localizer& language)
{
    const std::string phase = language.Localize(PhaseKey(failure.phase));
    Texts details;
    for (const std::string& detail : failure.details)
        details.push_back(
            reasons::InLanguage(zetcore::string::TidyLine(detail, maxTextCharacters), language));
    switch (failure.kind) {
    case Kind::Crashed:
        return language.Localize("$$$/AudioPluginManager/BanReason/Crashed=crashed (@0) @1",
                                 {CrashWords(failure.code, language), phase});
    case Kind::Exited:
        return language.Localize(
            "$$$/AudioPluginManager/BanReason/Exited=ended the process (exit code @0) @1",
            {std::to_string(failure.code), phase});
    case Kind::TookTooLong:
        return language.Localize("$$$/AudioPluginManager/BanReason/TookTooLong=took longer than @0 @1",
                                 {Seconds(failure.limit, language), phase});
    case Kind::Threw:
        if (details.empty() || details.front().empty())
            return language.Localize("$$$/AudioPluginManager/BanReason/Threw=threw an exception @0", {phase});
        return language.Localize("$$$/AudioPluginManager/BanReason/ThrewMessage=threw an exception (@0) @1",
                                 {details.front(), phase});
    case Kind::Misbehaved:
        details = {phase};
        break;
    default:
        break;
    }
    return language.Localize(KeyWithDetails(failure.kind), details);
}

std::string Word(const PluginFailure& failure, const Localizer& language)
{
    const std::string text = WhatHappened(failure, language);
    const std::string line = zetcore::string::TidyLine(failure.lastOutput, maxTextCharacters);
    if (line.empty())
        return text;
    return language.Localize(reasons::lastOutput, {text, line});
}

} // namespace

std::string WordFailures(const PluginFailures& failures, const Localizer& language)
{
    if (failures.empty())
        return {};
    const std::string first = Word(failures.front(), language);
    if (failures.size() == 1)
        return first;
    return language.Localize(
        "$$$/AudioPluginManager/BanReason/Flaky=is flaky: it @0; tried alone, it passed; "
        "tried once more, it @1",
        {first, Word(failures[1], language)});
}

std::string WordFailures(const PluginFailures& failures)
{
    // A localiser without a table gives the default texts, which are English.
    static const Localizer english;
    return WordFailures(failures, english);
}

} // namespace zetaudiopluginhost
