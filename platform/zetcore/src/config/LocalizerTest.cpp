#include <zetcore/config/Localizer.h>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/TemporaryFolder.h>

namespace zetcore::config {
namespace {

constexpr const char* reload = "$$$/AudioPluginManager/Reload=Reload";

class LocalizerTest : public ::testing::Test
{
  protected:
    Localizer localizer;
    zettesting::TemporaryFolder folder;
};

TEST_F(LocalizerTest, WithoutATableTheKeyHasTheText)
{
    EXPECT_EQ(localizer.Localize(reload), "Reload");
    EXPECT_EQ(localizer.LocalizeWide("$$$/A/B=Gr\xC3\xBC\xC3\x9F"
                                     "e"),
              L"Grüße");
    EXPECT_EQ(localizer.Localize("$$$/A/B=a=b"), "a=b");
    EXPECT_EQ(localizer.Localize("$$$/A/B="), "");
    EXPECT_EQ(localizer.Localize("$$$/A/B"), "$$$/A/B");
    EXPECT_EQ(localizer.Localize("plain = text"), "plain = text");
    EXPECT_EQ(localizer.Localize(""), "");
}

TEST_F(LocalizerTest, ATableReplacesTheDefaultTexts)
{
    zettesting::WriteAll(folder / "de.txt", "\"$$$/AudioPluginManager/Reload\"=\"Neu laden\"\n");
    localizer.LoadTable(filesupport::File(zettesting::ToWide(folder / "de.txt")));
    EXPECT_EQ(localizer.Localize(reload), "Neu laden");
    EXPECT_EQ(localizer.Localize("$$$/AudioPluginManager/Reload"), "Neu laden");
    EXPECT_EQ(localizer.Localize("$$$/AudioPluginManager/Other=Other"), "Other");
    localizer.LoadTableFromText("", "empty");
    EXPECT_EQ(localizer.Localize(reload), "Reload");
}

TEST_F(LocalizerTest, ResetGoesBackToTheDefaultTexts)
{
    localizer.LoadTableFromText("\"$$$/AudioPluginManager/Reload\"=\"Neu laden\"", "de.txt");
    localizer.Reset();
    EXPECT_EQ(localizer.Localize(reload), "Reload");
}

TEST_F(LocalizerTest, ABadTableLeavesTheOldOne)
{
    localizer.LoadTableFromText("\"$$$/AudioPluginManager/Reload\"=\"Neu laden\"", "de.txt");
    zettesting::WriteAll(folder / "bad.txt", "\"$$$/AudioPluginManager/Reload\"=\"Recharger\"\nnonsense\n");
    try {
        localizer.LoadTable(filesupport::File(zettesting::ToWide(folder / "bad.txt")));
        FAIL() << "the table was taken";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("bad.txt, line 2: "));
    }
    EXPECT_THROW(localizer.LoadTable(filesupport::File(zettesting::ToWide(folder / "missing.txt"))),
                 filesupport::file_exception);
    EXPECT_EQ(localizer.Localize(reload), "Neu laden");
}

TEST_F(LocalizerTest, ArgumentsAreInsertedOnce)
{
    EXPECT_EQ(localizer.Localize("$$$/A/B=@0 has @1", {"@1", "@0"}), "@1 has @0");
    EXPECT_EQ(localizer.LocalizeWide("$$$/A/B=@0!", {std::wstring(L"Höst")}), L"Höst!");
}

TEST_F(LocalizerTest, ThereIsOneForTheProgram)
{
    EXPECT_EQ(&Localizer::Get(), &Localizer::Get());
}

} // namespace
} // namespace zetcore::config
