#include <algorithm>
#include <memory>

#include <gmock/gmock.h>

#include <zettesting/NoDisplay.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;
using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

class ExitStatus : public ManagerFixture
{};

TEST_F(ExitStatus, WrongUsageIsTwoAndChangesNothing)
{
    const auto known = Install("good/vst2_effect", "known");
    RunWell({"scan"});
    const auto before = List();
    const std::string missing = (plugins / "missing.so").string();
    const zettesting::NoDisplay noDisplay;
    for (const Strings& arguments :
         {Strings{}, Strings{"frobnicate"}, Strings{"scan", missing}, Strings{"enable", missing},
          Strings{"disable", known.string(), missing}, Strings{"ban", known.string(), missing},
          Strings{"reload", missing}, Strings{"reload", known.string()},
          Strings{"folders", "remove", missing}, Strings{"list", "--enabled", "--banned"}, Strings{"manage"},
          Strings{"list", "--skin", "v8"}, Strings{"list", "--lang", "no-such"}}) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2) << testing::PrintToString(arguments);
        EXPECT_NE(result.error, "") << testing::PrintToString(arguments);
        EXPECT_EQ(result.output, "") << testing::PrintToString(arguments);
    }
    EXPECT_EQ(List(), before);
    EXPECT_THAT(Run({"manage"}).error, HasSubstr("no display"));
    EXPECT_THAT(Run({"enable", missing}).error, HasSubstr(missing));
}

TEST_F(ExitStatus, ABannedPluginCannotBeEnabledAndTheMessageSaysWhatToDo)
{
    const auto known = Install("good/vst2_effect", "known");
    RunWell({"scan"});
    RunWell({"ban", known.string()});
    const auto result = Run({"enable", known.string()});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.error, HasSubstr("reload"));
    EXPECT_EQ(Run({"ban", known.string()}).exitStatus, 0) << "banning twice is no error";
}

TEST_F(ExitStatus, WhatCannotBeSavedIsOneAndSaysWhere)
{
    const std::string effect = Install("good/vst2_effect", "effect").string();
    prefs = folder / "a file";
    zettesting::WriteAll(prefs, "no folder");
    for (const Strings& arguments :
         {Strings{"list", "--json"}, Strings{"folders", "add", plugins.string()}, Strings{"enable", "--all"},
          Strings{"scan", "--json", "--in-process", effect}, Strings{"scan", "--json", effect}}) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 1) << testing::PrintToString(arguments) << result.error;
        EXPECT_THAT(result.error, HasSubstr(prefs.string())) << testing::PrintToString(arguments);
    }
    EXPECT_EQ(zettesting::ReadAll(prefs), "no folder");
}

TEST_F(ExitStatus, AnErrorThatNothingProvidesForIsFourAndIsSaid)
{
    const auto bin = CopyProgram();
    std::filesystem::create_directory(bin / "lang");
    zettesting::WriteAll(bin / "lang" / "de.txt", "# German\n\"unfinished\n");
    const auto result = Run({"--lang", "de", "list"});
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_THAT(result.error,
                AllOf(testing::StartsWith("zetaudiopluginmanager: unexpected error: "), HasSubstr("de.txt")));
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(Run({"--help"}).output, HasSubstr("\n  4    an unexpected error"));
}

TEST_F(ExitStatus, WrongUsageNamesTheProgramTheWordAndTheChoices)
{
    EXPECT_EQ(Run({"--skin", "pink", "list"}).error,
              "zetaudiopluginmanager: --skin pink: there are classic and v7\n");
    EXPECT_THAT(Run({"list", "--frob"}).error,
                AllOf(testing::StartsWith("zetaudiopluginmanager: there is no option --frob; there are "),
                      HasSubstr("--banned"), HasSubstr("--prefs")));
    EXPECT_THAT(Run({"--lang", "tlh", "list"}).error,
                AllOf(HasSubstr("--lang tlh: there are "), HasSubstr("de, en")));
}

TEST_F(ExitStatus, AFolderInPlaceOfTheRegistryIsOne)
{
    std::filesystem::path registry;
    for (const auto& entry : std::filesystem::directory_iterator(prefs)) {
        if (zettesting::ReadAll(entry.path()).find(plugins.filename().string()) != std::string::npos)
            registry = entry.path();
    }
    ASSERT_NE(registry, "");
    std::filesystem::remove(registry);
    std::filesystem::create_directory(registry);
    const auto result = Run({"list"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.error, HasSubstr(registry.string()));
    EXPECT_TRUE(std::filesystem::is_directory(registry));
}

TEST_F(ExitStatus, DamagedFilesAreOneKeptAsideAndNamed)
{
    const auto effect = Install("good/vst2_effect", "effect");
    RunWell({"scan"});
    RunWell({"ban", effect.string()});
    Strings files;
    for (const auto& entry : std::filesystem::directory_iterator(prefs)) {
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path().string());
    }
    ASSERT_GE(files.size(), 3u) << "the registry, the bans and the unsupported ones";
    int kept = 0;
    for (const std::string damage : {"<plugins><unfinished", "\xFF\xFEno text", "<other/>"}) {
        for (const std::string& file : files)
            zettesting::WriteAll(file, damage);
        const auto result = Run({"list", "--json"});
        EXPECT_EQ(result.exitStatus, 1) << result.error;
        EXPECT_EQ(result.output, "[]\n");
        const std::string ending = ".damaged" + (kept++ == 0 ? std::string() : std::to_string(kept));
        for (const std::string& file : files) {
            EXPECT_THAT(result.error, HasSubstr(file));
            EXPECT_EQ(zettesting::ReadAll(file + ending), damage);
            EXPECT_THAT(result.error,
                        HasSubstr(file.find("Unsupported") == std::string::npos
                                      ? "kept as " + file + ending + "\n"
                                      : "the old one has \".damaged\" behind its name: " + file));
        }
        const auto next = Run({"list"});
        EXPECT_EQ(next.exitStatus, 0) << "it is told once";
        EXPECT_EQ(next.error, "");
    }
}

TEST_F(ExitStatus, EmptyFilesAreDamagedToo)
{
    Install("good/vst2_effect", "effect");
    RunWell({"scan"});
    const std::string registry = (prefs / "AudioPlugins.xml").string();
    const std::string unsupported = (prefs / "UnsupportedAudioPlugins.xml").string();
    const std::string shipped = zettesting::ReadAll(unsupported);
    zettesting::WriteAll(registry, "");
    const auto result = Run({"list"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.error, HasSubstr("; kept as " + registry + ".damaged\n"));
    zettesting::WriteAll(unsupported, "");
    const auto next = Run({"list"});
    EXPECT_EQ(next.exitStatus, 1);
    EXPECT_THAT(next.error, HasSubstr("was empty and starts anew: " + unsupported + "\n"));
    EXPECT_FALSE(std::filesystem::exists(unsupported + ".damaged")) << "nothing was in it";
    EXPECT_EQ(zettesting::ReadAll(unsupported), shipped);
}

TEST_F(ExitStatus, AScannerThatIsNotThereIsThree)
{
    CopyProgram();
    Install("good/vst2_effect", "effect");
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 3) << summary.messages;
    EXPECT_EQ(summary.scanned, 0);
    EXPECT_NE(summary.messages, "");
    EXPECT_EQ(List().size(), 0u);
    EXPECT_EQ(Scan({"--in-process"}).exitStatus, 0) << "in-process scans need no scanner";
    EXPECT_EQ(List().size(), 1u);
}

TEST_F(ExitStatus, CancellingIsOneHundredAndThirtyAndBansNothing)
{
    const auto first = Install("good/vst2_effect", "a_first");
    const auto hanging = Install("bad/loops_forever", "m_hanging");
    Install("good/vst2_synth", "z_last");
    // If it waited for the plug-in, it would take longer than this test waits.
    auto command = Command({"scan", "--json", "--jobs", "1", "--timeout", "4000"});
    command.interruptible = true;
    ChildProcess scan(command);
    ASSERT_TRUE(scan.WaitForError(hanging.string()));
    scan.Interrupt();
    const auto& result = scan.Wait();
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    const ScanSummary summary = ReadScanSummary(result);
    EXPECT_EQ(summary.banned, Strings());
    ExpectNoProcessLeft();
    EXPECT_EQ(ListedPaths(), Strings{first.string()});
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

TEST_F(ExitStatus, AProgramThatIsToldToEndWritesItsJsonInWhole)
{
    Install("good/vst2_effect", "a_first");
    const auto hanging = Install("bad/loops_forever", "m_hanging");
    auto command = Command({"scan", "--json", "--progress", "json", "--jobs", "1"});
    command.interruptible = true;
    ChildProcess scan(command);
    ASSERT_TRUE(scan.WaitForError(hanging.string()));
    scan.Terminate();
    ExpectCancelledAtTheSecond(scan.Wait());
}

TEST_F(ExitStatus, AScanTellsEachFileOnALineWithItsExactPath)
{
    const auto good = Install("good/vst2_effect", "good one \xc3\xa4");
    const auto inJson = [](const std::filesystem::path& path) {
        std::string text;
        for (const char character : path.string())
            text += character == '\\' ? "\\\\" : std::string(1, character);
        return "\"path\":\"" + text + "\"";
    };
    for (const std::string jobs : {"1", "3"}) {
        const auto bad = Install("bad/crash_in_entry", "bad" + jobs);
        const std::string output =
            Run({"scan", "--rescan", "--json", "--progress", "json", "--jobs", jobs}).output;
        EXPECT_THAT(output, HasSubstr("\"status\":\"working\",\"reason\":\"\",\"plugins\":[\"")) << jobs;
        EXPECT_THAT(output, HasSubstr("\"status\":\"banned\",\"reason\":\"")) << jobs;
        EXPECT_THAT(output, HasSubstr(inJson(good))) << jobs;
        EXPECT_THAT(output, HasSubstr(inJson(bad))) << jobs;
        EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 3) << output;
    }
}

TEST_F(ExitStatus, CancellingInProcessKeepsWhatWasFound)
{
    constexpr int waiting = 40;
    Install("good/vst2_effect", "a_first");
    for (int number = 0; number < waiting; ++number)
        Install("bad/waits", "waits" + std::to_string(number));
    environment["ZET_TEST_PLUGIN_WAIT"] = "300";
    auto command = Command({"scan", "--json", "--in-process"});
    command.interruptible = true;
    ChildProcess scan(command);
    ASSERT_TRUE(scan.WaitForError("[1/" + std::to_string(waiting + 1) + "]")) << "the first is done";
    scan.Interrupt();
    const auto& result = scan.Wait();
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    const ScanSummary summary = ReadScanSummary(result);
    EXPECT_GT(summary.scanned, 0);
    EXPECT_LT(summary.scanned, waiting + 1);
    EXPECT_EQ(static_cast<long long>(List().size()), summary.found);
    environment["ZET_TEST_PLUGIN_WAIT"] = "0";
    EXPECT_EQ(Scan().scanned, waiting + 1 - summary.scanned) << "the next scan goes on with the rest";
}

TEST_F(ExitStatus, AScannerWhoseHostIsKilledEnds)
{
    const auto hanging = Install("bad/loops_forever", "hanging");
    ChildProcess scan(Command({"scan"}));
    ASSERT_TRUE(scan.WaitForError(hanging.string()));
    scan.Kill();
    EXPECT_FALSE(scan.Wait().timedOut);
    ExpectNoProcessLeft();
}

TEST_F(ExitStatus, TwoHostsScanAtTheSameTime)
{
    Install("good/vst2_effect", "effect");
    Install("bad/crash_in_entry", "bad");
    std::vector<std::unique_ptr<ChildProcess>> scans;
    for (int number = 0; number < 4; ++number) {
        prefs = folder / ("prefs" + std::to_string(number));
        UseFolders({plugins});
        scans.push_back(std::make_unique<ChildProcess>(Command({"scan", "--json"})));
    }
    for (const auto& scan : scans) {
        const ScanSummary summary = ReadScanSummary(scan->Wait());
        EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
        EXPECT_EQ(summary.found, 1);
        EXPECT_EQ(summary.banned.size(), 1u);
    }
}

TEST_F(ExitStatus, HelpAndVersionAreDone)
{
    const auto help = Run({"--help"});
    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_THAT(help.output, HasSubstr("130"));
    EXPECT_EQ(help.error, "");
    EXPECT_EQ(Run({"--version"}).exitStatus, 0);
}

TEST_F(ExitStatus, JsonIsAllThatGoesToStandardOutput)
{
    Install("good/vst2_effect", "effect");
    Install("bad/crash_in_entry", "bad");
    const auto scan = Run({"scan", "--json"});
    EXPECT_EQ(std::count(scan.output.begin(), scan.output.end(), '\n'), 1);
    EXPECT_EQ(ReadScanSummary(scan).found, 1);
    EXPECT_THAT(scan.error, HasSubstr("bad"));
    const auto list = Run({"list", "--json"});
    EXPECT_EQ(list.error, "");
    EXPECT_EQ(ReadList(list.output).size(), 2u);
}

} // namespace
