// Plug-ins cannot change the user's files while they are scanned in the scanner process.
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <iterator>
#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zettesting/Patience.h>

#include "FaultFixture.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using zettesting::ChildProcess;
using zettesting::ReadAll;
using zettesting::WriteAll;

/// From now on the kernel knows no Landlock, as those before 5.13, for this thread and what it starts.
void RefuseLandlock()
{
    sock_filter instructions[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_landlock_create_ruleset, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{std::size(instructions), instructions};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
}

class FileGuard : public FaultFixture
{
  protected:
    FileGuard()
    {
        fs::create_directories(victim / "empty");
        WriteAll(victim / "letter", "the user's");
        WriteAll(folder / "home" / "known", "a setting of before");
        environment["ZET_TEST_VICTIM"] = victim.string();
        // Where nothing keeps the plug-in from it, it writes into the temporary folder, too.
        fs::create_directory(folder / "temporary");
        environment["TMPDIR"] = (folder / "temporary").string();
        plugin = Install("bad/changes_files", "changes");
    }
    std::string ScanAndReadLog()
    {
        EXPECT_EQ(Scan().exitStatus, 0);
        const auto listed = FindListed(plugin);
        EXPECT_TRUE(listed && listed->status == "working");
        return ScanLogs();
    }
    void ExpectNothingChanged() const
    {
        EXPECT_EQ(ReadAll(victim / "letter"), "the user's");
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(victim))
            names.insert(entry.path().filename().string());
        EXPECT_THAT(names, testing::ElementsAre("empty", "letter"));
        EXPECT_THAT(NamesIn(folder / "home"), testing::IsSupersetOf({"known"}));
        EXPECT_FALSE(fs::exists(folder / "home" / ".changes_files"));
        EXPECT_FALSE(fs::exists(folder / "home" / ".cache"));
        EXPECT_FALSE(fs::exists(folder / "home" / "config" / "changes_files"));
    }
    static std::vector<std::string> NamesIn(const fs::path& path)
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path))
            names.push_back(entry.path().filename().string());
        return names;
    }
    /// The folders of plug-ins that are left in the runtime folder.
    std::vector<std::string> HomesLeft() const
    {
        std::vector<std::string> names = NamesIn(folder / "runtime");
        std::erase_if(names,
                      [](const std::string& name) { return !name.starts_with("zetaudiofilterscan-home-"); });
        return names;
    }
    /// The last guard of a worker removes the home, and nobody waits for it.
    void ExpectHomesGo() const
    {
        EXPECT_TRUE(zettesting::Becomes([this] { return HomesLeft().empty(); }))
            << testing::PrintToString(HomesLeft());
    }

    const fs::path victim = folder / "home" / "documents";
    fs::path plugin;
};

TEST_F(FileGuard, KeepsWhatTheUserHas)
{
    const std::string log = ScanAndReadLog();
    for (const char* what :
         {"write", "append", "write stream", "truncate", "empty", "make", "make folder", "make link",
          "make pipe", "move", "remove folder", "delete", "shell writes", "shell deletes", "trace"})
        EXPECT_THAT(log, HasSubstr("\n" + std::string(what) + ": refused\n"));
    ExpectNothingChanged();
}

TEST_F(FileGuard, KeepsItInAFullScan)
{
    SetSwitch("zetaudiofilterhost.EnableQuickEffectScan", "false");
    EXPECT_THAT(ScanAndReadLog(), HasSubstr("\ndelete: refused\n"));
    ExpectNothingChanged();
}

TEST_F(FileGuard, KeepsThePreferencesOfTheHost)
{
    environment["ZET_TEST_VICTIM"] = prefs.string();
    const std::string settings = ReadAll(prefs / "AudioPlugins.xml");
    fs::create_directory(prefs / "empty");
    WriteAll(prefs / "letter", "the user's");
    EXPECT_THAT(ScanAndReadLog(), Not(HasSubstr(": done\nmake")));
    EXPECT_EQ(ReadAll(prefs / "letter"), "the user's");
    EXPECT_TRUE(fs::exists(prefs / "empty"));
}

TEST_F(FileGuard, GivesPluginsAHomeThatGoesWithTheScan)
{
    const std::string log = ScanAndReadLog();
    for (const char* what :
         {"dot file", "settings", "cache", "temporary", "move temporary", "truncate temporary", "null"})
        EXPECT_THAT(log, HasSubstr("\n" + std::string(what) + ": done\n"));
    EXPECT_THAT(log, HasSubstr("\nknown: a setting of before\n"));
    EXPECT_THAT(log, HasSubstr("\ntemporary folder: " + (folder / "runtime").string()));
    ExpectNoProcessLeft();
    ExpectHomesGo();
}

TEST_F(FileGuard, TheHomeGoesWhenAPluginCrashes)
{
    Install("bad/crash_on_load", "crashes");
    EXPECT_EQ(Scan().banned.size(), 1u);
    ExpectNoProcessLeft();
    ExpectHomesGo();
}

TEST_F(FileGuard, TheHomeGoesWhenTheScannerIsKilled)
{
    // A worker has scanned a plug-in, so its guard is there to clear away.
    StopAt("supervisor.scanned", 1);
    ChildProcess host(Command({"scan"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop);
    EXPECT_THAT(HomesLeft(), testing::SizeIs(1));
    host.Kill();
    KillAll({stop->process});
    ExpectNoProcessLeft();
    ExpectHomesGo();
}

TEST_F(FileGuard, TheNextScanRemovesAHomeThatWasLeft)
{
    fs::create_directories(folder / "runtime" / "zetaudiofilterscan-home-4194305" / "tmp");
    Scan();
    ExpectNoProcessLeft();
    ExpectHomesGo();
}

// A scanner that is built with a sanitizer notes no refusals: the sanitizer stands before the same calls.
#ifndef ZET_SANITIZED
TEST_F(FileGuard, TheLogSaysWhatWasRefused)
{
    const std::string log = ScanAndReadLog();
    const std::string refused = "\nzetaudiofilterscan: refused to ";
    const std::string letter = fs::canonical(victim).string() + "/letter\n";
    EXPECT_THAT(log, HasSubstr("== VST|" + plugin.string()));
    EXPECT_THAT(log, HasSubstr(refused + "write to " + letter));
    EXPECT_THAT(log, HasSubstr(refused + "delete " + letter));
    EXPECT_THAT(log, HasSubstr(refused + "move " + letter));
    EXPECT_THAT(log, HasSubstr(refused + "make " + fs::canonical(victim).string() + "/folder\n"));
}
#endif

TEST_F(FileGuard, APluginCannotSendSignalsToOtherPrograms)
{
    const pid_t bystander = ::fork();
    if (bystander == 0) {
        ::signal(SIGTERM, SIG_DFL);
        for (;;)
            ::pause();
    }
    environment["ZET_TEST_BYSTANDER"] = std::to_string(bystander);
    EXPECT_THAT(ScanAndReadLog(), HasSubstr("\nsignal: refused\n"));
    EXPECT_EQ(::waitpid(bystander, nullptr, WNOHANG), 0) << "it lives";
    ::kill(bystander, SIGKILL);
    ::waitpid(bystander, nullptr, 0);
}

TEST_F(FileGuard, AKernelWithoutLandlockIsToldInTheLogAndTheScanGoesOn)
{
    std::string log;
    // A program that a thread starts is refused the same things as the thread.
    std::thread onAnOlderKernel([&] {
        RefuseLandlock();
        log = ScanAndReadLog();
    });
    onAnOlderKernel.join();
    EXPECT_THAT(log, HasSubstr("-- This kernel cannot keep plug-ins from changing your files while they are "
                               "scanned. Linux 5.13 and newer can, with Landlock"));
    EXPECT_THAT(log, HasSubstr("\nmove: done\n"));
    EXPECT_FALSE(fs::exists(victim / "letter"));
    EXPECT_THAT(HomesLeft(), testing::IsEmpty());
}

TEST_F(FileGuard, MayBeTurnedOff)
{
    SetSwitch("zetaudiofilterscan.RefuseWriting", "false");
    const std::string log = ScanAndReadLog();
    EXPECT_THAT(log, HasSubstr("\ndelete: failed\n")) << "it was moved before";
    EXPECT_THAT(log, HasSubstr("\nmove: done\n"));
    EXPECT_THAT(log, Not(HasSubstr("refused")));
    EXPECT_FALSE(fs::exists(victim / "letter"));
}

TEST_F(FileGuard, LeavesTheFoldersThatTheUserNames)
{
    SetSwitch("zetaudiofilterscan.WritableFolders", (folder / "elsewhere").string() + ":" + victim.string());
    EXPECT_THAT(ScanAndReadLog(), HasSubstr("\nmove: done\n"));
    EXPECT_TRUE(fs::exists(victim / "folder"));
}

TEST_F(FileGuard, TheTraceSaysWhichFolderThatTheUserNamesCannotBeWrittenTo)
{
    SetSwitch("zetaudiofilterscan.WritableFolders", "/not/there");
    environment["ZET_TRACE"] = "volume=1";
    EXPECT_THAT(Scan().messages,
                HasSubstr("writing to files is refused; plug-ins cannot write to \"/not/there\": "));
}

TEST_F(FileGuard, DoesNotHoldForScansInTheHostsOwnProcess)
{
    EXPECT_EQ(Scan({"--in-process"}).exitStatus, 0);
    EXPECT_FALSE(fs::exists(victim / "letter"));
}

} // namespace
