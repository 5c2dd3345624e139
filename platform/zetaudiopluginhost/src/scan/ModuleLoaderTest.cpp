#include <algorithm>
#include <clocale>
#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

#include "testing/ModuleLoaderFixture.h"

namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;

class ModuleLoaderTest : public ModuleLoaderFixture
{};

TEST_F(ModuleLoaderTest, GoodPluginsAreFoundWithWhatTheyTell)
{
    for (const ScanOptions& options : {ScanOptions{}, full}) {
        std::size_t seen = 0;
        for (const zettesting::TestPluginFacts& facts : zettesting::GoodTestPluginFacts()) {
            if (facts.plugin == "good/vst3_several_classes")
                continue;
            const ScanOutcome outcome = Scan(facts.plugin.c_str(), options);
            ASSERT_FALSE(outcome.misbehaved) << facts.plugin << WordFailures({outcome.failure});
            const std::wstring id = zetcore::string::UTF8to16(facts.uniqueId);
            const auto found = std::find_if(outcome.infos.begin(), outcome.infos.end(),
                                            [&id](const auto& info) { return info->GetUniqueId() == id; });
            ASSERT_NE(found, outcome.infos.end()) << facts.name;
            const PluginModuleInfo& info = **found;
            EXPECT_EQ(info.GetStatus(), ModuleStatus::Working);
            EXPECT_EQ(zetcore::string::UTF16to8(info.GetName()), facts.name);
            EXPECT_EQ(zetcore::string::UTF16to8(info.GetVendor()), facts.vendor);
            EXPECT_GT(info.GetFileSize(), 0u);
            EXPECT_GT(info.GetFileTime(), 0);
            // The kind of a shell's plug-in is known only from an instance.
            if (!facts.inShell || !options.quickEffectScan) {
                EXPECT_EQ(info.HasAnySynth(), facts.synth) << facts.name;
                EXPECT_EQ(info.HasAnyNonSynthEffect(), !facts.synth) << facts.name;
                const bool isVst2 = info.GetLocator().GetTechnologyType() == TechnologyType::VST;
                EXPECT_EQ(isVst2 ? std::to_string(info.GetNumericVersion())
                                 : zetcore::string::UTF16to8(info.GetVersionString()),
                          facts.version)
                    << facts.name;
            }
            ++seen;
        }
        EXPECT_GT(seen, 8u);
    }
}

TEST_F(ModuleLoaderTest, AModuleWithSeveralClassesIsOneRecord)
{
    for (const ScanOptions& options : {ScanOptions{}, full}) {
        const ScanOutcome outcome = Scan("good/vst3_several_classes", options);
        EXPECT_EQ(Only(outcome).GetName(), L"vst3_several_classes");
        EXPECT_EQ(Only(outcome).GetVendor(), L"Wicker Works");
        EXPECT_EQ(Only(outcome).GetVersionString(), L"3.1.0");
        EXPECT_TRUE(Only(outcome).HasAnySynth());
        EXPECT_TRUE(Only(outcome).HasAnyNonSynthEffect());
    }
}

TEST_F(ModuleLoaderTest, ThePhasesAreToldInOrder)
{
    Scan("good/vst2_effect");
    EXPECT_THAT(phases, ElementsAre(ScanPhase::Load, ScanPhase::Entry, ScanPhase::Open, ScanPhase::Query,
                                    ScanPhase::Close, ScanPhase::Unload));
    phases.clear();
    Scan("good/vst2_effect", full);
    EXPECT_THAT(phases, ElementsAre(ScanPhase::Load, ScanPhase::Entry, ScanPhase::Open, ScanPhase::Query,
                                    ScanPhase::Start, ScanPhase::Close, ScanPhase::Unload));
    phases.clear();
    Scan("good/vst3_without_moduleinfo", full);
    EXPECT_THAT(phases, ElementsAre(ScanPhase::Load, ScanPhase::Entry, ScanPhase::Query, ScanPhase::Create,
                                    ScanPhase::Close, ScanPhase::Unload));
}

TEST_F(ModuleLoaderTest, EachPluginOfAShellIsOpenedAndStartedInTheFullScan)
{
    Scan("good/vst2_shell");
    EXPECT_THAT(phases, ElementsAre(ScanPhase::Load, ScanPhase::Entry, ScanPhase::Open, ScanPhase::Query,
                                    ScanPhase::Close, ScanPhase::Unload));
    phases.clear();
    Scan("good/vst2_shell", full);
    EXPECT_EQ(std::count(phases.begin(), phases.end(), ScanPhase::Open), 4) << "the shell's own, too";
    EXPECT_EQ(std::count(phases.begin(), phases.end(), ScanPhase::Start), 3);
}

TEST_F(ModuleLoaderTest, APluginIsOpenedBeforeItIsAskedForItsNames)
{
    for (const ScanOptions& options : {ScanOptions{}, full}) {
        const ScanOutcome outcome = Scan("good/vst2_named_when_open", options);
        EXPECT_EQ(Only(outcome).GetName(), L"Harbour Glow");
        EXPECT_EQ(Only(outcome).GetVendor(), L"Marrow Lane Audio");
        EXPECT_EQ(Only(outcome).GetProduct(), L"Harbour");
    }
}

TEST_F(ModuleLoaderTest, ADescriptionSavesTheLoadInTheQuickScanOnly)
{
    for (const char* plugin : {"good/vst3_with_moduleinfo", "good/vst3_with_moduleinfo_beside"}) {
        phases.clear();
        EXPECT_EQ(Only(Scan(plugin)).GetStatus(), ModuleStatus::Working);
        EXPECT_THAT(phases, IsEmpty());
        EXPECT_EQ(Only(Scan(plugin, full)).GetStatus(), ModuleStatus::Working);
        EXPECT_THAT(phases, Contains(ScanPhase::Create));
    }
}

TEST_F(ModuleLoaderTest, ADamagedDescriptionIsTracedAndTheModuleLoaded)
{
    zetcore::debug::SetMasterTraceVolume(1);
    const std::filesystem::path bundle =
        zettesting::CopyTestPlugin("good/vst3_with_moduleinfo", folder.Path(), "damaged");
    zettesting::WriteAll(bundle / "Contents" / "Resources" / "moduleinfo.json", "{ \"Classes\": [ {");
    EXPECT_EQ(Only(Scan(bundle)).GetName(), L"Drift Filter");
    EXPECT_THAT(phases, Contains(ScanPhase::Load));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("moduleinfo.json")));
}

TEST_F(ModuleLoaderTest, AShellGivesOneRecordForEachOfItsPlugins)
{
    for (const ScanOptions& options : {ScanOptions{}, full}) {
        const ScanOutcome outcome = Scan("good/vst2_shell", options);
        ASSERT_EQ(outcome.infos.size(), 3u);
        EXPECT_EQ(outcome.infos[0]->GetName(), L"Quarry Gate");
        EXPECT_EQ(outcome.infos[0]->GetLocator().GetSubcomponent(), L"1366443892");
        EXPECT_EQ(outcome.infos[2]->GetLocator().GetSubcomponent(), L"1366445422");
        EXPECT_EQ(outcome.infos[2]->GetLocator().GetPath(),
                  zettesting::ToWide(zettesting::TestPlugin("good/vst2_shell")));
    }
}

TEST_F(ModuleLoaderTest, OnePluginOfAShellCanBeScannedAlone)
{
    const std::wstring path = zettesting::ToWide(zettesting::TestPlugin("good/vst2_shell"));
    ModuleLoader loader(full, {});
    EXPECT_EQ(Only(loader.Scan(PluginLocator(TechnologyType::VST, path, L"1366447212"))).GetName(),
              L"Quarry Tilt");
    const ScanOutcome gone = loader.Scan(PluginLocator(TechnologyType::VST, path, L"1"));
    EXPECT_EQ(Only(gone).GetStatus(), ModuleStatus::NotAPlugin);
    EXPECT_THAT(Only(gone).GetReason(), HasSubstr("does not have this plug-in"));
    EXPECT_EQ(Only(gone).GetLocator().GetSubcomponent(), L"1");
}

ModuleLoader::FindKnownModules Found(std::vector<PluginLocator> locators)
{
    return [locators = std::move(locators)] { return locators; };
}

TEST_F(ModuleLoaderTest, KnownModulesAreLookedForOnceAndOnlyForAShell)
{
    const PluginLocator shell(TechnologyType::VST,
                              zettesting::ToWide(zettesting::TestPlugin("good/vst2_shell")));
    const PluginLocator effect(TechnologyType::VST,
                               zettesting::ToWide(zettesting::TestPlugin("good/vst2_effect")));
    int searches = 0;
    const auto find = [&searches] {
        ++searches;
        return std::vector{PluginLocator(TechnologyType::VST3, L"/vst2_shell.vst3")};
    };
    ModuleLoader loader({false, true}, {});
    loader.SetKnownModules(find);
    loader.Scan(effect);
    EXPECT_EQ(searches, 0);
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(Only(loader.Scan(shell)).GetStatus(), ModuleStatus::Skipped);
    EXPECT_EQ(searches, 1);

    ModuleLoader enumerating({true, true}, {});
    enumerating.SetKnownModules(find);
    EXPECT_EQ(enumerating.Scan(shell).infos.size(), 3u);
    EXPECT_EQ(searches, 1);
}

TEST_F(ModuleLoaderTest, AShellThatIsThereAsVst3IsSkippedUnlessToldOtherwise)
{
    const std::filesystem::path shell =
        zettesting::CopyTestPlugin("good/vst2_shell", folder.Path(), "House-VST 2");
    const PluginLocator locator = LocatorOf(shell);
    const PluginLocator newer(TechnologyType::VST3, L"/elsewhere/house-vst3 2.vst3");
    const PluginLocator older(TechnologyType::VST, L"/elsewhere/House-VST2 2.so");

    ModuleLoader skipping({false, true}, {});
    skipping.SetKnownModules(Found({locator, older}));
    EXPECT_EQ(skipping.Scan(locator).infos.size(), 3u);
    skipping.SetKnownModules(Found({locator, newer}));
    EXPECT_EQ(Only(skipping.Scan(locator)).GetStatus(), ModuleStatus::Skipped);
    EXPECT_THAT(Only(skipping.Scan(locator)).GetReason(), HasSubstr("VST3"));

    ModuleLoader enumerating({true, true}, {});
    enumerating.SetKnownModules(Found({locator, newer}));
    EXPECT_EQ(enumerating.Scan(locator).infos.size(), 3u);

    std::filesystem::create_directory(folder / "effects");
    const std::filesystem::path effect =
        zettesting::CopyTestPlugin("good/vst2_effect", folder.Path() / "effects", "House-VST 2");
    EXPECT_EQ(Only(skipping.Scan(LocatorOf(effect))).GetStatus(), ModuleStatus::Working);
}

TEST_F(ModuleLoaderTest, NamesWithoutTerminatorAndInBadEncodingAreShown)
{
    const ScanOutcome unterminated = Scan("bad/unterminated_names");
    EXPECT_EQ(Only(unterminated).GetName(), std::wstring(32, L'N'));
    EXPECT_EQ(Only(unterminated).GetVendor(), std::wstring(64, L'V'));
    const ScanOutcome invalid = Scan("bad/invalid_utf8_names");
    EXPECT_THAT(zetcore::string::UTF16to8(Only(invalid).GetName()), StartsWith("Caf\xEF\xBF\xBD Verb"));
    EXPECT_EQ(zetcore::string::ForDisplay(Only(invalid).GetVendor()), Only(invalid).GetVendor());
    const ScanOutcome vst3 = Scan("bad/vst3_unterminated_names", full);
    EXPECT_FALSE(Only(vst3).GetName().empty());
    EXPECT_LE(Only(vst3).GetVendor().size(), 64u);
}

TEST_F(ModuleLoaderTest, AModuleThatLeavesThreadsRunningStaysLoaded)
{
    const ScanOutcome outcome = Scan("bad/leaves_threads");
    EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::Working);
    EXPECT_THAT(phases, Not(Contains(ScanPhase::Unload)));
    // Threads of a module before it are not held against the next one.
    phases.clear();
    EXPECT_EQ(Only(Scan("good/vst2_effect")).GetStatus(), ModuleStatus::Working);
    EXPECT_THAT(phases, Contains(ScanPhase::Unload));
}

TEST_F(ModuleLoaderTest, WhatAModuleChangesInTheProcessIsPutBack)
{
    const std::filesystem::path here = std::filesystem::current_path();
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    const auto handlerOf = [](int signal) {
        const auto handler = std::signal(signal, SIG_DFL);
        std::signal(signal, handler);
        return handler;
    };
    std::vector<void (*)(int)> before;
    for (const int signal : {SIGINT, SIGTERM, SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        before.push_back(handlerOf(signal));

    EXPECT_EQ(Only(Scan("bad/changes_process")).GetStatus(), ModuleStatus::Working);

    std::vector<void (*)(int)> after;
    for (const int signal : {SIGINT, SIGTERM, SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        after.push_back(handlerOf(signal));
    EXPECT_EQ(after, before);
    EXPECT_EQ(std::filesystem::current_path(), here);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
}

TEST_F(ModuleLoaderTest, OddFileNamesAreLoadedAndKept)
{
    const std::vector<std::filesystem::path> copies =
        zettesting::CopyTestPluginWithOddNames("good/vst2_effect", folder.Path());
    ASSERT_GT(copies.size(), 2u);
    for (const std::filesystem::path& copy : copies) {
        const ScanOutcome outcome = Scan(copy);
        EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::Working) << Only(outcome).GetReason();
        EXPECT_EQ(Only(outcome).GetLocator(), LocatorOf(copy));
    }
}

} // namespace
} // namespace zetaudiopluginhost
