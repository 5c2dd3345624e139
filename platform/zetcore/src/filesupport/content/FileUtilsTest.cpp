#include <zetcore/filesupport/content/FileUtils.h>

#include <atomic>
#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <zetcore/filesupport/content/IPlatformByteStream.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/FileLock.h>
#include <zetcore/string/Utf.h>
#include <zettesting/Emulation.h>
#include <zettesting/TemporaryFolder.h>

#include "filesupport/content/FileReplacement.h"
#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;
using zettesting::ReadAll;
using zettesting::ToWide;
using zettesting::WriteAll;

class FileUtilsTest : public ::testing::Test
{
  protected:
    zettesting::TemporaryFolder folder;

    std::wstring Path(const std::filesystem::path& name) const { return ToWide(folder / name); }

    std::set<std::string> Names() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            names.insert(entry.path().filename().string());
        return names;
    }
};

TEST_F(FileUtilsTest, AFileIsCreatedAndReplaced)
{
    const std::string bytes("a\r\n\0\xFF z", 7);
    FileUtils::SimpleWriteStringToFile(Path("a"), bytes);
    EXPECT_EQ(ReadAll(folder / "a"), bytes);
    FileUtils::SimpleWriteStringToFile(Path("a"), "new");
    EXPECT_EQ(ReadAll(folder / "a"), "new");
    FileUtils::ReplaceContent(Path("a"), "", Durability::PowerCut);
    EXPECT_EQ(ReadAll(folder / "a"), "");
    EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileUtilsTest, EveryDurabilityCreatesAndReplacesAndLeavesNothingElse)
{
    for (const Durability durability :
         {Durability::Handover, Durability::ProcessCrash, Durability::PowerCut}) {
        for (const char* bytes : {"first", "second, longer", ""}) {
            FileUtils::ReplaceContent(Path("a"), bytes, durability);
            EXPECT_EQ(ReadAll(folder / "a"), bytes);
            EXPECT_THAT(Names(), ElementsAre("a"));
        }
        File(Path("a")).Delete();
    }
}

TEST_F(FileUtilsTest, LargeContentIsWrittenWhole)
{
    std::string bytes(5'000'000, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 31 >> 3);
    FileUtils::ReplaceContent(Path("large"), bytes, Durability::PowerCut);
    EXPECT_EQ(FileUtils::ReadFile(File(Path("large"))), bytes);
}

TEST_F(FileUtilsTest, AFailedReplacementNamesTheFileAndTheCause)
{
    try {
        FileUtils::SimpleWriteStringToFile(Path("missing/a"), "x");
        FAIL() << "it was written";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Path(), Path("missing/a"));
        EXPECT_EQ(error.Cause(), std::errc::no_such_file_or_directory);
        EXPECT_THAT(error.what(), ::testing::HasSubstr(string::UTF16to8(Path("missing/a"))));
    }
}

TEST_F(FileUtilsTest, AFolderIsNotReplaced)
{
    std::filesystem::create_directory(folder / "sub");
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(Path("sub"), "x"), file_exception);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(L"", "x"), file_exception);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(std::wstring(1, L'\0'), "x"), file_exception);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "sub"));
    EXPECT_THAT(Names(), ElementsAre("sub"));
}

TEST_F(FileUtilsTest, AReaderSeesTheOldOrTheNewContent)
{
    const std::string first(100'000, 'a');
    const std::string second(150'000, 'b');
    FileUtils::SimpleWriteStringToFile(Path("a"), first);
    constexpr int rounds = 200;
    std::atomic<int> written{0};
    std::thread writer([&] {
        while (written < rounds) {
            FileUtils::SimpleWriteStringToFile(Path("a"), written % 2 == 0 ? second : first);
            ++written;
            written.notify_one();
        }
    });
    int torn = 0;
    for (int before = written; before < rounds; before = written) {
        const std::string seen = FileUtils::ReadFile(File(Path("a")));
        torn += seen == first || seen == second ? 0 : 1;
        // The next reading meets the next writing. Some systems cannot replace a file that is open all the
        // time.
        written.wait(before);
    }
    writer.join();
    EXPECT_EQ(torn, 0);
}

TEST_F(FileUtilsTest, WritersAtTheSameTimeLeaveOneWholeFile)
{
    std::vector<std::thread> writers;
    for (char letter = 'a'; letter < 'e'; ++letter)
        writers.emplace_back([&, letter] {
            for (int round = 0; round < 50; ++round)
                FileUtils::SimpleWriteStringToFile(Path("a"), std::string(20'000, letter));
        });
    for (std::thread& writer : writers)
        writer.join();
    const std::string content = ReadAll(folder / "a");
    EXPECT_EQ(content, std::string(20'000, content.front()));
    EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileUtilsTest, TemporaryNamesDiffer)
{
    EXPECT_NE(MakeTemporaryName(), MakeTemporaryName());
}

TEST_F(FileUtilsTest, AppendedBytesComeAfterTheOthers)
{
    FileUtils::AppendToFile(Path("log"), "one\n");
    FileUtils::AppendToFile(Path("log"), "");
    FileUtils::AppendToFile(Path("log"), "two\n");
    EXPECT_EQ(ReadAll(folder / "log"), "one\ntwo\n");
    EXPECT_THROW(FileUtils::AppendToFile(folder.Wide(), "x"), file_exception);
    EXPECT_THROW(FileUtils::AppendToFile(Path("missing/log"), "x"), file_exception);
    EXPECT_THROW(FileUtils::AppendToFile(L"", "x"), file_exception);
}

TEST_F(FileUtilsTest, ReadingRefusesWhatIsMissingAndFolders)
{
    EXPECT_THROW(FileUtils::ReadFile(File(Path("missing"))), file_exception);
    EXPECT_THROW(FileUtils::ReadFile(File()), file_exception);
    try {
        FileUtils::ReadFile(File(folder.Wide()));
        FAIL() << "a folder was read";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Cause(), std::errc::is_a_directory);
    }
}

TEST_F(FileUtilsTest, ReadingRefusesFilesAboveTheLimit)
{
    WriteAll(folder / "a", "12345");
    EXPECT_EQ(FileUtils::ReadFile(File(Path("a")), 5), "12345");
    try {
        FileUtils::ReadFile(File(Path("a")), 4);
        FAIL() << "too much was read";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Cause(), std::errc::file_too_large);
        EXPECT_THAT(error.what(), ::testing::HasSubstr("a\""));
    }
    WriteAll(folder / "empty", "");
    EXPECT_EQ(FileUtils::ReadFile(File(Path("empty")), 0), "");
}

TEST_F(FileUtilsTest, DamagedFilesAreKeptUnderNamesThatAreFree)
{
    WriteAll(folder / "a.xml", "first");
    EXPECT_EQ(FileUtils::KeepAside(File(Path("a.xml"))), Path("a.xml.damaged"));
    WriteAll(folder / "a.xml", "second");
    EXPECT_EQ(FileUtils::KeepAside(File(Path("a.xml"))), Path("a.xml.damaged2"));
    WriteAll(folder / "a.xml", "third");
    EXPECT_EQ(FileUtils::KeepAside(File(Path("a.xml"))), Path("a.xml.damaged3"));
    EXPECT_THAT(Names(), UnorderedElementsAre("a.xml.damaged", "a.xml.damaged2", "a.xml.damaged3"));
    EXPECT_EQ(ReadAll(folder / "a.xml.damaged"), "first");
    EXPECT_EQ(ReadAll(folder / "a.xml.damaged3"), "third");
}

TEST_F(FileUtilsTest, KeepingAsideWhatIsMissingFails)
{
    try {
        FileUtils::KeepAside(File(Path("missing")));
        FAIL() << "nothing was kept aside";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Cause(), std::errc::no_such_file_or_directory);
    }
    EXPECT_THROW(FileUtils::KeepAside(File()), file_exception);
}

TEST_F(FileUtilsTest, AStreamReadsBlockByBlockUntilTheEnd)
{
    WriteAll(folder / "a", "a\r\nb");
    const auto stream = IPlatformByteStream::OpenForReading(File(Path("a")));
    EXPECT_EQ(stream->Length(), 4u);
    char block[3] = {};
    EXPECT_EQ(stream->ReadBlock(block, 3), 3u);
    EXPECT_EQ(std::string(block, 3), "a\r\n");
    EXPECT_EQ(stream->ReadBlock(block, 3), 1u);
    EXPECT_EQ(block[0], 'b');
    EXPECT_EQ(stream->ReadBlock(block, 3), 0u);
}

TEST_F(FileUtilsTest, AnOpenStreamDoesNotKeepTheFileFromBeingReplacedOrDeleted)
{
    WriteAll(folder / "a", "old");
    const auto stream = IPlatformByteStream::OpenForReading(File(Path("a")));
    if (zettesting::IsWine()) {
        // Wine 8 can neither rename nor delete with POSIX semantics. It must not lose anything.
        EXPECT_THROW(FileUtils::SimpleWriteStringToFile(Path("a"), "newer"), file_exception);
        EXPECT_EQ(ReadAll(folder / "a"), "old");
        EXPECT_THAT(Names(), ElementsAre("a"));
        return;
    }
    FileUtils::SimpleWriteStringToFile(Path("a"), "newer");
    char block[8] = {};
    EXPECT_EQ(stream->ReadBlock(block, sizeof block), 3u);
    File(Path("a")).Delete();
    EXPECT_FALSE(File(Path("a")).Exists());
    EXPECT_THROW(IPlatformByteStream::OpenForReading(File(Path("a"))), file_exception);
}

TEST_F(FileUtilsTest, PathsMayBeLongerThanWindowsUsualLimit)
{
    Dir deep(Path("start"));
    for (int level = 0; level < 5; ++level)
        deep = Dir(deep.FullPath() + pathSeparator + std::wstring(100, L'n'));
    deep.Create();
    EXPECT_TRUE(deep.Exists());
    const File file(deep, L"list.xml");
    EXPECT_GT(file.FullPath().size(), 500u);
    FileUtils::ReplaceContent(file.FullPath(), "new", Durability::PowerCut);
    FileUtils::ReplaceContent(file.FullPath(), "newer", Durability::PowerCut);
    FileUtils::AppendToFile(file.FullPath(), " still");
    EXPECT_EQ(FileUtils::ReadFile(file), "newer still");
    EXPECT_TRUE(FileLock(file).IsHeld());
    EXPECT_EQ(file.GetParent().FullPath(), deep.FullPath());
    EXPECT_EQ(file.GetTitle(), L"list.xml");
    const File aside(FileUtils::KeepAside(file));
    EXPECT_EQ(aside.FullPath(), file.FullPath() + L".damaged");
    EXPECT_FALSE(file.Exists());
    EXPECT_EQ(aside.Size(), 11u);
    aside.Delete();
    EXPECT_FALSE(aside.Exists());
}

} // namespace
} // namespace zetcore::filesupport
