#include "scan/launch/ScannerPlace.h"

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zettesting/HostFixture.h>

#include "scan/launch/ScannerProcess.h"

namespace zetaudiopluginhostui {
namespace {

namespace commondirs = zetcore::filesupport::commondirs;
using zettesting::ToWide;

class ScannerPlace : public zettesting::HostFixture
{
  protected:
    ~ScannerPlace() override
    {
        SetScannerFolder({});
        commondirs::SetExecutableDir({});
    }
    static std::wstring ProgramIn(const std::filesystem::path& place)
    {
        return ToWide(place / std::filesystem::path(ScannerFileName()));
    }
};

TEST_F(ScannerPlace, IsBesideTheProgramAndTheLibrary)
{
    const std::filesystem::path own = zetcore::filesupport::ToNativePath(OwnLibraryFolder());
    EXPECT_TRUE(std::filesystem::is_directory(own));
    EXPECT_EQ(FindScannerProgram().FullPath(), ProgramIn(own)) << "in this program both are the same";
}

TEST_F(ScannerPlace, AFolderThatTheHostNamesIsTheOnlyOne)
{
    commondirs::SetExecutableDir(ToWide(folder / "programs"));
    EXPECT_EQ(FindScannerProgram().FullPath(), ProgramIn(folder / "programs"));
    SetScannerFolder(ToWide(folder / "scanner"));
    EXPECT_EQ(FindScannerProgram().FullPath(), ProgramIn(folder / "scanner"));
    EXPECT_EQ(commondirs::ExecutableDir().FullPath(), ToWide(folder / "programs")) << "nothing else moves";
    SetScannerFolder({});
    EXPECT_EQ(FindScannerProgram().FullPath(), ProgramIn(folder / "programs"));
}

TEST_F(ScannerPlace, ARelativeFolderIsAbsoluteAtOnce)
{
    SetScannerFolder(L"programs");
    EXPECT_EQ(FindScannerProgram().FullPath(), ProgramIn(std::filesystem::current_path() / "programs"));
}

} // namespace
} // namespace zetaudiopluginhostui
