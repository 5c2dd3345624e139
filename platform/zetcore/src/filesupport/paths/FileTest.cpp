#include <zetcore/filesupport/paths/File.h>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/ScopedFaults.h>
#include <zettesting/TemporaryFolder.h>

namespace zetcore::filesupport {
namespace {

using zettesting::ToWide;

class FileTest : public ::testing::Test
{
  protected:
    zettesting::TemporaryFolder folder;

    File Named(const std::filesystem::path& name) const { return File(ToWide(folder / name)); }
};

TEST_F(FileTest, ExistsAsLongAsItIsThere)
{
    const File file = Named("plug-in.dll");
    EXPECT_FALSE(file.Exists());
    zettesting::WriteAll(folder / "plug-in.dll", "x");
    EXPECT_TRUE(file.Exists());
    file.Delete();
    EXPECT_FALSE(file.Exists());
}

TEST_F(FileTest, ADeletionCanBeMadeToFail)
{
    zettesting::WriteAll(folder / "kept", "x");
    {
        const zettesting::ScopedFaults faults("delete.kept:1:denied");
        EXPECT_THROW(Named("kept").Delete(), file_exception);
        EXPECT_NO_THROW(Named("other").Delete());
    }
    EXPECT_TRUE(Named("kept").Exists());
    EXPECT_NO_THROW(Named("kept").Delete());
    EXPECT_FALSE(Named("kept").Exists());
}

TEST_F(FileTest, DeletingWhatIsNotThereIsNoError)
{
    EXPECT_NO_THROW(Named("missing").Delete());
    EXPECT_NO_THROW(Named("missing/too").Delete());
}

TEST_F(FileTest, DeletingAFolderFailsAndNamesIt)
{
    std::filesystem::create_directory(folder / "sub");
    try {
        Named("sub").Delete();
        FAIL() << "the folder was deleted";
    } catch (const file_exception& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("sub"));
        EXPECT_EQ(error.Path(), ToWide(folder / "sub"));
        EXPECT_TRUE(error.Cause());
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "sub"));
}

TEST_F(FileTest, IsJoinedOfFolderAndName)
{
    const File file(Dir(folder.Wide()), L"a.txt");
    EXPECT_EQ(file.FullPath(), ToWide(folder / "a.txt"));
    EXPECT_EQ(File(Dir(folder.Wide() + ToWide("/")), L"a.txt").FullPath(), ToWide(folder / "a.txt"));
    EXPECT_EQ(File(Dir(), L"a.txt").FullPath(), L"a.txt");
}

TEST_F(FileTest, KnowsItsTitleAndItsFolder)
{
    const File file = Named("a.txt");
    EXPECT_EQ(file.GetTitle(), L"a.txt");
    EXPECT_EQ(file.GetParent().FullPath(), folder.Wide());
    EXPECT_EQ(file.FullPathUTF8(), (folder / "a.txt").string());
    EXPECT_EQ(File(ToWide(folder / "bundle.vst3") + L"/").GetTitle(), L"bundle.vst3");
    EXPECT_EQ(File(L"a.txt").GetParent().FullPath(), L"");
    EXPECT_EQ(File().GetTitle(), L"");
}

TEST_F(FileTest, TellsSizeAndTime)
{
    zettesting::WriteAll(folder / "a", "12345");
    const File file = Named("a");
    EXPECT_EQ(file.Size(), 5u);
    // Some systems' libraries set whole seconds only.
    const auto time =
        std::chrono::floor<std::chrono::seconds>(std::filesystem::last_write_time(folder / "a"));
    std::filesystem::last_write_time(folder / "a", time);
    const std::int64_t before = file.ModificationTime();
    std::filesystem::last_write_time(folder / "a", time + std::chrono::seconds(10));
    EXPECT_EQ(file.ModificationTime() - before, 10'000'000'000);
}

TEST_F(FileTest, SizeAndTimeOfNothingFailAndNameIt)
{
    EXPECT_THROW(Named("missing").Size(), file_exception);
    try {
        Named("missing").ModificationTime();
        FAIL() << "a missing file has a time";
    } catch (const file_exception& error) {
        EXPECT_EQ(error.Cause(), std::errc::no_such_file_or_directory);
        EXPECT_THAT(error.what(), ::testing::HasSubstr("missing"));
    }
}

TEST_F(FileTest, APathThatIsNoneIsRefused)
{
    zettesting::WriteAll(folder / "a", "x");
    // A zero would cut the path off, and the path would name another file.
    const File cut(ToWide(folder / "a") + std::wstring(1, L'\0') + L"b");
    EXPECT_FALSE(cut.Exists());
    EXPECT_THROW(cut.Delete(), file_exception);
    EXPECT_THROW(cut.Size(), file_exception);
    EXPECT_TRUE(std::filesystem::exists(folder / "a"));
    EXPECT_FALSE(File().Exists());
    EXPECT_THROW(File().Delete(), file_exception);
    EXPECT_THROW(File().Size(), file_exception);
}

TEST(FileException, NamesTheOperationTheFileAndTheCause)
{
    const file_exception error("write", L"/prefs/plug\nins.xml",
                               std::make_error_code(std::errc::permission_denied));
    EXPECT_THAT(error.what(), ::testing::HasSubstr("write \"/prefs/plug ins.xml\": "));
    EXPECT_THAT(error.what(),
                ::testing::HasSubstr(std::make_error_code(std::errc::permission_denied).message()));
    EXPECT_EQ(error.Path(), L"/prefs/plug\nins.xml");
    EXPECT_EQ(error.Cause(), std::errc::permission_denied);
}

} // namespace
} // namespace zetcore::filesupport
