#include <zetcore/filesupport/paths/LongPath.h>

#include <gtest/gtest.h>

namespace zetcore::filesupport {
namespace {

const std::wstring folder(210, L'x');

struct Path
{
    std::wstring plain;
    std::wstring longForm;
};

class LongPath : public testing::TestWithParam<Path>
{};

TEST_P(LongPath, HasItsLongForm)
{
    EXPECT_EQ(LongForm(GetParam().plain), GetParam().longForm);
}

INSTANTIATE_TEST_SUITE_P(
    Each, LongPath,
    testing::Values(Path{L"", L""}, Path{L"C:\\short", L"C:\\short"},
                    Path{L"C:\\" + folder, L"\\\\?\\C:\\" + folder},
                    Path{L"z:/a/" + folder + L"/b.xml", L"\\\\?\\z:\\a\\" + folder + L"\\b.xml"},
                    Path{L"C:\\a\\.\\b\\..\\" + folder + L"\\\\c\\", L"\\\\?\\C:\\a\\" + folder + L"\\c\\"},
                    Path{L"C:\\..\\..\\" + folder, L"\\\\?\\C:\\" + folder},
                    Path{L"\\\\server\\share\\..\\" + folder, L"\\\\?\\UNC\\server\\share\\" + folder},
                    // Relative to a folder or a drive, or in a long form already.
                    Path{folder, folder}, Path{L"C:" + folder, L"C:" + folder},
                    Path{L"\\" + folder, L"\\" + folder},
                    Path{L"\\\\?\\C:\\" + folder, L"\\\\?\\C:\\" + folder},
                    Path{L"\\\\.\\pipe\\" + folder, L"\\\\.\\pipe\\" + folder}));

TEST(LongPaths, ArePlainAgainAsUsersWriteThem)
{
    EXPECT_EQ(PlainForm(L"\\\\?\\C:\\a\\b"), L"C:\\a\\b");
    EXPECT_EQ(PlainForm(L"\\\\?\\UNC\\server\\share\\a"), L"\\\\server\\share\\a");
    EXPECT_EQ(PlainForm(LongForm(L"C:\\" + folder)), L"C:\\" + folder);
    for (const std::wstring path : {L"", L"C:\\a", L"\\\\server\\share", L"\\\\?\\Volume{0}\\a", L"\\\\?\\"})
        EXPECT_EQ(PlainForm(path), path);
}

} // namespace
} // namespace zetcore::filesupport
