#include "dialog/list/ColumnWidths.h"

#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

namespace zetaudiopluginhostui {
namespace {

TEST(ColumnWidths, TheSixColumnsHaveTheirIdsTitlesAndWidthsInOrder)
{
    struct Case
    {
        unsigned id;
        const char* title;
        float width;
    };
    const Case cases[] = {{1, "Enabled", 80}, {2, "Name", 140},   {3, "Type", 70},
                          {4, "Status", 70},  {5, "Version", 70}, {6, "Path", 240}};
    ASSERT_EQ(PluginColumns().size(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const PluginColumnSpec& column = PluginColumns()[i];
        EXPECT_EQ(column.id, cases[i].id);
        EXPECT_EQ(zetcore::config::Localizer::Get().Localize(column.titleKey), cases[i].title);
        EXPECT_EQ(column.width, cases[i].width);
    }
}

TEST(ColumnWidths, AFittedColumnKeepsItsMinimumAndALargerBestFitWins)
{
    struct Case
    {
        unsigned column;
        float bestFit, width;
    };
    for (const Case& each : {Case{2, 0, 140},
                             {2, 139, 140},
                             {2, 141, 141},
                             {4, 0, 70},
                             {4, 150, 150},
                             {5, 69.5F, 70},
                             {5, 70.5F, 70.5F},
                             {6, 0, 240},
                             {6, 500, 500},
                             {1, 30, 30},
                             {3, 30, 30}})
        EXPECT_EQ(FittedColumnWidth(each.column, each.bestFit), each.width) << each.column;
}

TEST(ColumnWidths, ACellNeedsItsWholePixelsOfTextItsPaddingAndOneMore)
{
    EXPECT_EQ(NeededCellWidth(0, 6, 0, 4), 7);
    EXPECT_EQ(NeededCellWidth(50.9F, 6, 0, 4), 57);
    EXPECT_EQ(NeededCellWidth(50, 12, 0, 12), 63);
    EXPECT_EQ(NeededCellWidth(50, 6, 60, 4), 121) << "with a button and the gap before it";
    EXPECT_EQ(NeededCellWidth(50, 12, 60, 12), 135);
}

} // namespace
} // namespace zetaudiopluginhostui
