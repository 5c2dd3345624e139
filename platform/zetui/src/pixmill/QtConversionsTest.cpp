#include "pixmill/QtConversions.h"

#include <gtest/gtest.h>
#include <zetcore/string/Utf.h>

namespace zetui::pixmill {
namespace {

class RoundTrip : public testing::TestWithParam<std::wstring>
{};

TEST_P(RoundTrip, KeepsEveryUnit)
{
    EXPECT_EQ(ToWide(ToQString(GetParam())), GetParam());
}

INSTANTIATE_TEST_SUITE_P(QtText, RoundTrip,
                         testing::Values(L"", L"plain", L"\u00e4\u20ac", L"\U0001F3B9 keys",
                                         std::wstring(L"a\0b", 3),
                                         // Bytes that are no UTF-8, as file names may have them.
                                         zetcore::string::UTF8to16("x\xff\x80y")));

TEST(QtText, TooltipsAreShownAsTheyAre)
{
    EXPECT_EQ(PlainForTooltip(L"2 < 3 & so"), QStringLiteral("2 < 3 & so"));
    const QString harmless = PlainForTooltip(L"<b>bold</b>");
    EXPECT_TRUE(harmless.contains(QStringLiteral("&lt;b&gt;bold"))) << harmless.toStdString();
}

} // namespace
} // namespace zetui::pixmill
