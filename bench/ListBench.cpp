// Measures the list beside Qt's own lists on the same data: to fill it, to sort it by each column, to filter
// it as somebody types, and to scroll it; each up to the painted picture. Without arguments: 1,000, 10,000
// and 100,000 rows, medians. `--once`: few rows and each thing once, to see that it works.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>

#include <QApplication>
#include <QScrollBar>

#include <zetui/skins/Skins.h>
#include <zetui/ui/Application.h>

#include "ListSubject.h"
#include "Measure.h"

namespace {

using namespace bench;

constexpr int nameColumn = 1;

/// What is measured, in milliseconds.
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

double MedianOf(int runs, const std::function<double()>& measure)
{
    std::vector<double> values;
    for (int run = 0; run < runs; ++run)
        values.push_back(measure());
    return Median(std::move(values));
}

void MeasureScrolling(ListSubject& list, int frames, Figures& figures)
{
    QScrollBar& bar = *list.View().verticalScrollBar();
    std::vector<double> values;
    bar.setValue(0);
    QCoreApplication::processEvents();
    for (int frame = 1; frame <= frames; ++frame) {
        // Half a page, as a flick of the wheel; every tenth time a leap, as dragging the bar does.
        const int to = frame % 10 ? bar.value() + bar.pageStep() / 2 : bar.maximum() / frames * frame;
        values.push_back(MillisecondsUntilPainted([&] { bar.setValue(to); }));
    }
    figures.slowestFrame = *std::max_element(values.begin(), values.end());
    figures.scrollFrame = Median(std::move(values));
}

Figures MeasureList(ListSubject& list, const std::vector<ListEntry>& entries, int runs, int frames)
{
    Figures figures;
    list.Sort(nameColumn, true);
    figures.fill = MedianOf(runs, [&] { return MillisecondsUntilPainted([&] { list.Fill(entries); }); });
    for (int column = 1; column < listColumns; ++column) {
        bool ascending = true;
        list.Sort(nameColumn, false);
        const double sort = MedianOf(runs, [&] {
            ascending = !ascending;
            return MillisecondsUntilPainted([&] { list.Sort(column, ascending); });
        });
        figures.slowestSort = std::max(figures.slowestSort, sort);
    }
    list.Sort(nameColumn, true);
    std::map<std::wstring, std::vector<double>> keystrokes;
    for (int run = 0; run < runs; ++run) {
        for (const std::wstring text : {L"r", L"re", L"rev", L"re", L""})
            keystrokes[text].push_back(MillisecondsUntilPainted([&] { list.Filter(entries, text); }));
    }
    for (auto& [text, values] : keystrokes)
        figures.slowestFilter = std::max(figures.slowestFilter, Median(values));
    MeasureScrolling(list, frames, figures);
    return figures;
}

void PrintRow(const std::string& what, const std::vector<Figures>& all, double Figures::*figure)
{
    std::printf("  %-22s", what.c_str());
    for (const Figures& figures : all)
        std::printf(" %17.2f", figures.*figure);
    const double best = all.size() < 2 ? 0 : std::min(all[1].*figure, all[2].*figure);
    std::printf("   %6.2f\n", best / std::max(all[0].*figure, 1e-6));
}

} // namespace

int main(int argc, char** argv)
{
    const bool once = argc > 1 && std::strcmp(argv[1], "--once") == 0;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    zetui::skins::SetSkin(zetui::skins::Skin::V7);
    if (!zetui::ui::InitializeWindows()) {
        std::fputs("list_bench: no windows can be opened here\n", stderr);
        return 1;
    }
    const std::vector<std::size_t> sizes =
        once ? std::vector<std::size_t>{200} : std::vector<std::size_t>{1000, 10'000, 100'000};
    bool complete = true;
    for (const std::size_t size : sizes) {
        const std::vector<ListEntry> entries = MakeListEntries(size);
        const int runs = once ? 1 : size > 10'000 ? 3 : 7;
        std::printf("%zu rows, milliseconds\n  %-22s", size, "");
        std::vector<Figures> all;
        for (const auto& make : {MakeOurList, MakeTreeWidget, MakeProxyTable}) {
            const auto list = make();
            std::printf(" %17s", list->Name().c_str());
            std::fflush(stdout);
            all.push_back(MeasureList(*list, entries, runs, once ? 3 : 200));
            complete = complete && list->ShownRows() == static_cast<int>(size);
        }
        std::printf("   best of theirs / ours\n");
        PrintRow("fill, sorted by name", all, &Figures::fill);
        PrintRow("sort, slowest column", all, &Figures::slowestSort);
        PrintRow("keystroke, slowest", all, &Figures::slowestFilter);
        PrintRow("scroll, median frame", all, &Figures::scrollFrame);
        PrintRow("scroll, slowest frame", all, &Figures::slowestFrame);
    }
    zetui::ui::TerminateWindows();
    if (!complete)
        std::fputs("list_bench: a list does not show what it was filled with\n", stderr);
    return complete ? 0 : 1;
}
