#include <filesystem>
#include <optional>
#include <stdexcept>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zettesting/ScopedFaults.h>

#include "testing/ModuleLoaderFixture.h"

// Files that are no plug-ins, cannot be read, or cannot be used.
namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::ModuleStatus;

class ModuleVerdictTest : public ModuleLoaderFixture
{};

TEST_F(ModuleVerdictTest, FilesThatCannotBePluginsAreNeverLoaded)
{
    using namespace zettesting;
    ExpectStatus(MakeTextModule(folder.Path()), ModuleStatus::NotAPlugin, "a text file");
    ExpectStatus(MakeEmptyModule(folder.Path()), ModuleStatus::NotAPlugin, "an empty file");
    ExpectStatus(MakeTruncatedModule(folder.Path()), ModuleStatus::NotAPlugin, "truncated");
    ExpectStatus(Make32BitModule(folder.Path()), ModuleStatus::NotAPlugin, "32-bit");
    ExpectStatus(MakeOtherMachineModule(folder.Path()), ModuleStatus::NotAPlugin, "another machine");
    ExpectStatus(MakeOtherSystemModule(folder.Path()), ModuleStatus::NotAPlugin, "another system");
    ExpectStatus(TestPlugin("bad/no_entry_point"), ModuleStatus::NotAPlugin, "no plug-in entry point");
    const std::string suffix(ModuleSuffix());
    ExpectStatus(folder / ("missing" + suffix), ModuleStatus::NotAPlugin, "does not exist");
    std::filesystem::create_directory(folder / ("folder" + suffix));
    ExpectStatus(folder / ("folder" + suffix), ModuleStatus::NotAPlugin, "a folder");
    if (suffix == ".so") {
        std::filesystem::create_symlink("two.so", folder / "one.so");
        std::filesystem::create_symlink("one.so", folder / "two.so");
        ExpectStatus(folder / "one.so", ModuleStatus::NotAPlugin, "a link that leads nowhere");
    }
    std::filesystem::create_directories(folder / "empty.vst3" / "Contents");
    ExpectStatus(folder / "empty.vst3", ModuleStatus::NotAPlugin, "without a library");
}

TEST_F(ModuleVerdictTest, ATruncatedModuleIsRefusedWhereverItEnds)
{
    // The dynamic section stands near the end of what the system loads; debug information may follow.
    constexpr std::size_t loadedPart = 8192;
    for (std::size_t bytes = 1; bytes < loadedPart; bytes += 509) {
        const ScanOutcome outcome = Scan(zettesting::MakeTruncatedModule(folder.Path(), bytes));
        EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::NotAPlugin) << bytes;
    }
    EXPECT_THAT(phases, IsEmpty());
}

struct Unusable
{
    const char* plugin;
    const char* reason;
    ScanPhase phase;
};

TEST_F(ModuleVerdictTest, PluginsThatCannotBeUsedMisbehaveAndSayWhy)
{
    const std::vector<Unusable> unusable = {
        {"bad/returns_null", "its entry function returned nothing", ScanPhase::Entry},
        {"bad/wrong_magic", "its entry function returned something that is no VST plug-in", ScanPhase::Entry},
        {"bad/endless_shell", "it is a shell that never ends its list of plug-ins", ScanPhase::Close},
        {"bad/empty_shell", "it is a shell without plug-ins", ScanPhase::Close},
        {"bad/vst3_null_factory", "its entry function returned nothing", ScanPhase::Close},
        {"bad/vst3_without_classes", "it has no audio module class", ScanPhase::Close},
    };
    for (const Unusable& each : unusable) {
        phases.clear();
        const ScanOutcome outcome = Scan(each.plugin);
        EXPECT_TRUE(outcome.misbehaved) << each.plugin;
        EXPECT_FALSE(outcome.couldNotLoad) << each.plugin;
        EXPECT_EQ(WordFailures({outcome.failure}), each.reason);
        EXPECT_EQ(outcome.failure.phase, each.phase) << each.plugin;
        EXPECT_THAT(outcome.infos, IsEmpty()) << each.plugin;
        EXPECT_GT(outcome.stamp.size, 0u) << each.plugin;
        EXPECT_THAT(phases, Contains(ScanPhase::Unload)) << each.plugin;
    }
}

TEST_F(ModuleVerdictTest, APluginThatTheSystemDoesNotLoadMisbehavesWithTheSystemsReason)
{
    const ScanOutcome outcome = Scan("bad/missing_library");
    EXPECT_TRUE(outcome.misbehaved);
    EXPECT_TRUE(outcome.couldNotLoad);
    EXPECT_THAT(WordFailures({outcome.failure}), StartsWith("could not be loaded: "));
    EXPECT_EQ(outcome.failure.phase, ScanPhase::Load);
    EXPECT_THAT(phases, ElementsAre(ScanPhase::Load));
    EXPECT_EQ(outcome.stamp, zetaudiofilterhost::GetModuleFileStamp(
                                 LocatorOf(zettesting::TestPlugin("bad/missing_library"))));
}

/// The administrator may read every file, so a fault refuses to read this one.
class UnreadableModuleTest : public ModuleVerdictTest
{
  protected:
    void RefuseToRead(const std::string& title) { fault.emplace("read." + title + ":1:denied"); }

    std::optional<zettesting::ScopedFaults> fault;
};

TEST_F(UnreadableModuleTest, IsNotCalledNoPlugin)
{
    const std::filesystem::path effect =
        zettesting::CopyTestPlugin("good/vst2_effect", folder.Path(), "secret");
    RefuseToRead(effect.filename().string());
    const ScanOutcome outcome = Scan(effect);
    EXPECT_EQ(Only(outcome).GetStatus(), ModuleStatus::Unreadable);
    EXPECT_THAT(Only(outcome).GetReason(), AllOf(HasSubstr("secret"), HasSubstr("ermission denied")));
    EXPECT_THAT(phases, IsEmpty());
}

TEST_F(UnreadableModuleTest, MayBeTheLibraryInABundle)
{
    const std::filesystem::path bundle =
        zettesting::CopyTestPlugin("good/vst3_without_moduleinfo", folder.Path(), "secret");
    RefuseToRead("secret" + std::string(zettesting::BundleLibrarySuffix()));
    EXPECT_EQ(Only(Scan(bundle)).GetStatus(), ModuleStatus::Unreadable);
    EXPECT_THAT(phases, IsEmpty());
}

TEST_F(ModuleVerdictTest, AnExceptionIsMisbehaviourWithItsMessageAndPhase)
{
    const ScanOutcome outcome = Scan("bad/throws_exception");
    EXPECT_TRUE(outcome.misbehaved);
    EXPECT_THAT(outcome.infos, IsEmpty());
    EXPECT_EQ(outcome.failure.phase, ScanPhase::Entry);
    EXPECT_EQ(WordFailures({outcome.failure}),
              "threw an exception (the plug-in gave up) in its entry function");
    EXPECT_THAT(phases, Not(Contains(ScanPhase::Unload)));
}

TEST_F(ModuleVerdictTest, ThePhaseCallbacksOwnExceptionIsNotThePlugins)
{
    ModuleLoader loader({}, [](ScanPhase phase) {
        if (phase == ScanPhase::Entry)
            throw std::logic_error("the callback's");
    });
    EXPECT_THROW(loader.Scan(LocatorOf(zettesting::TestPlugin("good/vst2_effect"))), std::logic_error);
}

} // namespace
} // namespace zetaudiopluginhost
