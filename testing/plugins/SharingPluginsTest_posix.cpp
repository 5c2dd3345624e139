#include <csignal>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zettesting/Environment.h>
#include <zettesting/TemporaryFolder.h>

#include "LoadedPlugin.h"

// These bad plug-ins behave differently while another process has one of their kind.
namespace zettesting {
namespace {

constexpr int passed = 42;
constexpr int noEffect = 43;

class SharingPlugins : public ::testing::Test
{
  protected:
    /// Loads a plug-in in a process of its own and does there what a scan does; keeps it loaded, or has
    /// unloaded it, until the end of this object.
    class Other
    {
      public:
        Other(const std::filesystem::path& module, bool unload)
        {
            int toParent[2], toChild[2];
            EXPECT_EQ(::pipe(toParent), 0);
            EXPECT_EQ(::pipe(toChild), 0);
            child = ::fork();
            if (child == 0) {
                ::close(toChild[1]);
                Use(module, [&](boost::dll::shared_library& library) {
                    if (unload)
                        library.unload();
                    Tell(toParent[1]);
                    Await(toChild[0]);
                });
                ::_exit(passed);
            }
            ::close(toParent[1]);
            ::close(toChild[0]);
            Await(toParent[0]);
            ::close(toParent[0]);
            end = toChild[1];
        }
        ~Other()
        {
            ::close(end);
            ::waitpid(child, nullptr, 0);
        }
        Other(const Other&) = delete;
        Other& operator=(const Other&) = delete;

        void Kill() const { ::kill(child, SIGKILL); }

      private:
        static void Tell(int pipe) { EXPECT_EQ(::write(pipe, "x", 1), 1); }
        static void Await(int pipe)
        {
            char byte = 0;
            static_cast<void>(::read(pipe, &byte, 1));
        }

        pid_t child = -1;
        int end = -1;
    };

    template<class While>
    static void Use(const std::filesystem::path& module, While whileLoaded)
    {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGSEGV, SIG_DFL);
        ::alarm(60);
        boost::dll::shared_library library(module.string());
        if (!CreateEffect(library))
            ::_exit(noEffect);
        whileLoaded(library);
    }
    /// The end of a process that uses it.
    static int StatusAfterUsing(const std::filesystem::path& module)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            Use(module, [](boost::dll::shared_library&) {});
            ::_exit(passed);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return status;
    }
    static bool Passes(int status) { return WIFEXITED(status) && WEXITSTATUS(status) == passed; }
    static bool Crashes(int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV; }

    /// Waits until the process waits in this call of the system for this kind of file ("socket:", for
    /// example).
    static void AwaitCall(pid_t process, int call, const std::string& file)
    {
        const std::string folder = "/proc/" + std::to_string(process);
        for (siginfo_t ended{}; ended.si_pid == 0;) {
            int current = -1;
            unsigned descriptor = 0;
            std::error_code gone;
            if (std::sscanf(ReadAll(folder + "/syscall").c_str(), "%d %x", &current, &descriptor) == 2 &&
                current == call &&
                std::filesystem::read_symlink(folder + "/fd/" + std::to_string(descriptor), gone)
                        .string()
                        .find(file) != std::string::npos)
                return;
            ::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT);
        }
        ADD_FAILURE() << "it has ended";
    }

    std::filesystem::path Copy(const std::string& plugin, const std::string& title) const
    {
        return CopyTestPlugin(plugin, folder.Path(), title);
    }

    const TemporaryFolder folder;
    const ScopedEnvironment wait{"ZET_TEST_PLUGIN_WAIT", "1"};
};

TEST_F(SharingPlugins, CrashesWhenLockedCrashesOnlyWhileTheOtherIsLoaded)
{
    const auto first = Copy("bad/crashes_when_locked", "a"), second = Copy("bad/crashes_when_locked", "b");
    EXPECT_TRUE(Passes(StatusAfterUsing(second)));
    {
        const Other other(first, false);
        EXPECT_TRUE(Crashes(StatusAfterUsing(second)));
    }
    const Other unloaded(first, true);
    EXPECT_TRUE(Passes(StatusAfterUsing(second)));
}

TEST_F(SharingPlugins, WhatIsInAnotherFolderHasAnotherLock)
{
    const TemporaryFolder elsewhere;
    const Other other(Copy("bad/crashes_when_locked", "a"), false);
    EXPECT_TRUE(Passes(StatusAfterUsing(CopyTestPlugin("bad/crashes_when_locked", elsewhere.Path(), "b"))));
}

TEST_F(SharingPlugins, RefusesWhenLockedGivesNoEffectWhileTheOtherIsLoaded)
{
    const auto first = Copy("bad/refuses_when_locked", "a"), second = Copy("bad/refuses_when_locked", "b");
    {
        const Other other(first, false);
        const int status = StatusAfterUsing(second);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == noEffect) << status;
    }
    const Other unloaded(first, true);
    EXPECT_TRUE(Passes(StatusAfterUsing(second)));
}

TEST_F(SharingPlugins, KeepsLockKeepsItUntilItsProcessEnds)
{
    const auto first = Copy("bad/keeps_lock", "a"), second = Copy("bad/keeps_lock", "b");
    {
        const Other unloaded(first, true);
        EXPECT_TRUE(Crashes(StatusAfterUsing(second)));
    }
    EXPECT_TRUE(Passes(StatusAfterUsing(second)));
}

TEST_F(SharingPlugins, TwoInOneProcessDoNotKeepEachOtherOut)
{
    for (const char* plugin : {"bad/crashes_when_locked", "bad/refuses_when_locked", "bad/keeps_lock"}) {
        const std::string title = std::filesystem::path(plugin).filename().string();
        const auto first = Copy(plugin, title + "1"), second = Copy(plugin, title + "2");
        const pid_t child = ::fork();
        if (child == 0) {
            Use(first, [](boost::dll::shared_library&) {});
            Use(second, [](boost::dll::shared_library&) {});
            ::_exit(passed);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(Passes(status)) << plugin << " " << status;
    }
}

TEST_F(SharingPlugins, WaitsForLockWaitsUntilTheOtherProcessEnds)
{
    const auto first = Copy("bad/waits_for_lock", "a"), second = Copy("bad/waits_for_lock", "b");
    const Other other(first, true);
    const pid_t child = ::fork();
    if (child == 0) {
        Use(second, [](boost::dll::shared_library&) {});
        ::_exit(passed);
    }
    AwaitCall(child, SYS_fcntl, "folder.lock");
    other.Kill();
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(Passes(status)) << status;
}

TEST_F(SharingPlugins, CountsProcessesCountsThoseThatHaveItLoaded)
{
    const ScopedEnvironment count("ZET_TEST_PLUGIN_COUNT", (folder / "count").string());
    const auto module = Copy("bad/counts_processes", "a");
    {
        const Other first(module, false), second(module, false);
        EXPECT_TRUE(Passes(StatusAfterUsing(module)));
        second.Kill();
    }
    const Other unloaded(module, true);
    EXPECT_TRUE(Passes(StatusAfterUsing(module)));
    EXPECT_EQ(ReadAll(folder / "count.txt"), "1\n2\n3\n1\n1\n");
}

TEST_F(SharingPlugins, SharesHelperCrashesWhenTheHelperEnds)
{
    const auto first = Copy("bad/shares_helper", "a"), second = Copy("bad/shares_helper", "b");
    // The helper is in the process group of the one that has started it.
    const pid_t starter = ::fork();
    if (starter == 0) {
        ::setpgid(0, 0);
        Use(first, [](boost::dll::shared_library&) {});
        ::_exit(passed);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(starter, &status, 0), starter);
    EXPECT_TRUE(Passes(status)) << status;
    EXPECT_TRUE(Passes(StatusAfterUsing(second)));
    ASSERT_EQ(::kill(-starter, SIGSTOP), 0) << "the helper still serves";

    const pid_t client = ::fork();
    if (client == 0) {
        Use(second, [](boost::dll::shared_library&) {});
        ::_exit(passed);
    }
    AwaitCall(client, SYS_read, "socket:");
    ASSERT_EQ(::kill(-starter, SIGKILL), 0);
    EXPECT_EQ(::waitpid(client, &status, 0), client);
    EXPECT_TRUE(Crashes(status)) << status;
}

TEST_F(SharingPlugins, TakesMemoryGoesToItsBoundAndStaysThere)
{
    const ScopedEnvironment most("ZET_TEST_PLUGIN_MEMORY", "40");
    const pid_t child = ::fork();
    if (child == 0) {
        Use(TestPlugin("bad/takes_memory"), [](boost::dll::shared_library&) {});
        ::_exit(passed);
    }
    // In pages: all of it, and what is in memory.
    long total = 0, resident = 0;
    const long bound = (40 << 20) / ::sysconf(_SC_PAGESIZE);
    int status = 0;
    while (resident < bound && ::waitpid(child, &status, WNOHANG) == 0)
        std::sscanf(ReadAll("/proc/" + std::to_string(child) + "/statm").c_str(), "%ld %ld", &total,
                    &resident);
    EXPECT_GE(resident, bound);
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
}

} // namespace
} // namespace zettesting
