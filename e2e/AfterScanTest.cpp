// A scan leaves its results in the list of plug-ins, and tells what has changed there.
#include <fstream>
#include <memory>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

class AfterScan : public ManagerFixture
{
  protected:
    /// Makes another build of the same plug-in. The system ignores bytes behind the end of a library.
    static void Change(const std::filesystem::path& plugin)
    {
        std::ofstream(plugin, std::ios::binary | std::ios::app) << "changed";
    }
    /// Waits until the scan has come to this plug-in.
    std::unique_ptr<ChildProcess> ScanUpTo(const std::filesystem::path& plugin, Strings arguments) const
    {
        auto command = Command(std::move(arguments));
        command.interruptible = true;
        auto scan = std::make_unique<ChildProcess>(command);
        EXPECT_TRUE(scan->WaitForError(plugin.string()));
        return scan;
    }
};

TEST_F(AfterScan, WhatIsNewChangedOrGoneIsTold)
{
    const auto stays = Install("good/vst2_effect", "a_stays");
    const auto changes = Install("good/vst2_effect", "b_changes");
    const auto goes = Install("good/vst2_shell", "c_goes");
    const ScanSummary first = Scan();
    EXPECT_EQ(first.added.size(), 5u);
    EXPECT_EQ(first.end, "done");

    Change(changes);
    std::filesystem::remove(goes);
    const auto comes = Install("good/vst2_synth", "d_comes");
    const auto bad = Install("bad/crash_in_entry", "e_bad");
    const auto result = Run({"scan"});
    EXPECT_THAT(result.output, AllOf(HasSubstr("\n\nNew: 1 plug-in\n"), HasSubstr("Updated: 1 plug-in\n"),
                                     HasSubstr("Gone: 3 plug-ins\n")));

    std::filesystem::remove(comes);
    Change(stays);
    RunWell({"ban", changes.string()});
    std::filesystem::remove(changes);
    const auto more = Install("good/vst2_synth", "f_more");
    const auto worse = Install("bad/aborts", "g_worse");
    const ScanSummary last = Scan();
    EXPECT_EQ(last.exitStatus, 0) << last.messages;
    EXPECT_EQ(last.added, Strings{more.string()});
    EXPECT_EQ(last.updated, Strings{stays.string()});
    EXPECT_EQ(last.removed, (Strings{comes.string(), changes.string()}))
        << "a banned one whose file is gone, too";
    EXPECT_EQ(last.banned, Strings{worse.string()});
    EXPECT_THAT(last.reasons.at(worse.string()), HasSubstr("aborted"));
    EXPECT_EQ(last.unreached, Strings());
    EXPECT_EQ(last.end, "done");
    EXPECT_EQ(ListedPaths({"--banned"}), (Strings{bad.string(), worse.string()}));
}

TEST_F(AfterScan, OneThatLiesInNoFolderIsToldToGoForThat)
{
    const auto elsewhere = folder / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    const auto plugin = zettesting::CopyTestPlugin("good/vst2_effect", elsewhere, "effect");
    EXPECT_EQ(Scan({elsewhere.string()}).added, Strings{plugin.string()});
    EXPECT_THAT(RunWell({"scan"}), HasSubstr("Gone: 1 plug-in\n    Pebble Delay  " + plugin.string() +
                                             "\n        lies in no folder that is scanned\n"));
    EXPECT_EQ(List().size(), 0u);
}

TEST_F(AfterScan, WithoutItsScannerTheListStaysAsItWas)
{
    const auto effect = Install("good/vst2_effect", "effect");
    const auto shell = Install("good/vst2_shell", "shell");
    RunWell({"scan"});
    RunWell({"disable", effect.string()});
    const auto before = List();
    const auto comes = Install("good/vst2_synth", "synth");
    const auto whole = program;
    CopyProgram();
    const ScanSummary summary = Scan({"--rescan"});
    EXPECT_EQ(summary.exitStatus, 3);
    EXPECT_EQ(summary.end, "notstarted");
    EXPECT_EQ(summary.unreached, (Strings{effect.string(), shell.string(), comes.string()}));
    EXPECT_EQ(summary.removed, Strings());
    EXPECT_EQ(summary.scanned, 0);
    EXPECT_EQ(summary.found, 0);
    EXPECT_NE(summary.reason, "");
    EXPECT_EQ(List(), before);
    const auto said = Run({"scan", "--rescan"});
    EXPECT_EQ(said.output, "Not scanned: 3 plug-ins; what was in the list stays in it as it was\n");
    EXPECT_THAT(said.error, HasSubstr("the scanner process could not be started"));

    program = whole;
    EXPECT_EQ(Run({"list"}).error, "") << "nothing is left to be put back";
    EXPECT_EQ(List(), before);
    EXPECT_EQ(Scan().added, Strings{comes.string()});
}

TEST_F(AfterScan, AReloadOfAllWithoutItsScannerIsTriedOnceAndLosesNoBan)
{
    const auto first = Install("bad/crash_in_entry", "a_bad");
    const auto second = Install("bad/aborts", "b_bad");
    RunWell({"scan"});
    const auto before = List();
    CopyProgram();
    environment["ZET_TRACE"] = "volume=1";
    const auto said = Run({"reload", "--all"});
    EXPECT_EQ(said.exitStatus, 3);
    EXPECT_EQ(said.output, "Not scanned: 2 plug-ins; what was in the list stays in it as it was\n");
    const std::string missing = "There is no scanner program";
    const std::size_t traced = said.error.find(missing);
    ASSERT_NE(traced, std::string::npos) << said.error;
    EXPECT_EQ(said.error.find(missing, traced + 1), std::string::npos) << said.error;
    for (const auto& bad : {first, second})
        EXPECT_THAT(said.error, HasSubstr("not scanned, and therefore still banned: " + bad.string() + "\n"));
    EXPECT_EQ(List(), before);
}

TEST_F(AfterScan, ACancelledScanKeepsWhatItHasNotReached)
{
    const auto first = Install("good/vst2_effect", "a_first");
    const auto middle = Install("good/vst2_effect", "m_middle");
    const auto last = Install("good/vst2_synth", "z_last");
    RunWell({"scan"});
    const auto before = List();
    std::filesystem::remove(middle);
    zettesting::CopyTestPlugin("bad/loops_forever", plugins, "m_middle");
    const auto scan = ScanUpTo(middle, {"scan", "--json", "--rescan", "--jobs", "1"});
    scan->Interrupt();
    const ScanSummary summary = ReadScanSummary(scan->Wait());
    EXPECT_EQ(summary.exitStatus, 130);
    EXPECT_EQ(summary.end, "cancelled");
    EXPECT_EQ(summary.scanned, 1);
    EXPECT_EQ(summary.unreached, (Strings{middle.string(), last.string()}));
    EXPECT_EQ(summary.removed, Strings());
    EXPECT_EQ(List(), before);
}

TEST_F(AfterScan, AKilledScanIsMendedAtTheNextStartWhichSaysSo)
{
    const auto first = Install("good/vst2_effect", "a_first");
    const auto middle = Install("good/vst2_effect", "m_middle");
    const auto last = Install("good/vst2_synth", "z_last");
    RunWell({"scan"});
    const auto before = List();
    std::filesystem::remove(middle);
    zettesting::CopyTestPlugin("bad/loops_forever", plugins, "m_middle");
    const auto scan = ScanUpTo(middle, {"scan", "--rescan"});
    scan->Kill();
    scan->Wait();
    ExpectNoProcessLeft();
    const auto next = Run({"list", "--json"});
    EXPECT_EQ(next.exitStatus, 0);
    EXPECT_THAT(next.error, HasSubstr("interrupted before it reached "));
    EXPECT_EQ(ReadList(next.output), before);
    EXPECT_EQ(Run({"list"}).error, "") << "once";
    EXPECT_EQ(List(), before);
}

TEST_F(AfterScan, AReloadThatIsNotReachedLeavesTheBan)
{
    const auto effect = Install("good/vst2_effect", "effect");
    const auto synth = Install("good/vst2_synth", "synth");
    RunWell({"scan"});
    RunWell({"ban", effect.string(), synth.string()});
    const auto before = List();
    const auto whole = program;
    CopyProgram();
    for (const Strings& arguments : {Strings{"reload", effect.string()}, Strings{"reload", "--all"}}) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 3);
        EXPECT_THAT(result.error, HasSubstr("still banned: " + effect.string()));
        EXPECT_EQ(List(), before) << "with reason and time";
    }
    EXPECT_THAT(Run({"reload", "--all"}).error, HasSubstr("still banned: " + synth.string()));
    program = whole;
    EXPECT_EQ(Run({"reload", "--all"}).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--banned"}), Strings());
}

TEST_F(AfterScan, AFileThatMayNotBeReadIsToldAndTriedAgain)
{
    const auto open = Install("good/vst2_effect", "open");
    const auto locked = Install("good/vst2_synth", "locked");
    environment["ZET_FAULT"] = "read." + locked.filename().string() + ":1:denied";
    const auto said = Run({"scan"});
    EXPECT_EQ(said.exitStatus, 0) << said.error;
    EXPECT_THAT(said.output, HasSubstr("Cannot be read: " + locked.string() + "\n    "));
    EXPECT_THAT(said.output, HasSubstr("ermission denied"));
    EXPECT_THAT(said.output, HasSubstr(": 1 plug-in found, 0 banned"));
    EXPECT_THAT(Run({"scan", "--quiet"}).output, testing::StartsWith("Cannot be read: " + locked.string()));

    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.scanned, 1) << "although its size and time are the same";
    EXPECT_EQ(summary.unreadable, Strings{locked.string()});
    EXPECT_THAT(summary.reasons.at(locked.string()), HasSubstr("ermission denied"));
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}), Strings{open.string()});
    EXPECT_EQ(ListedPaths({"--failed"}), Strings{locked.string()});

    environment["ZET_FAULT"] = std::nullopt;
    const ScanSummary after = Scan();
    EXPECT_EQ(after.added, Strings{locked.string()});
    EXPECT_EQ(after.unreadable, Strings());
    EXPECT_EQ(Scan().scanned, 0);
}

TEST_F(AfterScan, AFolderThatMayNotBeReadIsToldAndWhatIsInItStays)
{
    const auto open = Install("good/vst2_effect", "open");
    const auto locked = plugins / "locked";
    std::filesystem::create_directory(locked);
    const auto known = zettesting::CopyTestPlugin("good/vst2_synth", locked, "known");
    RunWell({"scan"});
    const auto before = List();
    ASSERT_EQ(ListedPaths(), (Strings{known.string(), open.string()}));
    const auto later = zettesting::CopyTestPlugin("good/vst2_effect", locked, "later");
    environment["ZET_FAULT"] = "read." + locked.filename().string() + ":1:denied";

    const ScanSummary first = Scan();
    EXPECT_EQ(first.exitStatus, 0) << first.messages;
    EXPECT_EQ(first.scanned, 0);
    EXPECT_EQ(first.unreadable, Strings{locked.string()});
    EXPECT_THAT(first.reasons.at(locked.string()), HasSubstr("ermission denied"));
    EXPECT_EQ(first.removed, Strings());
    EXPECT_EQ(first.added, Strings());
    EXPECT_EQ(List(), before) << "the known one stays as it was";

    const std::string told = "Cannot be read: " + locked.string() + "\n    ";
    const auto said = Run({"scan"});
    EXPECT_EQ(said.exitStatus, 0) << said.error;
    EXPECT_THAT(said.output, AllOf(HasSubstr(told), HasSubstr("ermission denied"), Not(HasSubstr("Gone"))));
    const auto quiet = Run({"scan", "--quiet"});
    EXPECT_EQ(quiet.exitStatus, 0) << quiet.error;
    EXPECT_THAT(quiet.output, AllOf(testing::StartsWith(told), HasSubstr("ermission denied")));
    EXPECT_EQ(Scan().unreadable, Strings{locked.string()}) << "as long as it is so";
    EXPECT_EQ(List(), before);

    environment["ZET_FAULT"] = std::nullopt;
    const ScanSummary after = Scan();
    EXPECT_EQ(after.added, Strings{later.string()});
    EXPECT_EQ(after.removed, Strings());
    EXPECT_EQ(after.unreadable, Strings());
    EXPECT_EQ(ListedPaths(), (Strings{known.string(), later.string(), open.string()}));
}

TEST_F(AfterScan, ABannedOneWhoseFileWasReplacedIsSaidToBeTriedAgain)
{
    const auto better = Install("bad/crash_in_entry", "a_better");
    const auto worse = Install("bad/crash_in_entry", "b_worse");
    const auto same = Install("bad/crash_in_entry", "c_same");
    const auto replace = [this](const char* plugin, const std::filesystem::path& file) {
        std::filesystem::remove(file);
        EXPECT_EQ(Install(plugin, file.stem().string()), file);
    };
    const Strings files{better.string(), worse.string(), same.string()};
    const std::string passed = "Tried again, not banned any more: " + better.string() + "\n";
    const std::string failed = "Tried again, still banned: " + worse.string() + "\n";
    for (const Strings& named : {Strings{}, files}) {
        RunWell({"scan", "--rescan"});
        ASSERT_EQ(ListedPaths({"--banned"}), files);
        replace("good/vst2_effect", better);
        replace("bad/aborts", worse);
        Strings arguments{"scan"};
        arguments.insert(arguments.end(), named.begin(), named.end());
        const auto said = Run(arguments);
        EXPECT_EQ(said.exitStatus, 0) << said.error;
        EXPECT_THAT(said.output, AllOf(HasSubstr(passed), HasSubstr(failed), HasSubstr("New: 1 plug-in\n"),
                                       Not(HasSubstr(same.string()))));
        EXPECT_EQ(said.error.find("banned, and therefore not scanned") != std::string::npos, !named.empty())
            << "only who names it is told that it was left out";

        replace("bad/crash_in_entry", worse);
        const ScanSummary summary = Scan(named);
        EXPECT_EQ(summary.triedAgain, Strings{worse.string()});
        EXPECT_EQ(summary.banned, Strings{worse.string()});
        EXPECT_EQ(ListedPaths({"--banned"}), (Strings{worse.string(), same.string()}));
        replace("bad/crash_in_entry", better);
    }
}

} // namespace
