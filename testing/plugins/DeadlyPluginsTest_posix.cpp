#include <clocale>
#include <csignal>
#include <filesystem>

#include <dlfcn.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zettesting/TemporaryFolder.h>

#include "LoadedPlugin.h"

// These bad plug-ins end their process, so each gets a process of its own.
namespace zettesting {
namespace {

using ::testing::ExitedWithCode;
using ::testing::KilledBySignal;

constexpr int survived = 42;

/// Sanitizers replace the system's crash behaviour. This puts it back, and limits the child's time.
void PrepareChild(unsigned secondsToLive = 120)
{
    for (const int signal : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL})
        std::signal(signal, SIG_DFL);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    ::alarm(secondsToLive);
}

/// Does with a plug-in what a scan does, from loading to unloading.
void Use(std::string_view plugin)
{
    const auto library = LoadLibraryOf(plugin);
    const EffectPointer effect = CreateEffect(library);
    AskText(*effect, vst2::EffectGetEffectName);
    AskText(*effect, vst2::EffectGetVendorString);
}

void UseAndExit(std::string_view plugin)
{
    PrepareChild();
    Use(plugin);
    ::_exit(survived);
}

struct Deadly
{
    const char* plugin;
    int signal;

    friend void PrintTo(const Deadly& deadly, std::ostream* stream)
    {
        *stream << deadly.plugin << " dies of signal " << deadly.signal;
    }
};

class DeadlyPlugin : public ::testing::TestWithParam<Deadly>
{};

TEST_P(DeadlyPlugin, DiesOfItsSignal)
{
    EXPECT_EXIT(UseAndExit(GetParam().plugin), KilledBySignal(GetParam().signal), "");
}

INSTANTIATE_TEST_SUITE_P(
    Each, DeadlyPlugin,
    ::testing::Values(Deadly{"bad/crash_on_load", SIGSEGV}, Deadly{"bad/crash_in_entry", SIGSEGV},
                      Deadly{"bad/crash_on_open", SIGSEGV}, Deadly{"bad/crash_when_asked_name", SIGSEGV},
                      Deadly{"bad/crash_on_close", SIGSEGV}, Deadly{"bad/crash_on_unload", SIGSEGV},
                      Deadly{"bad/aborts", SIGABRT}, Deadly{"bad/overflows_stack", SIGSEGV}),
    [](const auto& deadly) { return std::string(deadly.param.plugin).substr(4); });

/// Writes after each step how far it has come. So a test sees that a crash comes in its own phase and not
/// before.
void UseAndSay(std::string_view plugin, unsigned secondsToLive = 120)
{
    PrepareChild(secondsToLive);
    const auto say = [](std::string_view text) { return ::write(STDERR_FILENO, text.data(), text.size()); };
    auto library = LoadLibraryOf(plugin);
    say("loaded ");
    EffectPointer effect = CreateEffect(library);
    say("made ");
    AskText(*effect, vst2::EffectGetVendorString);
    say("vendor ");
    AskText(*effect, vst2::EffectGetEffectName);
    say("name ");
    effect.reset();
    say("closed ");
    library.unload();
    say("unloaded ");
    ::_exit(survived);
}

TEST(DeadlyPlugins, CrashInThePhaseThatTheyAreNamedFor)
{
    EXPECT_EXIT(UseAndSay("bad/crash_on_load"), KilledBySignal(SIGSEGV), "^$");
    EXPECT_EXIT(UseAndSay("bad/crash_in_entry"), KilledBySignal(SIGSEGV), "^loaded $");
    EXPECT_EXIT(UseAndSay("bad/crash_on_open"), KilledBySignal(SIGSEGV), "^loaded $");
    EXPECT_EXIT(UseAndSay("bad/crash_when_asked_name"), KilledBySignal(SIGSEGV), "^loaded made vendor $");
    EXPECT_EXIT(UseAndSay("bad/crash_on_close"), KilledBySignal(SIGSEGV), "^loaded made vendor name $");
    EXPECT_EXIT(UseAndSay("bad/crash_on_unload"), KilledBySignal(SIGSEGV),
                "^loaded made vendor name closed $");
    EXPECT_EXIT(UseAndSay("good/vst2_effect"), ExitedWithCode(survived), "closed unloaded $");
}

TEST(DeadlyPlugins, ExitsLookLikeExits)
{
    EXPECT_EXIT(UseAndExit("bad/exits_zero"), ExitedWithCode(0), "");
    EXPECT_EXIT(UseAndExit("bad/quick_exits_one"), ExitedWithCode(1), "");
    EXPECT_EXIT(UseAndExit("bad/installs_crash_handler"), ExitedWithCode(0), "");
}

TEST(DeadlyPlugins, CrashVst3FactoryCrashesOnceItIsEntered)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            const EnteredModule module("bad/crash_vst3_factory");
            module.Factory();
        },
        KilledBySignal(SIGSEGV), "");
}

TEST(DeadlyPlugins, ClapLibrariesCrashWhereTheyAreNamedFor)
{
    const auto enter = [](const char* plugin) {
        PrepareChild();
        const EnteredClap library(plugin);
        const auto say = [](std::string_view text) {
            return ::write(STDERR_FILENO, text.data(), text.size());
        };
        say("entered ");
        const clap::PluginFactory& factory = library.Factory();
        say("made ");
        for (std::uint32_t i = 0; i < 2; ++i) {
            factory.getPluginDescriptor(&factory, i);
            say("described ");
        }
        ::_exit(survived);
    };
    EXPECT_EXIT(enter("bad/clap_crash_in_init"), KilledBySignal(SIGSEGV), "^$");
    EXPECT_EXIT(enter("bad/clap_crash_in_factory"), KilledBySignal(SIGSEGV), "^entered $");
    EXPECT_EXIT(enter("bad/clap_crash_in_descriptor"), KilledBySignal(SIGSEGV), "^entered made described $");
    EXPECT_EXIT(enter("bad/clap_unknown_version"), KilledBySignal(SIGSEGV), "^$") << "for who does not look";
    EXPECT_EXIT(enter("good/clap_several"), ExitedWithCode(survived), "described described $");
}

void UseForASecond(std::string_view plugin)
{
    PrepareChild();
    const rlimit oneSecond{1, 10};
    ::setrlimit(RLIMIT_CPU, &oneSecond);
    Use(plugin);
}

TEST(DeadlyPlugins, LoopsForeverUsesUpAnyTime)
{
    EXPECT_EXIT(UseForASecond("bad/loops_forever"), KilledBySignal(SIGXCPU), "");
}

TEST(DeadlyPlugins, DeadlocksOnUnloadWaitsAfterAllItsWorkIsDone)
{
    EXPECT_EXIT(UseAndSay("bad/deadlocks_on_unload", 1), KilledBySignal(SIGALRM), "closed $");
}

TEST(DeadlyPlugins, LeavesThreadsDiesOfTheUnload)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            Use("bad/leaves_threads");
            for (;;)
                ::pause();
        },
        KilledBySignal(SIGSEGV), "");
}

TEST(DeadlyPlugins, CrashesWhenPoisonedCrashesAfterPoisonsProcess)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            Use("bad/poisons_process");
            UseAndSay("bad/crashes_when_poisoned");
        },
        KilledBySignal(SIGSEGV), "^loaded $");
}

/// Exits with the exit code of a child of this process that uses `plugin`; with 1 when that child crashed.
void UseInChildAndExit(std::string_view plugin)
{
    const pid_t child = ::fork();
    if (child == 0)
        UseAndExit(plugin);
    int status = 0;
    ::_exit(::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

TEST(DeadlyPlugins, APoisonedProcessDoesNotPoisonItsChildren)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            Use("bad/poisons_process");
            UseInChildAndExit("bad/crashes_when_poisoned");
        },
        ExitedWithCode(survived), "");
}

TEST(DeadlyPlugins, ClosesDescriptorsClosesTheStandardOnesAndAllOthers)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            const int other = ::open("/dev/null", O_RDONLY);
            Use("bad/closes_descriptors");
            for (const int descriptor : {0, 1, 2, other})
                if (::fcntl(descriptor, F_GETFD) != -1)
                    ::_exit(1);
            ::_exit(survived);
        },
        ExitedWithCode(survived), "");
}

TEST(DeadlyPlugins, FloodsOutputWritesMegabytesToBothStreams)
{
    const TemporaryFolder folder;
    EXPECT_EXIT(
        {
            PrepareChild();
            for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
                ::dup2(::open((folder / std::to_string(stream)).c_str(), O_WRONLY | O_CREAT, 0600), stream);
            UseAndExit("bad/floods_output");
        },
        ExitedWithCode(survived), "");
    EXPECT_GE(std::filesystem::file_size(folder / "1"), 4u << 20);
    EXPECT_GE(std::filesystem::file_size(folder / "2"), 4u << 20);
}

TEST(DeadlyPlugins, ChangesProcessChangesLocaleSignalsAndFolder)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            std::filesystem::current_path(std::filesystem::temp_directory_path());
            Use("bad/changes_process");
            const bool changed = std::setlocale(LC_ALL, nullptr) != std::string("C") &&
                                 std::signal(SIGTERM, SIG_DFL) == SIG_IGN &&
                                 std::signal(SIGSEGV, SIG_DFL) != SIG_DFL &&
                                 std::filesystem::current_path() == "/";
            ::_exit(changed ? survived : 1);
        },
        ExitedWithCode(survived), "");
}

TEST(DeadlyPlugins, GoodPluginsAreGoneFromMemoryAfterTheirUnload)
{
    const std::filesystem::path path = TestPluginLibrary("good/vst3_several_classes");
    AskForFacts("good/vst3_several_classes");
    EXPECT_EQ(::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
}

} // namespace
} // namespace zettesting
