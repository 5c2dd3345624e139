#include <zetcore/filesupport/paths/LongPath.h>

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace zetcore::filesupport {
namespace {

const std::wstring folder(210, L'x');

struct Row
{
    std::string name;
    std::wstring plain;
    std::wstring longForm;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

std::string NameOf(const testing::TestParamInfo<Row>& row)
{
    return row.param.name;
}

class LongPath : public testing::TestWithParam<Row>
{};

TEST_P(LongPath, HasItsLongForm)
{
    EXPECT_EQ(LongForm(GetParam().plain), GetParam().longForm);
}

const Row longOnes[] = {
    {"OnADrive", L"C:\\" + folder, L"\\\\?\\C:\\" + folder},
    {"WithSlashes", L"z:/a/" + folder + L"/b.xml", L"\\\\?\\z:\\a\\" + folder + L"\\b.xml"},
    {"WithDots", L"C:\\a\\.\\b\\..\\" + folder + L"\\\\c\\", L"\\\\?\\C:\\a\\" + folder + L"\\c\\"},
    {"WithDotsAboveTheDrive", L"C:\\..\\..\\" + folder, L"\\\\?\\C:\\" + folder},
    {"OnAServer", L"\\\\server\\share\\..\\" + folder, L"\\\\?\\UNC\\server\\share\\" + folder}};
INSTANTIATE_TEST_SUITE_P(Of, LongPath, testing::ValuesIn(longOnes), NameOf);

Row Unchanged(const std::string& name, const std::wstring& path)
{
    return {name, path, path};
}

INSTANTIATE_TEST_SUITE_P(Unchanged, LongPath,
                         testing::Values(Unchanged("Empty", L""), Unchanged("Short", L"C:\\short"),
                                         Unchanged("RelativeToAFolder", folder),
                                         Unchanged("RelativeOnADrive", L"C:" + folder),
                                         Unchanged("RelativeToTheDrive", L"\\" + folder),
                                         Unchanged("LongAlready", L"\\\\?\\C:\\" + folder),
                                         Unchanged("ADevice", L"\\\\.\\pipe\\" + folder)),
                         NameOf);

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
