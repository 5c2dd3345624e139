#include "application/QtTexts.h"

#include <memory>
#include <ostream>
#include <string>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using zetcore::config::Localizer;

/// UTF-8.
struct Texts
{
    const char* language;
    const char* undo;
    const char* newFolder;
    const char* discard;

    friend void PrintTo(const Texts& texts, std::ostream* out) { *out << texts.language; }
};

class QtTextsTest : public WindowsFixture
{
  protected:
    ~QtTextsTest() override { Localizer::Get().Reset(); }

    static void Speak(const std::string& language)
    {
        Localizer::Get().LoadTableFromText("\"$$$/zetui/Language\"=\"" + language + "\"", "test");
    }
    static QString UndoInTheMenuOfAField()
    {
        QLineEdit field;
        const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
        return menu->actions().constFirst()->text().section(u'\t', 0, 0);
    }
    static QString NewFolderInTheFileChooser()
    {
        QFileDialog chooser;
        chooser.setOption(QFileDialog::DontUseNativeDialog);
        auto* const button = chooser.findChild<QToolButton*>(QStringLiteral("newFolderButton"));
        return button ? button->toolTip() : QString();
    }
    static QString StandardButton()
    {
        QDialogButtonBox box(QDialogButtonBox::Discard);
        return box.button(QDialogButtonBox::Discard)->text();
    }
};

class QtTextsIn : public QtTextsTest, public testing::WithParamInterface<Texts>
{};

TEST_P(QtTextsIn, TheLanguageOfTheTable)
{
    Speak(GetParam().language);
    EXPECT_EQ(UndoInTheMenuOfAField().toStdString(), GetParam().undo);
    EXPECT_EQ(NewFolderInTheFileChooser().toStdString(), GetParam().newFolder);
    EXPECT_EQ(StandardButton().remove(u'&').toStdString(), GetParam().discard);
    Localizer::Get().Reset();
    EXPECT_EQ(UndoInTheMenuOfAField(), QStringLiteral("&Undo")) << "without a table, windows are English";
}

INSTANTIATE_TEST_SUITE_P(Languages, QtTextsIn,
                         testing::Values(Texts{"en", "&Undo", "Create New Folder", "Discard"},
                                         Texts{"de", "&Rückgängig", "Neuen Ordner erstellen", "Verwerfen"},
                                         Texts{"fr", "&Annuler", "Créer un nouveau dossier",
                                               "Ne pas tenir compte"},
                                         Texts{"es", "&Deshacer", "Crear nueva carpeta", "Descartar"},
                                         Texts{"ja", "元に戻す(&U)", "新しいフォルダの作成", "変更を破棄"},
                                         Texts{"zh-Hans", "撤消(&U)", "新建文件夹", "丢弃"}),
                         [](const auto& row) { return std::string(row.param.language).substr(0, 2); });

TEST_F(QtTextsTest, OfALanguageThatQtDoesNotHaveStayEnglish)
{
    Speak("tlh");
    EXPECT_EQ(UndoInTheMenuOfAField(), QStringLiteral("&Undo"));
    Speak("no language at all");
    EXPECT_EQ(UndoInTheMenuOfAField(), QStringLiteral("&Undo"));
}

TEST(QtTextsOfAHost, AreTheHosts)
{
    const zettesting::ScopedEnvironment platform("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    QApplication host(count, arguments);
    ASSERT_TRUE(InitializeWindows());
    Localizer::Get().LoadTableFromText("\"$$$/zetui/Language\"=\"de\"", "test");
    EXPECT_EQ(QLineEdit::tr("&Undo"), QStringLiteral("&Undo"));
    Localizer::Get().Reset();
    TerminateWindows();
}

} // namespace
} // namespace zetui::ui
