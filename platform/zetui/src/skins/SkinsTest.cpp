#include <zetui/skins/Skins.h>

#include <set>
#include <stdexcept>
#include <string>

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <zetui/pixmill/Pixmill.h>

#include "pixmill/QtConversions.h"
#include "skins/SkinRecord.h"
#include "skins/SkinStyle.h"
#include "testing/WindowsFixture.h"

namespace zetui::skins {
namespace {

class Skins : public WindowsFixture
{};

TEST_F(Skins, TheHostChoosesSkinAndScheme)
{
    SetSkin(Skin::Classic);
    EXPECT_EQ(GetSkin(), Skin::Classic);
    EXPECT_FALSE(IsRunningV7OrBeyond());
    SetSkin(Skin::V7);
    EXPECT_TRUE(IsRunningV7OrBeyond());
    SetScheme(Scheme::Dark);
    EXPECT_TRUE(IsDark());
    SetScheme(Scheme::Light);
    EXPECT_FALSE(IsDark());
}

TEST_F(Skins, TheTableHasEachSkinOnceAndUnderANameOfItsOwn)
{
    std::set<std::string> names;
    for (const Skin skin : AllSkins()) {
        EXPECT_EQ(RecordOf(skin).skin, skin);
        EXPECT_TRUE(names.insert(NameOf(skin)).second) << NameOf(skin);
    }
    EXPECT_TRUE(names.contains("classic"));
    EXPECT_TRUE(names.contains("v7"));
    EXPECT_THROW(SetSkin(static_cast<Skin>(77)), std::invalid_argument);
}

TEST_F(Skins, ColoursAndFontsFollowTheChoice)
{
    for (const bool dark : {false, true}) {
        SetScheme(dark ? Scheme::Dark : Scheme::Light);
        for (const Skin skin : AllSkins()) {
            SetSkin(skin);
            EXPECT_EQ(utilities::GetDefaultTextColor(), ColorsOf(skin, dark).text);
            EXPECT_EQ(utilities::GetDefaultTextDisabledColor(), ColorsOf(skin, dark).disabledText);
        }
        EXPECT_EQ(ui::GetColor(324), ColorsOf(Skin::Classic, dark).sectionOutline);
        EXPECT_EQ(ui::GetColor(-1), ColorsOf(Skin::Classic, dark).text);
        EXPECT_EQ(design::GetTableColor(ui::GetDefaultThemeProvider(), {}, 2, false, {}),
                  ColorsOf(Skin::V7, dark).tableOutline);
        EXPECT_EQ(design::GetTableColor(nullptr, {}, 77, false, {}), ColorsOf(Skin::V7, dark).text);
    }
    EXPECT_FALSE(ui::GetFontName(0).empty());
    EXPECT_EQ(pixmill::ValidateFontName(ui::GetFontName(0)), ui::GetFontName(0));
    for (const Skin skin : AllSkins()) {
        SetSkin(skin);
        EXPECT_GE(ui::GetFontSize(0), 11);
        EXPECT_GT(ui::GetFontSize(1), ui::GetFontSize(0));
        EXPECT_EQ(ui::GetFontSize(99), ui::GetFontSize(0));
    }
}

TEST_F(Skins, AnApplicationThatIsOursWearsTheSkinAndFollowsTheChoice)
{
    for (const Skin skin : AllSkins())
        for (const Scheme scheme : {Scheme::Dark, Scheme::Light}) {
            SetSkin(skin);
            SetScheme(scheme);
            EXPECT_EQ(QApplication::palette().color(QPalette::Window), pixmill::ToQt(CurrentColors().window));
            EXPECT_EQ(QApplication::font().pixelSize(), static_cast<int>(ui::GetFontSize(0)));
        }
}

TEST_F(Skins, TheDesktopsSchemeIsFollowedAlsoWhenItChanges)
{
    SetScheme(Scheme::FollowDesktop);
    EXPECT_FALSE(IsDark());
    RemoveSkin();
    QPalette night;
    night.setColor(QPalette::Window, Qt::black);
    night.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(night);
    EXPECT_TRUE(IsDark());
    ApplySkin(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    EXPECT_TRUE(IsDark());
    EXPECT_EQ(QApplication::palette().color(QPalette::Window),
              pixmill::ToQt(ColorsOf(Skin::V7, true).window));

    // The desktop of these tests is bright.
    QWidget window;
    QEvent changed(QEvent::ThemeChange);
    QCoreApplication::sendEvent(&window, &changed);
    EXPECT_TRUE(WaitUntil([] { return !IsDark(); }));
    EXPECT_EQ(QApplication::palette().color(QPalette::Window),
              pixmill::ToQt(ColorsOf(Skin::V7, false).window));
}

TEST_F(Skins, AHostsOwnLookStaysAndOnlyOurWindowsAreDressed)
{
    RemoveSkin();
    SetScheme(Scheme::Dark);
    const QPalette hosts = QApplication::palette();
    EXPECT_NE(hosts.color(QPalette::Window), pixmill::ToQt(CurrentColors().window));

    QWidget window;
    QPushButton early(&window);
    DressWindow(window);
    auto* const late = new QWidget(&window);
    auto* const inLate = new QPushButton(late);
    window.show();
    for (const QWidget* const widget :
         {&window, static_cast<QWidget*>(&early), late, static_cast<QWidget*>(inLate)}) {
        EXPECT_EQ(widget->style(), window.style());
        EXPECT_EQ(widget->palette().color(QPalette::Window), pixmill::ToQt(CurrentColors().window));
    }
    EXPECT_NE(window.style(), QApplication::style());
    EXPECT_EQ(QApplication::palette(), hosts);
}

TEST_F(Skins, AMenuOfADressedWindowHasItsColoursFontAndEdge)
{
    RemoveSkin();
    SetScheme(Scheme::Dark);
    for (const Skin skin : AllSkins()) {
        SetSkin(skin);
        QWidget window;
        QWidget inside(&window);
        DressWindow(window);
        window.show();
        QMenu menu(&inside);
        menu.addAction(QStringLiteral("Copy"));
        menu.popup(QPoint());
        EXPECT_EQ(menu.style(), window.style());
        EXPECT_EQ(menu.palette().color(QPalette::Window), pixmill::ToQt(CurrentColors().window));
        EXPECT_EQ(menu.palette().color(QPalette::WindowText), pixmill::ToQt(CurrentColors().text));
        EXPECT_EQ(menu.font(), window.font());
        const QImage picture = menu.grab().toImage();
        const int middle = picture.height() / 2;
        EXPECT_EQ(picture.pixel(picture.width() - 4, middle), pixmill::ToQt(CurrentColors().base).rgb());
        EXPECT_EQ(picture.pixel(0, middle), pixmill::ToQt(CurrentColors().fieldOutline).rgb());
    }
}

TEST_F(Skins, TakingASkinOffGivesTheApplicationItsLookBack)
{
    const QString ours = QApplication::style()->name();
    RemoveSkin();
    RemoveSkin();
    const QPalette palette = QApplication::palette();
    const QFont font = QApplication::font();
    ApplySkin(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    EXPECT_NE(QApplication::font(), font);
    RemoveSkin();
    EXPECT_EQ(QApplication::palette(), palette);
    EXPECT_EQ(QApplication::font(), font);
}

TEST_F(Skins, NothingIsAnimated)
{
    for (const Skin skin : AllSkins()) {
        SetSkin(skin);
        EXPECT_EQ(QApplication::style()->styleHint(QStyle::SH_Widget_Animate), 0);
        EXPECT_EQ(QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration), 0);
    }
    for (const Qt::UIEffect effect : {Qt::UI_AnimateMenu, Qt::UI_FadeMenu, Qt::UI_AnimateCombo,
                                      Qt::UI_AnimateTooltip, Qt::UI_FadeTooltip, Qt::UI_AnimateToolBox})
        EXPECT_FALSE(QApplication::isEffectEnabled(effect)) << effect;
}

TEST_F(Skins, V7ControlsAre24PixelsHigh)
{
    EXPECT_EQ(QPushButton(QStringLiteral("Scan")).sizeHint().height(), 24);
    EXPECT_EQ(QLineEdit().sizeHint().height(), 24);
}

} // namespace
} // namespace zetui::skins
