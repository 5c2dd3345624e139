#include "ManagerBench.h"

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/filesupport/paths/Dir.h>

#include "HeapUse.h"
#include "Measure.h"
#include "OpenManager.h"

namespace bench {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

/// The times of each of several steps, over the runs.
using Steps = std::map<std::string, std::vector<double>>;

/// The step whose median is the longest.
std::pair<std::string, double> Slowest(const Steps& steps)
{
    std::pair<std::string, double> slowest{"", 0};
    for (const auto& [name, values] : steps) {
        if (const double median = Median(values); median >= slowest.second)
            slowest = {name, median};
    }
    return slowest;
}

zetaudiofilterhost::TechnologyType TechnologyOf(const ListEntry& entry)
{
    const auto* format = zetaudiofilterhost::FindPluginFormat(entry.texts[2]);
    return format ? format->type : zetaudiofilterhost::TechnologyType::Unknown;
}

void SendKey(QWidget& widget, int key, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(&widget, &event);
    }
}

void Click(QWidget& widget, const QPoint& at)
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

Steps MeasureKeystrokes(OpenManager& manager, int runs)
{
    Steps steps;
    QLineEdit& box = manager.FindBox();
    box.setFocus();
    const std::string text = "rev9";
    for (int run = 0; run < runs; ++run) {
        for (std::size_t typed = 0; typed < 2 * text.size(); ++typed) {
            const bool adds = typed < text.size();
            const std::size_t length = adds ? typed + 1 : 2 * text.size() - typed - 1;
            const QString key = adds ? QString(QLatin1Char(text[typed])) : QString();
            steps['"' + text.substr(0, length) + '"'].push_back(manager.Watch().MillisecondsUntilPainted(
                [&] { SendKey(box, adds ? key.front().toUpper().unicode() : int{Qt::Key_Backspace}, key); }));
            Settle();
            if (box.text().toStdString() != text.substr(0, length))
                throw std::runtime_error("the find box does not take keys");
        }
    }
    return steps;
}

Steps MeasureSorts(OpenManager& manager, int runs)
{
    Steps steps;
    QHeaderView& header = *manager.List().horizontalHeader();
    for (int column = 0; column < header.count(); ++column) {
        manager.List().horizontalScrollBar()->setValue(header.sectionPosition(column));
        Settle();
        const int place = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
        const QPoint at(std::min(place, header.viewport()->width() - 10), header.height() / 2);
        const std::string title =
            manager.List().model()->headerData(column, Qt::Horizontal).toString().toStdString();
        // The number is even, so that both directions are measured equally often.
        for (int run = 0; run < 2 * runs; ++run) {
            const Qt::SortOrder before = header.sortIndicatorOrder();
            steps[title + (run % 2 ? ", again" : "")].push_back(
                manager.Watch().MillisecondsUntilPainted([&] { Click(*header.viewport(), at); }));
            Settle();
            if (header.sortIndicatorSection() != column || (run > 0 && header.sortIndicatorOrder() == before))
                throw std::runtime_error("a click on the header does not sort");
        }
    }
    manager.List().horizontalScrollBar()->setValue(0);
    return steps;
}

struct Scrolling
{
    Steps frames;
    /// The highest number of rows that had widgets, and the number of rows that a view of this height can
    /// show.
    int rowsWithWidgets = 0;
    int visibleRows = 0;
};

int RowsWithWidgets(const QTableView& list)
{
    std::vector<const QWidget*> rows;
    for (const QAbstractButton* const button : list.viewport()->findChildren<QAbstractButton*>()) {
        if (button->isCheckable())
            rows.push_back(button);
    }
    return static_cast<int>(rows.size());
}

Scrolling MeasureScrolling(OpenManager& manager, int runs, int frames)
{
    Scrolling scrolling;
    QTableView& list = manager.List();
    QScrollBar& bar = *list.verticalScrollBar();
    scrolling.visibleRows = list.viewport()->height() / list.rowHeight(0) + 2;
    for (int run = 0; run < runs; ++run) {
        bar.setValue(0);
        Settle();
        for (int frame = 1; frame <= frames; ++frame) {
            // Most steps are half a page, like a turn of the wheel. Every tenth one is a leap, like dragging
            // the bar.
            int to = frame % 10 ? bar.value() + bar.pageStep() / 2 : bar.maximum() / frames * frame;
            if (to >= bar.maximum())
                to = frame % 2;
            const std::string name = "frame " + std::to_string(frame);
            if (to == bar.value())
                continue;
            scrolling.frames[name].push_back(
                manager.Watch().MillisecondsUntilPainted([&] { bar.setValue(to); }));
            Settle();
            scrolling.rowsWithWidgets = std::max(scrolling.rowsWithWidgets, RowsWithWidgets(list));
        }
    }
    bar.setValue(0);
    Settle();
    return scrolling;
}

/// The cost of the window itself, whatever its list shows.
std::size_t WindowMemory(const std::vector<ListEntry>& entries)
{
    const std::vector<ListEntry> few(entries.begin(),
                                     entries.begin() + std::min<std::ptrdiff_t>(10, std::ssize(entries)));
    FillRegistry(few);
    OpenManager::Run(static_cast<int>(few.size()));
    const std::size_t before = HeapUse();
    std::size_t open = before;
    OpenManager::Run(static_cast<int>(few.size()), [&](OpenManager&) { open = std::max(open, HeapUse()); });
    return open - before;
}

double LimitFor(std::size_t rows, const std::map<std::size_t, double>& limits)
{
    const auto found = limits.find(rows);
    return found == limits.end() ? 0 : found->second;
}

void Print(const std::string& what, double value, double limit, FigureReport& report)
{
    if (limit > 0)
        report.AtMost(what, value, "ms", limit);
    else
        report.Note(what, value, "ms");
}

} // namespace

void FillRegistry(const std::vector<ListEntry>& entries)
{
    using namespace zetcore::filesupport;
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    ResetRegistry(registry);
    ResetBannedPlugins(banned);
    for (const ListEntry& entry : entries) {
        const zetaudiofilterhost::PluginLocator locator(TechnologyOf(entry), entry.texts[5]);
        if (entry.texts[3] != L"Working") {
            banned.AddBannedPlugin(locator, "It ended the scanner.");
            continue;
        }
        auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(locator);
        info->SetName(entry.texts[1]);
        info->SetVersionString(entry.texts[4]);
        info->SetEnabled(entry.enabled);
        info->SetHasAnyNonSynthEffect(true);
        registry.AddModule(info);
    }
    registry.SaveConfiguration(File(Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName()), true);
    banned.SaveConfiguration(File(Dir::PrefDir(), BannedPluginManager::GetSettingsFileName()));
}

void BenchManager(const std::vector<ListEntry>& entries, int runs, int frames, FigureReport& report)
{
    static bool openedBefore = false;
    const std::size_t rows = entries.size();
    const int shown = static_cast<int>(rows);
    FillRegistry(entries);
    const double openLimit = LimitFor(rows, {{1000, 120}, {10'000, 250}});
    if (!std::exchange(openedBefore, true))
        Print("open, the first time in the program", OpenManager::Run(shown), openLimit, report);
    const std::size_t windowMemory = WindowMemory(entries);
    FillRegistry(entries);
    std::vector<double> openings;
    for (int run = 0; run < runs; ++run)
        openings.push_back(OpenManager::Run(shown));
    Print("open", Median(std::move(openings)), openLimit, report);

    const std::size_t before = HeapUse();
    std::size_t most = before;
    Steps keystrokes, sorts;
    Scrolling scrolling;
    OpenManager::Run(shown, [&](OpenManager& manager) {
        most = std::max(most, HeapUse());
        scrolling = MeasureScrolling(manager, runs, frames);
        sorts = MeasureSorts(manager, runs);
        keystrokes = MeasureKeystrokes(manager, runs);
        most = std::max(most, HeapUse());
        report.Require("the manager does not show all rows again",
                       manager.List().model()->rowCount() == shown);
    });
    const auto [text, keystroke] = Slowest(keystrokes);
    Print("keystroke in the find box, slowest: to " + text, keystroke,
          LimitFor(rows, {{10'000, 16}, {100'000, 120}}), report);
    const auto [column, sort] = Slowest(sorts);
    Print("sort by a click, slowest: " + column, sort, LimitFor(rows, {{10'000, 60}}), report);
    std::vector<double> medians;
    for (const auto& [frame, values] : scrolling.frames)
        medians.push_back(Median(values));
    report.Note("scroll, median frame", Median(std::move(medians)), "ms");
    const double scrollLimit = 8;
    Print("scroll, slowest frame", Slowest(scrolling.frames).second, scrollLimit, report);
    report.Note("rows with widgets, at most; " + std::to_string(scrolling.visibleRows) + " are visible",
                scrolling.rowsWithWidgets, "");
    report.Require("rows that are not visible have widgets",
                   scrolling.rowsWithWidgets <= scrolling.visibleRows && scrolling.rowsWithWidgets > 0);
    const double kibibytes = (static_cast<double>(most - before) - static_cast<double>(windowMemory)) / 1024;
    report.Note("memory of the window with ten rows", static_cast<double>(windowMemory) / 1024, "KiB");
    report.AtMost("memory beyond that and the registry, a row", kibibytes / static_cast<double>(rows), "KiB",
                  1);
}

} // namespace bench
