// Qt's texts where their files cannot be opened.
#include "application/QtTexts.h"

#include <sys/resource.h>

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

/// While it lives, no further file can be opened.
class NoMoreFiles
{
  public:
    NoMoreFiles()
    {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
        rlimit none = before;
        none.rlim_cur = 0;
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &before); }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;

  private:
    rlimit before{};
};

class UnreadableQtTexts : public WindowsFixture
{
  protected:
    ~UnreadableQtTexts() override { zetcore::config::Localizer::Get().Reset(); }

    static void Speak(const std::string& language)
    {
        zetcore::config::Localizer::Get().LoadTableFromText("\"$$$/zetui/Language\"=\"" + language + "\"",
                                                            "test");
    }
    static QString Undo() { return QCoreApplication::translate("QLineEdit", "&Undo"); }
};

// Qt words the error of a file that it cannot open in the user's language. It asks for that text while the
// file is still being loaded.
TEST_F(UnreadableQtTexts, AreEnglishAndHoldNobodyUp)
{
    Speak("de");
    {
        const NoMoreFiles limit;
        EXPECT_EQ(Undo(), QStringLiteral("&Undo"));
    }
    Speak("fr");
    EXPECT_EQ(Undo(), QStringLiteral("&Annuler"));
    {
        const NoMoreFiles limit;
        Speak("de");
        EXPECT_EQ(Undo(), QStringLiteral("&Undo")) << "not those of the language before";
    }
}

} // namespace
} // namespace zetui::ui
