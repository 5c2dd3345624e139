#include <zetaudiopluginhost/ReasonSentences.h>

#include <cerrno>
#include <system_error>

#include <dlfcn.h>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhost::reasons {
namespace {

using zetcore::config::Localizer;

class ReasonSentences : public testing::Test
{
  protected:
    ReasonSentences()
    {
        const std::string start = "\"$$$/AudioPluginManager/Reason/";
        table.LoadTableFromText(
            start + "NoScanner\"=\"kein Scanner: @0\"\n" + start + "File/Read\"=\"nicht lesbar: @0 (@1)\"\n" +
                start + "Load/Open\"=\"nicht zu öffnen: @0 (@1)\"\n" + start +
                "Load/Symbol\"=\"@0 fehlt @1\"\n" + start + "Load/Header\"=\"ungültig: @0\"\n" + start +
                "Load/Short\"=\"zu kurz: @0\"\n" + start + "System/NoSuchFile\"=\"nicht da\"\n" + start +
                "System/PermissionDenied\"=\"nicht erlaubt\"\n",
            "test");
    }
    std::string Said(const std::string& english) const { return InLanguage(english, table); }
    std::string LoadError(const std::string& name, const std::string& content) const
    {
        const auto path = folder / name;
        zettesting::WriteAll(path, content);
        EXPECT_EQ(::dlopen(path.c_str(), RTLD_NOW), nullptr);
        return ::dlerror();
    }

    zettesting::TemporaryFolder folder;
    Localizer table;
};

TEST_F(ReasonSentences, AreSaidInTheLanguageOfTheTable)
{
    EXPECT_EQ(Said(InEnglish(noScanner, {"/opt/scan"})), "kein Scanner: /opt/scan");
    const zetcore::filesupport::file_exception error("read", L"/a.so", {EACCES, std::generic_category()});
    EXPECT_EQ(Said(error.what()), "nicht lesbar: /a.so (nicht erlaubt)");
}

TEST_F(ReasonSentences, InEnglishAreTheSameAgain)
{
    const Localizer english;
    for (const std::string& text :
         {InEnglish(scannerExited, {"7", "/opt/scan"}), InEnglish(lastOutput, {"x", "y"}),
          std::string("/a: version `X' not found (required by /b)"), std::string("Permission denied"),
          std::string("some words of a plug-in"), std::string()})
        EXPECT_EQ(InLanguage(text, english), text);
}

TEST_F(ReasonSentences, WhatIsNotKnownStaysAndStandsInsideAKnownSentence)
{
    EXPECT_EQ(Said("it crashed"), "it crashed");
    EXPECT_EQ(Said("Cannot read \"/a\": the moon is full"), "nicht lesbar: /a (the moon is full)");
}

TEST_F(ReasonSentences, TheWordsOfThisSystemsLoaderAreKnown)
{
    EXPECT_EQ(::dlopen("libnot-there.so.9", RTLD_NOW), nullptr);
    EXPECT_EQ(Said(::dlerror()), "nicht zu öffnen: libnot-there.so.9 (nicht da)");
    EXPECT_EQ(Said(LoadError("bad.so", std::string(4096, 'x'))), "ungültig: " + (folder / "bad.so").string());
    EXPECT_EQ(Said(LoadError("short.so", "x")), "zu kurz: " + (folder / "short.so").string());
}

} // namespace
} // namespace zetaudiopluginhost::reasons
