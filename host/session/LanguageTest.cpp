#include "session/Language.h"

#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginmanager {
namespace {

using Strings = std::vector<std::string>;
using testing::HasSubstr;
using zetcore::config::Localizer;

TEST(TablesForLanguage, AreTheTagItselfAndWhatItIsAKindOf)
{
    struct Case
    {
        const char* language;
        Strings tables;
    };
    for (const Case& each : {Case{"de", {"de"}},
                             {"de-CH", {"de-CH", "de"}},
                             {"de_CH.UTF-8", {"de-CH", "de"}},
                             {"ca_ES.UTF-8@valencia", {"ca-ES", "ca"}},
                             {"FR-fr", {"fr-FR", "fr"}},
                             {"yue", {"yue"}},
                             {"zh_CN.UTF-8", {"zh-CN", "zh-Hans", "zh"}},
                             {"zh-tw", {"zh-TW", "zh-Hant", "zh"}},
                             {"zh-hans-cn", {"zh-Hans-CN", "zh-Hans", "zh"}},
                             {"es-419", {"es-419", "es"}},
                             {"C", {}},
                             {"C.UTF-8", {}},
                             {"POSIX", {}},
                             {"", {}},
                             {"-", {}},
                             {"de-", {}},
                             {"../de", {}},
                             {"de/x", {}},
                             {"12", {}},
                             {"\xC3\xA4", {}}})
        EXPECT_EQ(TablesForLanguage(each.language), each.tables) << each.language;
}

class LoadingALanguage : public zettesting::HostFixture
{
  protected:
    LoadingALanguage()
    {
        std::filesystem::create_directories(folder / "bin/lang");
        std::filesystem::create_directories(folder / "share/zetaudiopluginhostui/lang");
        zetcore::filesupport::commondirs::SetExecutableDir(zettesting::ToWide(folder / "bin"));
    }
    ~LoadingALanguage() override { Localizer::Get().Reset(); }
    void WriteTable(const std::string& path, const std::string& reload) const
    {
        zettesting::WriteAll(folder / path, "\"$$$/AudioPluginManager/Reload\"=\"" + reload + "\"\n");
    }
    static std::string Reload() { return Localizer::Get().Localize("$$$/AudioPluginManager/Reload=Reload"); }
};

TEST_F(LoadingALanguage, TakesTheTableBesideTheProgram)
{
    WriteTable("bin/lang/de.txt", "Neu laden");
    EXPECT_TRUE(LoadLanguage("de-AT"));
    EXPECT_EQ(Reload(), "Neu laden");
}

TEST_F(LoadingALanguage, TakesTheInstalledTable)
{
    WriteTable("share/zetaudiopluginhostui/lang/zh-Hans.txt",
               "\xE9\x87\x8D\xE6\x96\xB0\xE5\x8A\xA0\xE8\xBD\xBD");
    EXPECT_TRUE(LoadLanguage("zh_CN.UTF-8"));
    EXPECT_EQ(Reload(), "\xE9\x87\x8D\xE6\x96\xB0\xE5\x8A\xA0\xE8\xBD\xBD");
}

TEST_F(LoadingALanguage, PrefersTheExactTable)
{
    WriteTable("bin/lang/de.txt", "Deutsch");
    WriteTable("share/zetaudiopluginhostui/lang/de-CH.txt", "Schweiz");
    EXPECT_TRUE(LoadLanguage("de_CH"));
    EXPECT_EQ(Reload(), "Schweiz");
}

TEST_F(LoadingALanguage, EnglishNeedsNoTable)
{
    WriteTable("bin/lang/de.txt", "Deutsch");
    LoadLanguage("de");
    EXPECT_TRUE(LoadLanguage("en-GB"));
    EXPECT_EQ(Reload(), "Reload");
}

TEST_F(LoadingALanguage, WithoutATableTheDefaultTextsStay)
{
    EXPECT_FALSE(LoadLanguage("tlh"));
    EXPECT_FALSE(LoadLanguage("no language"));
    EXPECT_EQ(Reload(), "Reload");
}

TEST_F(LoadingALanguage, AMalformedTableIsNamedWithItsLine)
{
    zettesting::WriteAll(folder / "bin/lang/de.txt", "# German\n\"unfinished\n");
    try {
        LoadLanguage("de");
        FAIL() << "it was taken";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("de.txt"));
        EXPECT_THAT(error.what(), HasSubstr("2"));
    }
}

} // namespace
} // namespace zetaudiopluginmanager
