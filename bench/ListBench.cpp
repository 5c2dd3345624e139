// Measures the plug-in manager as its user sees it, and compares its list with Qt's own lists on the same
// data. Each list is filled, sorted by each column, filtered letter by letter, and scrolled; each time is
// measured until the picture is painted. Without arguments, it measures 1,000, 10,000 and 100,000 rows,
// compares the medians with the limits, and ends with an error when one is missed. With numbers, it measures
// that many rows. With `--once`, it does everything once with few rows, to show that it works.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>

#include <QApplication>
#include <QScrollBar>

#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/string/Utf.h>
#include <zetui/application/Application.h>
#include <zetui/skins/Skins.h>

#include "FigureReport.h"
#include "ManagerBench.h"
#include "Measure.h"
#include "MeasuredList.h"
#include "PaintWatch.h"
#include "ScratchFolder.h"

namespace {

using namespace bench;

constexpr int nameColumn = 1;

/// The figures, in milliseconds.
struct Figures
{
    double fill = 0, slowestSort = 0, slowestFilter = 0, scrollFrame = 0, slowestFrame = 0;
};

double MillisecondsUntilPainted(const std::function<void()>& change)
{
    return 1000 * Seconds([&] {
               change();
               QCoreApplication::sendPostedEvents();
               QCoreApplication::processEvents();
           });
}

using Lists = std::vector<std::unique_ptr<MeasuredList>>;

/// The median for each list. The lists take turns, so that other work on the machine slows all of them alike.
std::vector<double> Medians(const Lists& lists, int runs,
                            const std::function<void(MeasuredList&, int run)>& change)
{
    std::vector<std::vector<double>> values(lists.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < lists.size(); ++i) {
            Settle();
            values[i].push_back(MillisecondsUntilPainted([&] { change(*lists[i], run); }));
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& each : values)
        medians.push_back(Median(std::move(each)));
    return medians;
}

/// Replaces each figure by the median where that is higher.
void TakeSlower(std::vector<Figures>& all, double Figures::*figure, const std::vector<double>& medians)
{
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i].*figure = std::max(all[i].*figure, medians[i]);
}

void MeasureScrolling(MeasuredList& list, int frames, Figures& figures)
{
    QScrollBar& bar = *list.View().verticalScrollBar();
    std::vector<double> values;
    bar.setValue(0);
    QCoreApplication::processEvents();
    for (int frame = 1; frame <= frames; ++frame) {
        // Most steps are half a page, like a turn of the wheel. Every tenth one is a leap, like dragging the
        // bar.
        const int to = frame % 10 ? bar.value() + bar.pageStep() / 2 : bar.maximum() / frames * frame;
        values.push_back(MillisecondsUntilPainted([&] { bar.setValue(to); }));
    }
    figures.slowestFrame = *std::max_element(values.begin(), values.end());
    figures.scrollFrame = Median(std::move(values));
}

std::vector<Figures> MeasureLists(const Lists& lists, const std::vector<ListEntry>& entries, int runs,
                                  int frames)
{
    std::vector<Figures> all(lists.size());
    for (const auto& list : lists)
        list->Sort(nameColumn, true);
    TakeSlower(all, &Figures::fill,
               Medians(lists, runs, [&](MeasuredList& list, int) { list.Fill(entries); }));
    for (int column = 1; column < listColumns; ++column) {
        for (const auto& list : lists)
            list->Sort(nameColumn, false);
        TakeSlower(all, &Figures::slowestSort, Medians(lists, runs, [&](MeasuredList& list, int run) {
                       list.Sort(column, run % 2 == 0);
                   }));
    }
    for (const auto& list : lists)
        list->Sort(nameColumn, true);
    // The text is typed and deleted again, letter by letter.
    const std::vector<std::wstring> texts{L"r", L"re", L"rev", L"re", L"r", L""};
    std::vector<std::vector<std::vector<double>>> keystrokes(texts.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < texts.size(); ++i)
            keystrokes[i].push_back(
                Medians(lists, 1, [&](MeasuredList& list, int) { list.Filter(entries, texts[i]); }));
    }
    for (const auto& ofText : keystrokes) {
        for (std::size_t i = 0; i < lists.size(); ++i) {
            std::vector<double> values;
            for (const std::vector<double>& run : ofText)
                values.push_back(run[i]);
            all[i].slowestFilter = std::max(all[i].slowestFilter, Median(std::move(values)));
        }
    }
    for (std::size_t i = 0; i < lists.size(); ++i)
        MeasureScrolling(*lists[i], frames, all[i]);
    return all;
}

/// With `report` null the row is only printed.
void PrintRow(const std::string& what, const std::vector<Figures>& all, double Figures::*figure,
              FigureReport* report)
{
    std::printf("  %-22s", what.c_str());
    for (const Figures& figures : all)
        std::printf(" %17.2f", figures.*figure);
    const double ratio = std::min(all[1].*figure, all[2].*figure) / std::max(all[0].*figure, 1e-6);
    std::printf("   %20.2f  %s\n", ratio, report ? report->MoreThanOne(ratio) : "");
}

void CompareLists(const std::vector<ListEntry>& entries, int runs, int frames, FigureReport& report)
{
    std::printf("  %-22s", "beside Qt's own lists");
    Lists lists;
    for (const auto& make : {MakeOurList, MakeTreeWidget, MakeProxyTable}) {
        lists.push_back(make());
        std::printf(" %17s", lists.back()->Name().c_str());
    }
    std::fflush(stdout);
    const std::vector<Figures> all = MeasureLists(lists, entries, runs, frames);
    for (const auto& list : lists)
        report.Require("a list does not show what it was filled with",
                       list->ShownRows() == static_cast<int>(entries.size()));
    std::printf("   best of theirs / ours\n");
    FigureReport* const held = entries.size() >= 10'000 ? &report : nullptr;
    PrintRow("fill, sorted by name", all, &Figures::fill, held);
    PrintRow("sort, slowest column", all, &Figures::slowestSort, held);
    PrintRow("keystroke, slowest", all, &Figures::slowestFilter, held);
    PrintRow("scroll, median frame", all, &Figures::scrollFrame, nullptr);
    PrintRow("scroll, slowest frame", all, &Figures::slowestFrame, nullptr);
}

int RunAll(const std::vector<std::size_t>& sizes, bool once)
{
    const ScratchFolder scratch("list_bench");
    zetcore::filesupport::Dir::SetPrefDir(zetcore::string::UTF8to16(scratch.Path().string()));
    zetaudiopluginhostui::Initialize();
    FigureReport report(!once);
    for (const std::size_t size : sizes) {
        const std::vector<ListEntry> entries = MakeListEntries(size);
        const int runs = once ? 1 : size > 10'000 ? 3 : 7;
        const int frames = once ? 3 : 200;
        std::printf("%zu rows; milliseconds up to the painted picture, medians\n", size);
        BenchManager(entries, runs, frames, report);
        CompareLists(entries, runs, frames, report);
    }
    zetaudiopluginhostui::Terminate();
    return report.AllKept() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const bool once = argc > 1 && std::strcmp(argv[1], "--once") == 0;
    std::vector<std::size_t> sizes;
    for (int i = once ? 2 : 1; i < argc; ++i)
        sizes.push_back(static_cast<std::size_t>(std::max(1, std::atoi(argv[i]))));
    if (sizes.empty())
        sizes = once ? std::vector<std::size_t>{200} : std::vector<std::size_t>{1000, 10'000, 100'000};
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    zetui::skins::SetSkin(zetui::skins::Skin::V7);
    if (!zetui::ui::InitializeWindows()) {
        std::fputs("list_bench: no windows can be opened here\n", stderr);
        return 1;
    }
    int result = 1;
    try {
        result = RunAll(sizes, once);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "list_bench: %s\n", error.what());
    }
    zetui::ui::TerminateWindows();
    return result;
}
