#include "supervisor/lookahead/CulpritMemory.h"

#include <chrono>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/process/OwnProcess.h>
#include <zetscanprotocol/ScanRelay.h>
#include <zettesting/HostFixture.h>

#include "supervisor/process/HostProcess.h"
#include "supervisor/process/ProcessIdentity.h"

namespace zetaudiofilterscan {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BanReason;

std::int64_t Now()
{
    using namespace std::chrono;
    return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

class CulpritMemoryTest : public zettesting::HostFixture
{
  protected:
    CulpritMemoryTest() { zetcore::debug::SetMasterTraceVolume(1); }

    CulpritMemory NewScanner() const { return {host, settings, host}; }
    /// The sign of another is that of a process that has ended.
    CulpritMemory EndedScanner() const
    {
        return {host, settings, ProcessIdentity{host->number, host->start - 1}};
    }

    BanReason Culprit(const std::string& name, const std::string& reason) const
    {
        const std::filesystem::path file = folder / name;
        zettesting::WriteAll(file, name);
        BanReason culprit{PluginLocator(TechnologyType::VST, zettesting::ToWide(file)), {}};
        culprit.info.reason = reason;
        culprit.info.stamp = zetaudiofilterhost::GetModuleFileStamp(culprit.locator);
        return culprit;
    }

    static std::filesystem::path RuntimeFolder()
    {
        return zetcore::filesupport::ToNativePath(zetcore::filesupport::commondirs::RuntimeDir().FullPath());
    }

    static std::vector<std::filesystem::path> FilesInMemory()
    {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(RuntimeFolder())) {
            if (entry.path().filename().string().starts_with("zetaudiofilterscan-culprits-"))
                files.push_back(entry.path());
        }
        return files;
    }

    /// The file that a scanner of this host has left, to be replaced.
    std::filesystem::path LeftFile() const
    {
        NewScanner().Leave({Culprit("left", "was here")});
        const auto files = FilesInMemory();
        EXPECT_THAT(files, SizeIs(1));
        return files.front();
    }

    static std::filesystem::path FileOf(const ProcessIdentity& process)
    {
        return RuntimeFolder() / ("zetaudiofilterscan-culprits-" + std::to_string(process.number) + "-" +
                                  std::to_string(process.start) + "-7");
    }

    // On Windows the runtime folder is the temporary one.
    const zettesting::ScopedTemporaryFolder temporary{folder / "runtime"};
    /// This process stands for the host, because on Windows a test may have no parent.
    const std::optional<ProcessIdentity> host = IdentifyProcess(zetcore::process::OwnProcessNumber());
    const std::wstring settings = zettesting::ToWide(prefs / "plugins.xml");
};

TEST_F(CulpritMemoryTest, TellsAScannerThatWasKilledFromOneThatEndedByItself)
{
    EXPECT_FALSE(NewScanner().WasPredecessorKilled()) << "there was none";
    EndedScanner().NoteAtWork();
    const CulpritMemory next = NewScanner();
    EXPECT_TRUE(next.WasPredecessorKilled());
    EXPECT_TRUE(next.WasPredecessorKilled()) << "it remembers that";
    EXPECT_FALSE(NewScanner().WasPredecessorKilled()) << "it was that one's predecessor";
    EndedScanner().NoteAtWork();
    EndedScanner().Forget();
    EXPECT_FALSE(NewScanner().WasPredecessorKilled());
}

TEST_F(CulpritMemoryTest, AScannerThatLeavesItsCulpritsTakesItsSignAway)
{
    const CulpritMemory memory = NewScanner();
    memory.NoteAtWork();
    memory.Leave({Culprit("a.so", "crashed")});
    EXPECT_THAT(FilesInMemory(), SizeIs(1));
    memory.NoteAtWork();
    memory.Leave({});
    EXPECT_THAT(FilesInMemory(), IsEmpty());
}

TEST_F(CulpritMemoryTest, AScannerThatStillRunsWasNotKilledAndKeepsItsSign)
{
    const CulpritMemory first = NewScanner();
    first.NoteAtWork();
    const CulpritMemory second(host, settings, ProcessIdentity{host->number, host->start + 1});
    EXPECT_FALSE(second.WasPredecessorKilled());
    EXPECT_THAT(FilesInMemory(), SizeIs(1));
    second.NoteAtWork();
    EXPECT_THAT(FilesInMemory(), SizeIs(2));
    first.Forget();
    EXPECT_THAT(FilesInMemory(), SizeIs(1)) << "the other one is at work";
    second.Forget();
    EXPECT_THAT(FilesInMemory(), IsEmpty());
}

TEST_F(CulpritMemoryTest, AHostThatHasEndedItsScannerForgetsAll)
{
    EndedScanner().NoteAtWork();
    NewScanner().Leave({Culprit("a.so", "crashed")});
    zetscanprotocol::DeleteRelayOf(host->number);
    EXPECT_THAT(FilesInMemory(), IsEmpty());
}

TEST_F(CulpritMemoryTest, SaysWhetherSomethingWasLeftForThisHost)
{
    EXPECT_FALSE(CulpritMemory::IsThereFor(host));
    NewScanner().NoteAtWork();
    EXPECT_FALSE(CulpritMemory::IsThereFor(host)) << "a scanner at work has left nothing";
    NewScanner().Leave({Culprit("a.so", "crashed")});
    EXPECT_TRUE(CulpritMemory::IsThereFor(host));
    EXPECT_FALSE(CulpritMemory::IsThereFor(std::nullopt));
    EXPECT_FALSE(CulpritMemory::IsThereFor(ProcessIdentity{host->number, host->start + 1}));
    NewScanner().Forget();
    EXPECT_FALSE(CulpritMemory::IsThereFor(host));
}

TEST_F(CulpritMemoryTest, AScannerThatWasKilledLongAgoBelongedToAnotherScan)
{
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::seconds(2);
    EndedScanner().NoteAtWork();
    ASSERT_THAT(FilesInMemory(), SizeIs(1));
    std::filesystem::last_write_time(FilesInMemory().front(), longAgo);
    EXPECT_FALSE(NewScanner().WasPredecessorKilled());
    EXPECT_THAT(FilesInMemory(), IsEmpty());
    const CulpritMemory ended = EndedScanner();
    ended.NoteAtWork();
    ASSERT_THAT(FilesInMemory(), SizeIs(1));
    std::filesystem::last_write_time(FilesInMemory().front(), longAgo);
    ended.NoteAtWork();
    EXPECT_TRUE(NewScanner().WasPredecessorKilled()) << "it was at work still";
}

TEST_F(CulpritMemoryTest, TheNextScannerTakesWhatTheLastOneLeft)
{
    BanReason unloadable = Culprit("b.so", "libmissing.so: not <found> & \"gone\"\nsecond line");
    unloadable.info.couldNotLoad = true;
    const BanReason crashed = Culprit("a.so", "crashed");
    NewScanner().Leave({crashed, unloadable});
    EXPECT_THAT(NewScanner().Take(), ElementsAre(crashed, unloadable));
    EXPECT_THAT(FilesInMemory(), IsEmpty());
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
    EXPECT_THAT(*traceLines, IsEmpty());
}

TEST_F(CulpritMemoryTest, WhatIsLeftLastCounts)
{
    const BanReason first = Culprit("a.so", "first"), second = Culprit("b.so", "second");
    const CulpritMemory memory = NewScanner();
    memory.Leave({first, second});
    memory.Leave({second});
    EXPECT_THAT(NewScanner().Take(), ElementsAre(second));
    memory.Leave({first});
    memory.Leave({});
    EXPECT_THAT(FilesInMemory(), IsEmpty());
}

TEST_F(CulpritMemoryTest, NothingIsLeftOfAScanThatIsOver)
{
    const CulpritMemory memory = NewScanner();
    memory.Leave({Culprit("a.so", "crashed")});
    memory.Forget();
    EXPECT_THAT(FilesInMemory(), IsEmpty());
    memory.Forget();
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
}

TEST_F(CulpritMemoryTest, AScanWithOtherSettingsIsAnotherScan)
{
    const BanReason culprit = Culprit("a.so", "crashed");
    NewScanner().Leave({culprit});
    EXPECT_THAT(CulpritMemory(host, zettesting::ToWide(folder / "other.xml"), host).Take(), IsEmpty());
    EXPECT_THAT(NewScanner().Take(), ElementsAre(culprit));
}

TEST_F(CulpritMemoryTest, AChangedFileIsToBeTriedAgain)
{
    const BanReason same = Culprit("same.so", "crashed"), changed = Culprit("changed.so", "crashed"),
                    gone = Culprit("gone.so", "crashed");
    BanReason unseen = Culprit("unseen.so", "crashed");
    unseen.info.stamp = {};
    NewScanner().Leave({changed, same, gone, unseen});
    zettesting::WriteAll(folder / "changed.so", "mended in the meantime");
    std::filesystem::remove(folder / "gone.so");
    std::filesystem::remove(folder / "unseen.so");
    EXPECT_THAT(NewScanner().Take(), ElementsAre(same));
}

TEST_F(CulpritMemoryTest, WhatIsOldOrOfTheFutureIsAnotherScans)
{
    const std::filesystem::path file = LeftFile();
    BanReason fresh = Culprit("fresh.so", "crashed");
    fresh.info.time = Now() - 30;
    BanReason old = Culprit("old.so", "crashed");
    old.info.time = Now() - 60 * CulpritMemory::longestPause.count() - 60;
    BanReason future = Culprit("future.so", "crashed");
    future.info.time = Now() + 3600;
    zettesting::WriteAll(file, zetaudiopluginhost::ToBanReasonsText({old, fresh, future}));
    const auto taken = NewScanner().Take();
    ASSERT_THAT(taken, SizeIs(1));
    EXPECT_EQ(taken.front().locator, fresh.locator);
    EXPECT_EQ(taken.front().info.time, 0);
}

TEST_F(CulpritMemoryTest, WhatIsNoMemoryBlamesNobodyAndIsSaid)
{
    std::string deep, deepEnd;
    for (int level = 0; level < 5000; ++level) {
        deep += "<a>";
        deepEnd += "</a>";
    }
    for (const std::string& text :
         {std::string(), std::string("<"), std::string("nonsense"), std::string(100'000, '\0'),
          std::string("<bannedplugins><plugin locator=\"VST|/a.so|\"/></bannedplugins>"),
          "<banreasons>" + deep + deepEnd + "</banreasons>",
          std::string("<banreasons><plugin locator=\"VST|/a.so|\" reason=\"cut of")}) {
        zettesting::WriteAll(LeftFile(), text);
        traceLines->clear();
        EXPECT_THAT(NewScanner().Take(), IsEmpty()) << text.substr(0, 100);
        EXPECT_THAT(*traceLines, ElementsAre(HasSubstr("line 1"))) << text.substr(0, 100);
        EXPECT_THAT(FilesInMemory(), IsEmpty());
    }
}

TEST_F(CulpritMemoryTest, EntriesThatSayNothingBlameNobody)
{
    const std::string now = std::to_string(Now());
    zettesting::WriteAll(LeftFile(), "<banreasons>text<plugin/><other/><plugin locator=\"\" time=\"" + now +
                                         "\" filesize=\"4\" filetime=\"4\"/><plugin locator=\"VST|" +
                                         (folder / "left").string() + "|\" time=\"" + now +
                                         "\" filesize=\"-1\" filetime=\"x\"/></banreasons>");
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
    EXPECT_THAT(*traceLines, IsEmpty());
}

TEST_F(CulpritMemoryTest, AFileThatIsTooLongIsNotRead)
{
    const std::filesystem::path file = LeftFile();
    std::filesystem::resize_file(file, std::uint64_t{17} << 20);
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
    EXPECT_THAT(*traceLines, ElementsAre(HasSubstr(file.filename().string())));
}

TEST_F(CulpritMemoryTest, AFolderInItsPlaceIsSaidAndStopsNothing)
{
    const std::filesystem::path file = LeftFile();
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "inside");
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
    NewScanner().Leave({Culprit("a.so", "crashed")});
    EXPECT_THAT(*traceLines, testing::Each(HasSubstr(file.filename().string())));
    EXPECT_THAT(*traceLines, testing::Not(IsEmpty()));
    std::filesystem::remove_all(file);
}

TEST_F(CulpritMemoryTest, WhatEndedHostsLeftIsSweptAndWhatOthersNeedStays)
{
    const std::filesystem::path stays = FileOf(*host);
    // Another process had the number before.
    const std::filesystem::path ended = FileOf({host->number, host->start - 1});
    const std::filesystem::path odd = RuntimeFolder() / "zetaudiofilterscan-culprits-7-x-7";
    for (const auto& file : {stays, ended, odd})
        zettesting::WriteAll(file, "left");
    EXPECT_THAT(NewScanner().Take(), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(stays));
    EXPECT_FALSE(std::filesystem::exists(ended));
    EXPECT_TRUE(std::filesystem::exists(odd));
    std::filesystem::remove(stays);
    std::filesystem::remove(odd);
}

} // namespace
} // namespace zetaudiofilterscan
