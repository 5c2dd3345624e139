#include <chrono>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <future>
#include <thread>

#include <gmock/gmock.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/Emulation.h>
#include <zettesting/TemporaryFolder.h>

#include "LoadedPlugin.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

// These bad plug-ins end their process, so each gets a process of its own.
namespace zettesting {
namespace {

using ::testing::ExitedWithCode;

constexpr int survived = 42;
constexpr int timeIsUp = 43;

/// A process that an exception ended has the exception's code as its exit code.
struct DiedOf
{
    DWORD exception;
    bool operator()(int exitCode) const { return static_cast<DWORD>(exitCode) == exception; }
};

/// Keeps dialogs and debuggers away, and ends the process when its time is up.
void PrepareChild(std::chrono::seconds timeToLive = std::chrono::minutes(2))
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::SetUnhandledExceptionFilter([](EXCEPTION_POINTERS* pointers) -> LONG {
        ::TerminateProcess(::GetCurrentProcess(), pointers->ExceptionRecord->ExceptionCode);
        return EXCEPTION_EXECUTE_HANDLER;
    });
    // A thread does not start while another one loads or unloads a module.
    std::promise<void> watching;
    std::thread([timeToLive, &watching] {
        watching.set_value();
        ::WaitForSingleObject(::GetCurrentProcess(), static_cast<DWORD>(timeToLive.count() * 1000));
        ::TerminateProcess(::GetCurrentProcess(), timeIsUp);
    }).detach();
    watching.get_future().wait();
}

[[noreturn]] void End(int exitCode)
{
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::_Exit(exitCode);
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
    End(survived);
}

/// Writes after each step how far it has come. So a test sees that a crash comes in its own phase and not
/// before.
void UseAndSay(std::string_view plugin, std::chrono::seconds timeToLive = std::chrono::minutes(2))
{
    PrepareChild(timeToLive);
    const auto say = [](std::string_view text) {
        ::_write(2, text.data(), static_cast<unsigned>(text.size()));
    };
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
    End(survived);
}

TEST(DeadlyPlugins, CrashInThePhaseThatTheyAreNamedFor)
{
    const DiedOf fault{EXCEPTION_ACCESS_VIOLATION};
    EXPECT_EXIT(UseAndSay("bad/crash_in_entry"), fault, "^loaded $");
    EXPECT_EXIT(UseAndSay("bad/crash_when_asked_name"), fault, "^loaded made vendor $");
    EXPECT_EXIT(UseAndSay("bad/crash_on_close"), fault, "^loaded made vendor name $");
    EXPECT_EXIT(UseAndSay("good/vst2_effect"), ExitedWithCode(survived), "closed unloaded $");
    if (IsWine()) {
        // Wine's loader catches crashes in a module's initialisers and last functions.
        EXPECT_THROW(LoadLibraryOf("bad/crash_on_load"), std::exception);
        EXPECT_EXIT(UseAndSay("bad/crash_on_unload"), ExitedWithCode(survived), "closed unloaded $");
    } else {
        EXPECT_EXIT(UseAndSay("bad/crash_on_load"), fault, "^$");
        EXPECT_EXIT(UseAndSay("bad/crash_on_unload"), fault, "^loaded made vendor name closed $");
    }
}

TEST(DeadlyPlugins, OverflowsStackDiesOfIt)
{
    EXPECT_EXIT(UseAndExit("bad/overflows_stack"), DiedOf{EXCEPTION_STACK_OVERFLOW}, "");
}

TEST(DeadlyPlugins, ExitsLookLikeExits)
{
    EXPECT_EXIT(UseAndExit("bad/exits_zero"), ExitedWithCode(0), "");
    EXPECT_EXIT(UseAndExit("bad/quick_exits_one"), ExitedWithCode(1), "");
    EXPECT_EXIT(UseAndExit("bad/installs_crash_handler"), ExitedWithCode(0), "");
    // The runtime library's abort ends a process with this code.
    EXPECT_EXIT(UseAndExit("bad/aborts"), ExitedWithCode(3), "");
}

TEST(DeadlyPlugins, CrashVst3FactoryCrashesOnceItIsEntered)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            const EnteredModule module("bad/crash_vst3_factory");
            module.Factory();
        },
        DiedOf{EXCEPTION_ACCESS_VIOLATION}, "");
}

TEST(DeadlyPlugins, ClapLibrariesCrashWhereTheyAreNamedFor)
{
    const auto enter = [](const char* plugin) {
        PrepareChild();
        const EnteredClap library(plugin);
        const auto say = [](std::string_view text) {
            ::_write(2, text.data(), static_cast<unsigned>(text.size()));
        };
        say("entered ");
        const clap::PluginFactory& factory = library.Factory();
        say("made ");
        for (std::uint32_t i = 0; i < 2; ++i) {
            factory.getPluginDescriptor(&factory, i);
            say("described ");
        }
        End(survived);
    };
    const DiedOf fault{EXCEPTION_ACCESS_VIOLATION};
    EXPECT_EXIT(enter("bad/clap_crash_in_init"), fault, "^$");
    EXPECT_EXIT(enter("bad/clap_crash_in_factory"), fault, "^entered $");
    EXPECT_EXIT(enter("bad/clap_crash_in_descriptor"), fault, "^entered made described $");
    EXPECT_EXIT(enter("bad/clap_unknown_version"), fault, "^$") << "for who does not look";
    EXPECT_EXIT(enter("good/clap_several"), ExitedWithCode(survived), "described described $");
}

TEST(DeadlyPlugins, LoopsForeverUsesUpAnyTime)
{
    EXPECT_EXIT(UseAndSay("bad/loops_forever", std::chrono::seconds(1)), ExitedWithCode(timeIsUp),
                "^loaded loops from now on");
}

TEST(DeadlyPlugins, DeadlocksOnUnloadWaitsAfterAllItsWorkIsDone)
{
    EXPECT_EXIT(UseAndSay("bad/deadlocks_on_unload", std::chrono::seconds(1)), ExitedWithCode(timeIsUp),
                "closed $");
}

TEST(DeadlyPlugins, LeavesThreadsDiesOfTheUnload)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            Use("bad/leaves_threads");
            ::WaitForSingleObject(::GetCurrentProcess(), INFINITE);
        },
        DiedOf{EXCEPTION_ACCESS_VIOLATION}, "");
}

TEST(DeadlyPlugins, CrashesWhenPoisonedCrashesAfterPoisonsProcess)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            Use("bad/poisons_process");
            UseAndSay("bad/crashes_when_poisoned");
        },
        DiedOf{EXCEPTION_ACCESS_VIOLATION}, "^loaded $");
}

TEST(DeadlyPlugins, FloodsOutputWritesMegabytesToBothStreams)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            const TemporaryFolder folder;
            for (const int stream : {1, 2})
                ::_dup2(::_wopen((folder / std::to_string(stream)).c_str(), _O_WRONLY | _O_CREAT | _O_BINARY,
                                 _S_IREAD | _S_IWRITE),
                        stream);
            Use("bad/floods_output");
            const bool flooded = ::_filelengthi64(1) >= 4 << 20 && ::_filelengthi64(2) >= 4 << 20;
            for (const int stream : {1, 2})
                ::_close(stream);
            std::error_code ignored;
            std::filesystem::remove_all(folder.Path(), ignored);
            End(flooded ? survived : 1);
        },
        ExitedWithCode(survived), "");
}

TEST(DeadlyPlugins, ChangesProcessChangesLocaleSignalsAndFolder)
{
    EXPECT_EXIT(
        {
            PrepareChild();
            std::filesystem::current_path(std::filesystem::temp_directory_path());
            Use("bad/changes_process");
            const bool changed =
                std::setlocale(LC_ALL, nullptr) != std::string("C") &&
                std::signal(SIGTERM, SIG_DFL) == SIG_IGN && std::signal(SIGSEGV, SIG_DFL) != SIG_DFL &&
                std::filesystem::current_path() == std::filesystem::current_path().root_path();
            End(changed ? survived : 1);
        },
        ExitedWithCode(survived), "");
}

TEST(DeadlyPlugins, GoodPluginsAreGoneFromMemoryAfterTheirUnload)
{
    const std::filesystem::path path = TestPluginLibrary("good/vst3_several_classes");
    AskForFacts("good/vst3_several_classes");
    EXPECT_EQ(::GetModuleHandleW(path.c_str()), nullptr);
}

} // namespace
} // namespace zettesting
