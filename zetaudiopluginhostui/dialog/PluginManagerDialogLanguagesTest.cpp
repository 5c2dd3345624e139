// These tests open the manager's windows in every language.
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/TemporaryFolder.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/dialogs/messagebox.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetcore::config::Localizer;
using zetui::skins::Skin;
using Given = std::tuple<std::string, Skin>;

class DialogInLanguage : public DialogFixture, public testing::WithParamInterface<Given>
{
  protected:
    DialogInLanguage() : DialogFixture(std::get<1>(GetParam()))
    {
        const std::filesystem::path tables(ZET_STRING_TABLES);
        const std::string language = std::get<0>(GetParam());
        Localizer::Get().LoadTableFromText(zettesting::ReadAll(tables / (language + ".txt")), language);
    }
    ~DialogInLanguage() override { Localizer::Get().Reset(); }

    /// The size of a text with a frame of two pixels around it.
    static void ExpectWhole(const QPushButton& button)
    {
        const QSize text = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
        EXPECT_LE(text.width() + 8, button.width()) << button.text().toStdString();
        EXPECT_LE(text.height(), button.height()) << button.text().toStdString();
    }
    static void ExpectWhole(const QLabel& label)
    {
        const int height = label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
        EXPECT_LE(height, label.height()) << label.text().toStdString();
        const int width =
            label.wordWrap()
                ? label.minimumSizeHint().width()
                : label.fontMetrics().size(label.buddy() ? Qt::TextShowMnemonic : 0, label.text()).width();
        EXPECT_LE(width, label.width()) << label.text().toStdString();
    }
    static void ExpectWholeTexts(const QWidget& window)
    {
        for (const QPushButton* const button : window.findChildren<QPushButton*>()) {
            if (button->isVisible() && !button->text().isEmpty())
                ExpectWhole(*button);
        }
        for (const QCheckBox* const box : window.findChildren<QCheckBox*>()) {
            if (box->isVisible() && !box->text().isEmpty()) {
                EXPECT_LE(box->sizeHint().width(), box->width()) << box->text().toStdString();
            }
        }
        for (const QLabel* const label : window.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty() && label->sizePolicy() != ignoredWidth)
                ExpectWhole(*label);
        }
    }
    /// The controls that lie side by side in the window, without those in the rows of lists.
    static void ExpectNoOverlaps(const QWidget& window)
    {
        std::vector<const QWidget*> controls;
        for (const QWidget* const widget : window.findChildren<QWidget*>()) {
            const bool isControl =
                qobject_cast<const QPushButton*>(widget) || qobject_cast<const QCheckBox*>(widget) ||
                qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QLabel*>(widget) ||
                qobject_cast<const QTableView*>(widget);
            bool isInList = false;
            for (const QWidget* parent = widget->parentWidget(); parent; parent = parent->parentWidget())
                isInList = isInList || qobject_cast<const QTableView*>(parent) ||
                           qobject_cast<const QLineEdit*>(parent);
            if (isControl && !isInList && widget->isVisible())
                controls.push_back(widget);
        }
        EXPECT_GT(controls.size(), 8u);
        const auto inWindow = [&](const QWidget& widget) {
            return QRect(widget.mapTo(&window, QPoint()), widget.size());
        };
        for (const QWidget* const one : controls) {
            EXPECT_TRUE(window.rect().contains(inWindow(*one))) << one->objectName().toStdString();
            for (const QWidget* const other : controls) {
                EXPECT_TRUE(one == other || !inWindow(*one).intersects(inWindow(*other)))
                    << one->objectName().toStdString() << " and " << other->objectName().toStdString();
            }
        }
    }
    /// Acts as soon as a modal window of this class is open.
    template<typename Dialog, typename Look>
    void WhenOpen(Look look)
    {
        looked = false;
        QObject::connect(&eyes, &QTimer::timeout, &eyes, [this, look] {
            auto* const window = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!window || !window->isVisible())
                return;
            eyes.disconnect();
            looked = true;
            look(*window);
            window->close();
        });
        eyes.start(5);
    }

    inline static const QSizePolicy ignoredWidth{QSizePolicy::Ignored, QSizePolicy::Fixed};
    QTimer eyes;
    bool looked = false;
};

TEST_P(DialogInLanguage, TheListHasRoomInASmallWindowAndItsDetailsNeedNoScrollBar)
{
    for (int number = 0; number < 40; ++number)
        AddPlugin(L"Dragonfly Hall Reverb " + std::to_wstring(number),
                  L"/usr/lib/vst3/Dragonfly Hall Reverb.vst3/" + std::to_wstring(number));
    Ban(L"/usr/lib/vst/bad.so");
    OpenDialog();
    Resize(800, 600);
    const auto& view = dynamic_cast<QTableView&>(WidgetOf(PluginList()));
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    EXPECT_GE(PluginList().GetHeaderRow()->GetColumnWidth(kColumnName), 140);
    for (const bool selects : {false, true}) {
        if (selects)
            PluginList().SelectRow(RowOf(L"bad.so").get(), true);
        QCoreApplication::processEvents();
        for (auto* const text : Window().findChildren<QPlainTextEdit*>())
            EXPECT_FALSE(text->isVisible() && text->verticalScrollBar()->isVisible()) << selects;
    }
}

TEST_P(DialogInLanguage, NothingIsCutAndNothingOverlapsInTheManager)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    const QSize own = Window().size();
    for (const QSize& size : {own, QSize(1120, 680), QSize(1600, 1000)}) {
        if (size.width() < own.width())
            continue;
        Resize(size.width(), size.height());
        ExpectWholeTexts(Window());
        ExpectNoOverlaps(Window());
    }
    for (const QSize& size : {QSize(900, 500), QSize(700, 450), QSize(400, 400)}) {
        Resize(size.width(), size.height());
        ExpectWholeTexts(Window());
    }
}

/// Everything that the archive shows, but for the checkbox that the dialog hides.
constexpr const char* shownControls[] = {ids::kUpdateButton,       ids::kRescanExisting,
                                         ids::kEnableAllButton,    ids::kDisableAllButton,
                                         ids::kAddDirectoryButton, ids::kRemoveDirectoryButton,
                                         ids::kOKButton,           ids::kDefaultDirectoriesButton,
                                         ids::kCancelButton,       ids::kFindStaticText,
                                         ids::kFindTextEdit};

TEST_P(DialogInLanguage, NothingIsHiddenAtTheSizesThatItOpensWith)
{
    OpenDialog();
    const QSize own = Window().size();
    for (const QSize& size : {own, QSize(1120, 680), own + QSize(1, 0), own}) {
        Resize(size.width(), size.height());
        for (const char* const id : shownControls)
            EXPECT_TRUE(WidgetOf(Node<zetui::ui::UI_Node>(id)).isVisible()) << id << size.width();
        ExpectNoOverlaps(Window());
    }
}

TEST_P(DialogInLanguage, TheFindBoxHasTheRoomThatTheButtonsLeave)
{
    OpenDialog();
    const int own = Window().width();
    const auto visible = [this](const char* id) {
        return WidgetOf(Node<zetui::ui::UI_Node>(id)).isVisible();
    };
    const auto rightOf = [this](const char* id) {
        const QWidget& widget = WidgetOf(Node<zetui::ui::UI_Node>(id));
        return widget.mapTo(&Window(), QPoint(widget.width(), 0)).x();
    };
    for (int width = own; width >= 400; width -= 10) {
        Resize(width, 500);
        // The archive ends the box where its section ends, or some pixels before.
        const int end = rightOf(ids::kPluginTreeSection) - 10;
        constexpr int boxAndGaps = 130;
        if (end - rightOf(ids::kDisableAllButton) > boxAndGaps) {
            EXPECT_TRUE(visible(ids::kFindTextEdit)) << width;
        }
        ExpectWholeTexts(Window());
        if (width >= rightOf(ids::kDisableAllButton))
            ExpectNoOverlaps(Window());
    }
    Resize(own, 500);
    EXPECT_TRUE(visible(ids::kFindTextEdit));
    EXPECT_TRUE(visible(ids::kFindStaticText)) << "it comes back";
}

TEST_P(DialogInLanguage, TheManagerOpensNoWiderForTheCheckboxThatItHides)
{
    constexpr char showSeparateProcess[] = "AudioPluginManager.ShowExternalCheckBox";
    constexpr float archivedWidth = 49;
    MakeDialog();
    const auto widthOfCheckbox = [this] {
        return Node<zetui::ui::UI_Node>(ids::kSeparateProcess).UI_GetLocalRectF(true).width;
    };
    EXPECT_EQ(widthOfCheckbox(), archivedWidth);
    const int width = Window().width();
    zetcore::debug::DebugDatabase::Instance().SetEntry(showSeparateProcess, "true");
    MakeDialog();
    const float growth = widthOfCheckbox() - archivedWidth;
    constexpr float tolerance = 2;
    // A narrow font needs only few pixels more for a short text, but more than the window may differ by.
    EXPECT_GT(growth, 2 * tolerance) << "its text needs more than the archive gives it";
    EXPECT_NEAR(static_cast<float>(Window().width() - width), growth, tolerance);
}

TEST_P(DialogInLanguage, NoTitleOfAColumnIsCut)
{
    OpenDialog();
    // The arrow stands at the end, wherever that is.
    PluginList().GetHeaderRow()->SetSortColumn(0);
    QHeaderView& header = *dynamic_cast<QTableView&>(WidgetOf(PluginList())).horizontalHeader();
    for (int column = 0; column < header.count(); ++column) {
        // With more room it looks the same.
        const QRect title(header.sectionViewportPosition(column), 0, header.sectionSize(column) - 2,
                          header.height());
        const QImage picture = header.viewport()->grab(title).toImage();
        const auto id = static_cast<unsigned>(column) + 1;
        const float width = PluginList().GetHeaderRow()->GetColumnWidth(id);
        PluginList().GetHeaderRow()->SetColumnWidth(id, width + 500);
        EXPECT_EQ(header.viewport()->grab(title).toImage(), picture)
            << header.model()->headerData(column, Qt::Horizontal).toString().toStdString();
        PluginList().GetHeaderRow()->SetColumnWidth(id, width);
    }
}

TEST_P(DialogInLanguage, NothingIsCutInAnyAlert)
{
    namespace messagebox = zetui::dialogs::messagebox;
    shown.reset();
    const auto look = [](const QMessageBox& box) {
        ExpectWholeTexts(box);
        for (const QLabel* const label : box.findChildren<QLabel*>())
            EXPECT_TRUE(box.rect().contains(label->geometry()) || !label->isVisible());
    };
    for (const char* const text :
         {"$$$/AudioPluginManager/DefaultFoldersWarning", "$$$/AudioPluginManager/PluginScanError",
          "$$$/AudioPluginManager/PreferenceAccessError",
          "$$$/zetcore/utility/Error/InvalidTypeConversion"}) {
        WhenOpen<QMessageBox>(look);
        messagebox::ShowCaution(nullptr, L"Host", Localizer::Get().LocalizeWide(text), {});
        EXPECT_TRUE(looked);
        WhenOpen<QMessageBox>(look);
        messagebox::Messagebox(nullptr, L"Host", Localizer::Get().LocalizeWide(text), {}, messagebox::kYesNo,
                               messagebox::kNo, messagebox::kIconCaution);
        EXPECT_TRUE(looked);
    }
    shown = std::make_unique<AnsweringPresentation>();
}

INSTANTIATE_TEST_SUITE_P(Languages, DialogInLanguage,
                         testing::Combine(testing::Values("en", "de", "fr", "es", "ja", "zh-Hans"),
                                          testing::ValuesIn(zetui::skins::AllSkins())),
                         [](const auto& given) {
                             std::string name = std::get<0>(given.param);
                             std::erase(name, '-');
                             return name + NameOf(std::get<1>(given.param));
                         });

} // namespace
} // namespace zetaudiopluginhostui
