#include <zetcore/debug/DebugDatabase.h>

#include <thread>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zettesting/HostFixture.h>

namespace zetcore::debug {
namespace {

using zettesting::ScopedEnvironment;
using zettesting::WriteAll;

class DebugDatabaseTest : public zettesting::HostFixture
{
  protected:
    DebugDatabase& database = DebugDatabase::Instance();

    void WriteFile(std::string_view text) const { WriteAll(prefs / "DebugDatabase.txt", text); }
};

TEST_F(DebugDatabaseTest, WithoutAnEntryTheDefaultIsGiven)
{
    EXPECT_EQ(database.GetEntry("Key", "true"), "true");
    EXPECT_EQ(database.GetEntry("", ""), "");
}

TEST_F(DebugDatabaseTest, EntriesComeFromTheFile)
{
    WriteFile("\xEF\xBB\xBF"
              "# switches\r\n\r\n First = one \r\nSecond=a = b\nThird=\nFirst=again");
    EXPECT_EQ(database.GetEntry("First", ""), "again");
    EXPECT_EQ(database.GetEntry("Second", ""), "a = b");
    EXPECT_EQ(database.GetEntry("Third", "default"), "");
    EXPECT_EQ(database.GetEntry("first", "default"), "default");
}

TEST_F(DebugDatabaseTest, MalformedLinesAreTracedWithTheirNumberAndSkipped)
{
    SetMasterTraceVolume(1);
    WriteFile("First=1\nnonsense\n=2\nSecond=2\n");
    EXPECT_EQ(database.GetEntry("First", ""), "1");
    EXPECT_EQ(database.GetEntry("Second", ""), "2");
    EXPECT_THAT(*traceLines, ::testing::ElementsAre(::testing::HasSubstr("DebugDatabase.txt, entry 2:"),
                                                    ::testing::HasSubstr("DebugDatabase.txt, entry 3:")));
}

TEST_F(DebugDatabaseTest, AFileThatCannotBeReadIsTracedAndCountsAsEmpty)
{
    SetMasterTraceVolume(1);
    std::filesystem::create_directory(prefs / "DebugDatabase.txt");
    EXPECT_EQ(database.GetEntry("Key", "default"), "default");
    EXPECT_THAT(*traceLines, ::testing::ElementsAre(::testing::HasSubstr("DebugDatabase.txt")));
}

TEST_F(DebugDatabaseTest, TheFileIsReadOnceUntilThePreferencesFolderChanges)
{
    WriteFile("Key=old");
    EXPECT_EQ(database.GetEntry("Key", ""), "old");
    WriteFile("Key=new");
    EXPECT_EQ(database.GetEntry("Key", ""), "old");
    std::filesystem::create_directory(folder / "other");
    WriteAll(folder / "other" / "DebugDatabase.txt", "Key=other");
    filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "other"));
    EXPECT_EQ(database.GetEntry("Key", ""), "other");
    filesupport::Dir::SetPrefDir(zettesting::ToWide(prefs));
    EXPECT_EQ(database.GetEntry("Key", ""), "new");
}

TEST_F(DebugDatabaseTest, TheEnvironmentGoesBeforeTheFileAndOwnEntriesBeforeBoth)
{
    const ScopedEnvironment variable("ZET_DEBUG_DATABASE", "A=environment; B = environment ;;");
    WriteFile("A=file\nB=file\nC=file\n");
    database.SetEntry("A", "own");
    EXPECT_EQ(database.GetEntry("A", ""), "own");
    EXPECT_EQ(database.GetEntry("B", ""), "environment");
    EXPECT_EQ(database.GetEntry("C", ""), "file");
}

TEST_F(DebugDatabaseTest, MistakesInTheEnvironmentAreTraced)
{
    SetMasterTraceVolume(1);
    const ScopedEnvironment variable("ZET_DEBUG_DATABASE", "A=1;nonsense");
    EXPECT_EQ(database.GetEntry("A", ""), "1");
    EXPECT_THAT(*traceLines, ::testing::ElementsAre(::testing::HasSubstr("ZET_DEBUG_DATABASE, entry 2:")));
}

TEST_F(DebugDatabaseTest, ResetForgetsEverything)
{
    WriteFile("B=old");
    database.SetEntry("A", "own");
    EXPECT_EQ(database.GetEntry("B", ""), "old");
    WriteFile("B=new");
    database.Reset();
    EXPECT_EQ(database.GetEntry("A", "default"), "default");
    EXPECT_EQ(database.GetEntry("B", ""), "new");
}

TEST_F(DebugDatabaseTest, ThreadsMayAskAndSetAtTheSameTime)
{
    WriteFile("Key=value");
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                wrong += database.GetEntry("Key", "") == "value" ? 0 : 1;
                database.SetEntry("Other", std::to_string(round));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace zetcore::debug
