#include "skins/SkinStyle.h"

#include <utility>

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QPointer>
#include <QStyle>
#include <QToolTip>
#include <QWidget>

#include "pixmill/QtConversions.h"
#include "skins/DesktopScheme.h"
#include "skins/SkinProxyStyle.h"

namespace zetui::skins {

namespace {

using pixmill::ToQt;

bool IsDarkPalette(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QFont SkinFont(const QFont& system)
{
    QFont font = system;
    font.setPixelSize(static_cast<int>(ui::GetFontSize(0)));
    return font;
}

/// Keeps the chosen skin on the application and follows the desktop's colours. It is the application's child,
/// so that it goes with it.
class ApplicationSkin : public QObject
{
  public:
    explicit ApplicationSkin(QApplication& dressed)
        : QObject(&dressed), application(dressed), ownStyle(QApplication::style()->name()),
          ownPalette(QApplication::palette()), ownFont(QApplication::font()),
          desktop([this] { AskDesktop(); })
    {
        dark = desktop.AsksForDark().value_or(IsDarkPalette(ownPalette));
        application.installEventFilter(this);
    }

    void Apply()
    {
        if (skin != &CurrentSkin()) {
            skin = &CurrentSkin();
            QApplication::setStyle(MakeStyle(*skin).release());
        }
        const SkinColors& colors = CurrentColors();
        const QPalette palette = MakePalette(colors);
        QApplication::setPalette(palette);
        QApplication::setFont(SkinFont(ownFont));
        QToolTip::setPalette(palette);
        QToolTip::setFont(SkinFont(ownFont));
    }

    void Remove()
    {
        application.removeEventFilter(this);
        QApplication::setStyle(ownStyle);
        QApplication::setPalette(ownPalette);
        QApplication::setFont(ownFont);
        QToolTip::setPalette(ownPalette);
        QToolTip::setFont(ownFont);
    }

    bool DesktopDark() const { return dark; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ThemeChange && !std::exchange(asking, true))
            // The desktop is asked later, because asking changes the palette, which must not happen while the
            // change is being told.
            QMetaObject::invokeMethod(
                this, [this] { AskDesktop(); }, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

  private:
    void AskDesktop()
    {
        // Without ours, the application's palette is the desktop's.
        QApplication::setPalette(QPalette());
        dark = desktop.AsksForDark().value_or(IsDarkPalette(QApplication::palette()));
        Apply();
        asking = false;
    }

    QApplication& application;
    const QString ownStyle;
    const QPalette ownPalette;
    const QFont ownFont;
    const DesktopScheme desktop;
    /// Null before the first time.
    const SkinRecord* skin = nullptr;
    bool dark = false;
    bool asking = false;
};

/// Null while the application has a look of its own.
QPointer<ApplicationSkin>& OfApplication()
{
    static QPointer<ApplicationSkin> skin;
    return skin;
}

/// Puts a skin on a window and on everything that comes into it.
class WindowSkin : public QObject
{
  public:
    explicit WindowSkin(QWidget& window) : QObject(&window), style(MakeStyle(CurrentSkin()).release())
    {
        style->setParent(this);
        Dress(window);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ChildPolished)
            if (auto* const child = qobject_cast<QWidget*>(static_cast<QChildEvent*>(event)->child()))
                Dress(*child);
        return QObject::eventFilter(watched, event);
    }

  private:
    void Dress(QWidget& widget)
    {
        if (widget.style() == style)
            return;
        widget.setStyle(style);
        // Menus and tooltips are windows, and inherit neither colours nor font.
        if (widget.isWindow()) {
            widget.setPalette(MakePalette(CurrentColors()));
            widget.setFont(SkinFont(widget.font()));
        }
        widget.installEventFilter(this);
        for (QObject* const child : widget.children())
            if (auto* const childWidget = qobject_cast<QWidget*>(child))
                Dress(*childWidget);
    }

    QStyle* style;
};

} // namespace

QPalette MakePalette(const SkinColors& colors)
{
    const std::pair<QPalette::ColorRole, pixmill::Color> roles[] = {
        {QPalette::Window, colors.window},
        {QPalette::WindowText, colors.text},
        {QPalette::Base, colors.base},
        {QPalette::AlternateBase, colors.alternateBase},
        {QPalette::ToolTipBase, colors.tooltip},
        {QPalette::ToolTipText, colors.tooltipText},
        {QPalette::PlaceholderText, colors.placeholder},
        {QPalette::Text, colors.text},
        {QPalette::Button, colors.button},
        {QPalette::ButtonText, colors.text},
        {QPalette::BrightText, colors.negative},
        {QPalette::Light, colors.base},
        {QPalette::Midlight, colors.gridLine},
        {QPalette::Mid, colors.outline},
        {QPalette::Dark, colors.fieldOutline},
        {QPalette::Shadow, colors.fieldOutline},
        {QPalette::Highlight, colors.selection},
        {QPalette::HighlightedText, colors.selectionText},
        {QPalette::Link, colors.link},
        {QPalette::LinkVisited, colors.link},
    };
    QPalette palette;
    for (const auto& [role, color] : roles)
        palette.setColor(QPalette::All, role, ToQt(color));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, ToQt(colors.inactiveSelection));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, ToQt(colors.inactiveSelectionText));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::HighlightedText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, ToQt(colors.disabledText));
    palette.setColor(QPalette::Disabled, QPalette::Base, ToQt(colors.window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, ToQt(colors.hoverRow));
    return palette;
}

std::unique_ptr<QStyle> MakeStyle(const SkinRecord& skin)
{
    return std::make_unique<SkinProxyStyle>(skin);
}

void ApplySkin(QApplication& application)
{
    if (!OfApplication())
        OfApplication() = new ApplicationSkin(application);
    OfApplication()->Apply();
}

void RemoveSkin()
{
    if (!OfApplication())
        return;
    OfApplication()->Remove();
    delete OfApplication().data();
}

void DressWindow(QWidget& window)
{
    if (!OfApplication())
        new WindowSkin(window);
}

void SkinChanged()
{
    if (OfApplication())
        OfApplication()->Apply();
}

bool DesktopIsDark()
{
    if (OfApplication())
        return OfApplication()->DesktopDark();
    return qobject_cast<QApplication*>(QCoreApplication::instance()) &&
           IsDarkPalette(QApplication::palette());
}

} // namespace zetui::skins
