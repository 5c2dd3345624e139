#include "clap/ClapLoader.h"

#include <memory>

#include <zetcore/string/Utf.h>

#include "testing/ModuleLoaderFixture.h"

namespace zetaudiopluginhost::clap {
namespace {

using namespace testing;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;

struct UnloadModule
{
    void operator()(LoadedModule* module) const
    {
        const std::unique_ptr<LoadedModule> owner(module);
        owner->Unload();
    }
};

/// The result of asking a library, which stays loaded as long as this.
struct Asked
{
    /// How many calls of init have had no deinit, and how many instances are left.
    int CountEntered() const { return module->Find<int (*)()>("CountEntered")(); }
    int CountInstances() const { return module->Find<int (*)()>("CountInstances")(); }
    const PluginModuleInfo& Only() const
    {
        if (infos.size() != 1)
            throw std::runtime_error(std::to_string(infos.size()) + " records; " + unusable);
        return *infos.front();
    }

    std::unique_ptr<LoadedModule, UnloadModule> module;
    InfoList infos;
    std::vector<ScanPhase> phases;
    /// The messages of what it threw.
    std::string unusable, missing, threw;
};

class ClapLoaderTest : public zettesting::HostFixture
{
  protected:
    static constexpr ScanOptions quick{false, true};
    static constexpr ScanOptions full{false, false};

    static std::wstring PathOf(const char* plugin)
    {
        return zettesting::ToWide(zettesting::TestPlugin(plugin));
    }
    static Asked Ask(const char* plugin, const ScanOptions& options, const std::wstring& subcomponent = {})
    {
        Asked asked;
        const PluginLocator locator(technology, PathOf(plugin), subcomponent);
        asked.module.reset(new LoadedModule(locator.GetPath()));
        const std::function<void(ScanPhase)> keep = [&asked](ScanPhase phase) {
            asked.phases.push_back(phase);
        };
        ScanSteps steps(keep);
        try {
            asked.infos = Loader().ask({locator, options, *asked.module, steps, {}});
        } catch (const PluginUnusable& error) {
            asked.unusable = error.what();
        } catch (const PluginMissing& error) {
            asked.missing = error.what();
        } catch (const PluginThrew& error) {
            asked.threw = error.what();
        }
        return asked;
    }

    static constexpr auto technology = zetaudiofilterhost::TechnologyType::CLAP;
};

TEST_F(ClapLoaderTest, OnePluginIsARecordForTheFileWithWhatItsDescriptorSays)
{
    for (const ScanOptions& options : {quick, full}) {
        const Asked asked = Ask("good/clap_effect", options);
        const PluginModuleInfo& effect = asked.Only();
        EXPECT_EQ(effect.GetLocator(), PluginLocator(technology, PathOf("good/clap_effect")));
        EXPECT_EQ(effect.GetStatus(), ModuleStatus::Working);
        EXPECT_EQ(effect.GetUniqueId(), L"audio.marrowlane.reed-delay");
        EXPECT_EQ(effect.GetName(), L"Reed Delay");
        EXPECT_EQ(effect.GetProduct(), L"Reed Delay");
        EXPECT_EQ(effect.GetVendor(), L"Marrow Lane Audio");
        EXPECT_EQ(effect.GetVersionString(), L"1.2.0");
        EXPECT_EQ(effect.GetCategory(), L"audio-effect|delay|stereo");
        EXPECT_FALSE(effect.HasAnySynth());
        EXPECT_TRUE(effect.HasAnyNonSynthEffect());
    }
}

TEST_F(ClapLoaderTest, AnInstrumentIsNoEffect)
{
    for (const ScanOptions& options : {quick, full}) {
        const Asked asked = Ask("good/clap_instrument", options);
        EXPECT_TRUE(asked.Only().HasAnySynth());
        EXPECT_FALSE(asked.Only().HasAnyNonSynthEffect());
        EXPECT_EQ(asked.Only().GetCategory(), L"instrument|synthesizer|stereo");
    }
}

TEST_F(ClapLoaderTest, SeveralPluginsAreRecordsWithTheirIdsAsSubcomponents)
{
    for (const ScanOptions& options : {quick, full}) {
        const Asked asked = Ask("good/clap_several", options);
        ASSERT_EQ(asked.infos.size(), 2u);
        const std::wstring path = PathOf("good/clap_several");
        EXPECT_EQ(asked.infos[0]->GetLocator(),
                  PluginLocator(technology, path, L"net.fennel-and-flint.cairn-hall"));
        EXPECT_EQ(asked.infos[1]->GetLocator(),
                  PluginLocator(technology, path, L"net.fennel-and-flint.cairn-organ"));
        EXPECT_EQ(asked.infos[0]->GetUniqueId(), L"net.fennel-and-flint.cairn-hall");
        EXPECT_EQ(asked.infos[1]->GetName(), L"Cairn Org\u00E3o \u2602");
        EXPECT_TRUE(asked.infos[0]->HasAnyNonSynthEffect());
        EXPECT_FALSE(asked.infos[0]->HasAnySynth());
        EXPECT_FALSE(asked.infos[1]->HasAnyNonSynthEffect());
        EXPECT_TRUE(asked.infos[1]->HasAnySynth());
    }
}

TEST_F(ClapLoaderTest, OneOfSeveralCanBeAskedForAlone)
{
    const Asked organ = Ask("good/clap_several", full, L"net.fennel-and-flint.cairn-organ");
    EXPECT_EQ(organ.Only().GetVersionString(), L"4.0.2");
    EXPECT_EQ(organ.Only().GetLocator().GetSubcomponent(), L"net.fennel-and-flint.cairn-organ");

    const Asked gone = Ask("good/clap_several", full, L"net.fennel-and-flint.cairn-flute");
    EXPECT_EQ(gone.missing, "the file does not have this plug-in any more");
    EXPECT_EQ(gone.CountEntered(), 0);
    EXPECT_THAT(gone.phases, Not(Contains(ScanPhase::Create)));

    // The file had several plug-ins, and this one has stayed.
    const Asked left = Ask("good/clap_effect", quick, L"audio.marrowlane.reed-delay");
    EXPECT_EQ(left.Only().GetLocator().GetSubcomponent(), L"audio.marrowlane.reed-delay");
    EXPECT_NE(Ask("good/clap_effect", quick, L"another").missing, "");
}

TEST_F(ClapLoaderTest, OnlyTheFullScanMakesPlugins)
{
    EXPECT_THAT(Ask("good/clap_effect", quick).phases,
                ElementsAre(ScanPhase::Entry, ScanPhase::Query, ScanPhase::Close));
    EXPECT_THAT(Ask("good/clap_effect", full).phases,
                ElementsAre(ScanPhase::Entry, ScanPhase::Query, ScanPhase::Create, ScanPhase::Close));
    EXPECT_EQ(Ask("bad/clap_create_fails", quick).Only().GetStatus(), ModuleStatus::Working);
    const Asked asked = Ask("bad/clap_create_fails", full);
    EXPECT_EQ(asked.unusable, "it could not be created");
    EXPECT_EQ(asked.CountEntered(), 0);
}

TEST_F(ClapLoaderTest, OfSeveralTheOnesThatFailHaveTheReasonInTheirRecord)
{
    const Asked asked = Ask("bad/clap_some_fail", full);
    ASSERT_EQ(asked.infos.size(), 3u);
    EXPECT_EQ(asked.infos[0]->GetStatus(), ModuleStatus::Working);
    EXPECT_EQ(asked.infos[1]->GetStatus(), ModuleStatus::Failed);
    EXPECT_EQ(asked.infos[1]->GetReason(), "it could not be created");
    EXPECT_EQ(asked.infos[1]->GetName(), L"Is Not Created");
    EXPECT_EQ(asked.infos[2]->GetStatus(), ModuleStatus::Failed);
    EXPECT_EQ(asked.infos[2]->GetReason(), "it could not be initialised");
    for (const auto& info : Ask("bad/clap_some_fail", quick).infos)
        EXPECT_EQ(info->GetStatus(), ModuleStatus::Working);
    EXPECT_EQ(Ask("bad/clap_some_fail", full, L"org.bramble.is-not-created").Only().GetStatus(),
              ModuleStatus::Failed);
}

TEST_F(ClapLoaderTest, EveryEnteredLibraryIsLeftAndEveryInstanceDestroyed)
{
    for (const char* plugin :
         {"good/clap_effect", "good/clap_several", "bad/clap_no_factory", "bad/clap_null_fields",
          "bad/clap_unterminated_fields", "bad/clap_create_fails", "bad/clap_some_fail"}) {
        const Asked asked = Ask(plugin, full);
        EXPECT_EQ(asked.CountEntered(), 0) << plugin;
        EXPECT_EQ(asked.CountInstances(), 0) << plugin;
        EXPECT_EQ(asked.phases.back(), ScanPhase::Close) << plugin;
    }
}

TEST_F(ClapLoaderTest, LibrariesThatCannotBeUsedSayWhy)
{
    EXPECT_EQ(Ask("bad/clap_no_factory", quick).unusable, "it has no plug-in factory");
    const Asked empty = Ask("bad/clap_without_plugins", quick);
    EXPECT_EQ(empty.unusable, "it has no plug-ins");
    EXPECT_EQ(empty.CountEntered(), 0);
    // The plug-in crashes at any further question.
    const Asked refused = Ask("bad/clap_refuses_init", quick);
    EXPECT_EQ(refused.unusable, "its entry function refused");
    EXPECT_THAT(refused.phases, ElementsAre(ScanPhase::Entry));
    // They crash when they are entered.
    EXPECT_EQ(Ask("bad/clap_lacks_functions", quick).unusable, "its entry point lacks functions");
    const Asked unknown = Ask("bad/clap_unknown_version", quick);
    EXPECT_EQ(unknown.unusable, "it was built for version 0.26.3 of CLAP, which this system does not know");
    EXPECT_THAT(unknown.phases, IsEmpty());
    EXPECT_EQ(Ask("good/vst2_effect", quick).unusable, "no plug-in entry point");
}

TEST_F(ClapLoaderTest, AfterAnExceptionNothingOfTheLibraryIsCalled)
{
    const Asked asked = Ask("bad/clap_throws_exception", quick);
    EXPECT_EQ(asked.threw, "the plug-in lost count");
    EXPECT_EQ(asked.CountEntered(), 1);
    EXPECT_THAT(asked.phases, ElementsAre(ScanPhase::Entry, ScanPhase::Query));
}

TEST_F(ClapLoaderTest, WhatLacksAnIdIsLeftOutAndSaidAndWhatLacksANameGoesByItsId)
{
    const Asked asked = Ask("bad/clap_null_fields", full);
    ASSERT_EQ(asked.infos.size(), 3u);
    const PluginModuleInfo& bare = *asked.infos[0];
    EXPECT_EQ(bare.GetName(), L"org.bramble.only-an-id");
    EXPECT_EQ(bare.GetStatus(), ModuleStatus::Working);
    EXPECT_EQ(bare.GetVendor() + bare.GetVersionString() + bare.GetCategory(), L"");
    EXPECT_TRUE(bare.HasAnyNonSynthEffect());
    EXPECT_FALSE(bare.HasAnySynth());
    const PluginModuleInfo& both = *asked.infos[1];
    EXPECT_EQ(both.GetName(), L"org.bramble.empty-name");
    EXPECT_TRUE(both.HasAnyNonSynthEffect());
    EXPECT_TRUE(both.HasAnySynth());
    const PluginModuleInfo& file = *asked.infos[2];
    EXPECT_EQ(file.GetLocator(), PluginLocator(technology, PathOf("bad/clap_null_fields")));
    EXPECT_EQ(file.GetName(), L"clap_null_fields");
    EXPECT_EQ(file.GetStatus(), ModuleStatus::Failed);
    EXPECT_EQ(file.GetReason(), "4 of its 6 plug-ins cannot be used: number 1 has no id");

    EXPECT_EQ(Ask("bad/clap_null_fields", full, L"org.bramble.only-an-id").infos.size(), 1u);
}

TEST_F(ClapLoaderTest, ACountThatIsNoCountIsSaidAndTheOnePluginOfManyHasItsIdAsSubcomponent)
{
    const Asked asked = Ask("bad/clap_lying_count", full);
    ASSERT_EQ(asked.infos.size(), 2u);
    EXPECT_EQ(asked.infos[0]->GetStatus(), ModuleStatus::Working);
    EXPECT_EQ(asked.infos[0]->GetLocator().GetSubcomponent(), L"org.bramble.the-only-one");
    EXPECT_EQ(asked.infos[1]->GetStatus(), ModuleStatus::Failed);
    EXPECT_EQ(asked.infos[1]->GetReason(),
              "4294967294 of its 4294967295 plug-ins cannot be used: number 2 has no description");
}

TEST_F(ClapLoaderTest, TextsWithoutAnEndAndInBadEncodingAreShown)
{
    for (const ScanOptions& options : {quick, full}) {
        const Asked asked = Ask("bad/clap_unterminated_fields", options);
        const PluginModuleInfo& info = asked.Only();
        EXPECT_EQ(info.GetStatus(), ModuleStatus::Working) << info.GetReason();
        EXPECT_EQ(info.GetUniqueId(), std::wstring(255, L'I'));
        EXPECT_EQ(info.GetName(), std::wstring(255, L'N'));
        EXPECT_EQ(info.GetVersionString(), std::wstring(255, L'1'));
        EXPECT_THAT(zetcore::string::UTF16to8(info.GetVendor()), StartsWith("M\xEF\xBF\xBDller"));
        EXPECT_EQ(info.GetCategory(), L"instrument|caf\uFFFD");
        EXPECT_TRUE(info.HasAnySynth());
    }
}

TEST_F(ClapLoaderTest, TenThousandPluginsAreTenThousandRecords)
{
    for (const ScanOptions& options : {quick, full}) {
        const Asked asked = Ask("bad/clap_many_descriptors", options);
        ASSERT_EQ(asked.infos.size(), 10000u);
        EXPECT_EQ(asked.infos.back()->GetLocator().GetSubcomponent(), L"org.bramble.many.09999");
        EXPECT_EQ(asked.infos.back()->GetName(), L"09999");
        EXPECT_EQ(asked.infos.back()->GetStatus(), ModuleStatus::Working);
        EXPECT_EQ(asked.CountInstances(), 0);
    }
}

} // namespace
} // namespace zetaudiopluginhost::clap
