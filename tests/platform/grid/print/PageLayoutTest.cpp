#include "platform/grid/print/PageLayout.h"

#include <gtest/gtest.h>

#include <limits>

namespace norvel::grid {
namespace {

using adodb::RowCount;
using Place = PageLayout::Place;

// A paper of 10,000 by 10,000 between margins of 1,000, header and footer of 500, headings of 500
// and rows of 100: 65 rows a page.
PrintSettings square() {
    PrintSettings settings;
    settings.Paper = {10000, 10000};
    settings.Margins = {1000, 1000, 1000, 1000};
    return settings;
}
constexpr PageHeights heights{500, 500, 500, 100};

TEST(PageLayoutTest, RowsGoDownPageAfterPage) {
    const PageLayout layout(square(), heights, {3000, 3000}, 140);
    EXPECT_EQ(layout.PageCount(), 3);
    EXPECT_EQ(layout.PageAt(1), (Place{0, 65, 0, 2, true}));
    EXPECT_EQ(layout.PageAt(2), (Place{65, 65, 0, 2, true}));
    EXPECT_EQ(layout.PageAt(3), (Place{130, 10, 0, 2, true}));
}

TEST(PageLayoutTest, ColumnsThatDoNotFitGoOnToTheRightAfterAllRows) {
    const PageLayout layout(square(), heights, {5000, 3000, 1, 4000, 4000}, 100);
    EXPECT_EQ(layout.PageCount(), 6);
    EXPECT_EQ(layout.PageAt(1), (Place{0, 65, 0, 2, true}));
    EXPECT_EQ(layout.PageAt(2), (Place{65, 35, 0, 2, true}));
    EXPECT_EQ(layout.PageAt(3), (Place{0, 65, 2, 2, true}));
    EXPECT_EQ(layout.PageAt(4), (Place{65, 35, 2, 2, true}));
    EXPECT_EQ(layout.PageAt(5), (Place{0, 65, 4, 1, true}));
    EXPECT_EQ(layout.PageAt(6), (Place{65, 35, 4, 1, true}));
}

TEST(PageLayoutTest, AColumnWiderThanAPageIsCutToIt) {
    const PageLayout layout(square(), heights, {1000, 50000, 1000}, 1);
    EXPECT_EQ(layout.PageCount(), 3);
    EXPECT_EQ(layout.ColumnWidth(1), 8000);
    EXPECT_EQ(layout.PageAt(2), (Place{0, 1, 1, 1, true}));
}

TEST(PageLayoutTest, ColumnsFillThePageToItsEdge) {
    const PageLayout layout(square(), heights, {4000, 4000, 4000}, 1);
    EXPECT_EQ(layout.PageCount(), 2);
    EXPECT_EQ(layout.PageAt(1).columns, 2);
}

TEST(PageLayoutTest, HeadingsOnTheFirstPageAloneLeaveTheOthersMoreRows) {
    PrintSettings settings = square();
    settings.RepeatHeadings = false;
    const PageLayout layout(settings, heights, {8000, 8000}, 200);
    EXPECT_EQ(layout.PageCount(), 6);
    EXPECT_EQ(layout.PageAt(1), (Place{0, 65, 0, 1, true}));
    EXPECT_EQ(layout.PageAt(2), (Place{65, 70, 0, 1, false}));
    EXPECT_EQ(layout.PageAt(3), (Place{135, 65, 0, 1, false}));
    EXPECT_EQ(layout.PageAt(4), (Place{0, 65, 1, 1, true})) << "each group of columns has them";
}

TEST(PageLayoutTest, WithoutRowsOrColumnsThereIsOnePage) {
    const PageLayout empty(square(), heights, {3000}, 0);
    EXPECT_EQ(empty.PageCount(), 1);
    EXPECT_EQ(empty.PageAt(1), (Place{0, 0, 0, 1, true}));
    EXPECT_EQ(PageLayout(square(), heights, {}, 0).PageCount(), 1);
    const PageLayout none(square(), heights, {}, 1000);
    EXPECT_EQ(none.PageCount(), 1) << "nothing to show of a thousand rows";
    EXPECT_EQ(none.PageAt(1), (Place{0, 0, 0, 0, true}));
}

TEST(PageLayoutTest, PagesOutsideAreTheFirstAndTheLast) {
    const PageLayout layout(square(), heights, {3000}, 100);
    EXPECT_EQ(layout.PageAt(0), layout.PageAt(1));
    EXPECT_EQ(layout.PageAt(-5), layout.PageAt(1));
    EXPECT_EQ(layout.PageAt(99), layout.PageAt(2));
}

TEST(PageLayoutTest, EveryRowStandsOnOnePageOfEachBand) {
    for (const bool repeat : {true, false}) {
        for (const RowCount rows : {1, 64, 65, 66, 130, 131, 1000}) {
            PrintSettings settings = square();
            settings.RepeatHeadings = repeat;
            const PageLayout layout(settings, heights, {5000, 5000}, rows);
            RowCount next = 0;
            for (RowCount page = 1; page <= layout.PageCount(); ++page) {
                const Place place = layout.PageAt(page);
                if (page == layout.PageCount() / 2 + 1) next = 0;
                EXPECT_EQ(place.firstRow, next);
                EXPECT_GT(place.rows, 0);
                for (RowCount row = place.firstRow; row < place.firstRow + place.rows; ++row)
                    EXPECT_EQ(layout.PageOfRow(row, page), page);
                next = place.firstRow + place.rows;
                const bool endOfBand = page == layout.PageCount() / 2 || page == layout.PageCount();
                if (endOfBand) {
                    EXPECT_EQ(next, rows);
                }
            }
        }
    }
}

TEST(PageLayoutTest, AMillionRowsAreCountedByArithmetic) {
    const PageLayout layout(square(), heights, {8000, 8000}, 1000000);
    EXPECT_EQ(layout.PageCount(), 2 * 15385);
    EXPECT_EQ(layout.PageAt(15385).firstRow + layout.PageAt(15385).rows, 1000000);
    EXPECT_EQ(layout.PageOfRow(999999, 20000), 30770);
}

TEST(PageLayoutTest, LandscapeTurnsThePaper) {
    PrintSettings settings;
    settings.Orientation = PageOrientation::Landscape;
    const PageLayout layout(settings, heights, {14000}, 1);
    EXPECT_EQ(layout.Paper(), (PaperSize{16838, 11906}));
    EXPECT_EQ(layout.ColumnWidth(0), 14000) << "fits across";
}

TEST(PageLayoutTest, HeaderAndFooterStandBetweenMarginsAndRows) {
    const PageLayout layout(square(), heights, {3000}, 1);
    EXPECT_EQ(layout.Header(), (Box{1000, 1000, 8000, 500}));
    EXPECT_EQ(layout.Body(), (Box{1000, 1500, 8000, 7000}));
    EXPECT_EQ(layout.Footer(), (Box{1000, 8500, 8000, 500}));
}

TEST(PageLayoutTest, UnusualMeasuresStillGiveARowAPage) {
    PrintSettings settings = square();
    settings.Margins = {9000, 9000, 9000, 9000};
    const PageLayout narrow(settings, {5000, 5000, 5000, 50000}, {1000}, 10);
    EXPECT_EQ(narrow.PageCount(), 10);
    EXPECT_GT(narrow.RowHeight(), 0);
    EXPECT_LE(narrow.RowHeight(), narrow.Body().height);
    const PageLayout strange(square(), heights,
                             {-5, 0, std::numeric_limits<double>::quiet_NaN(), 1000}, 10);
    EXPECT_EQ(strange.PageCount(), 2);
    EXPECT_EQ(strange.ColumnWidth(0), 0);
}

TEST(PageLayoutTest, RowsOfNoHeightStillHaveAPage) {
    const PageLayout layout(square(), {0, 0, 0, 0}, {1000}, 100);
    EXPECT_EQ(layout.PageCount(), 1);
    EXPECT_EQ(layout.PageAt(1).rows, 100);
}

} // namespace
} // namespace norvel::grid
