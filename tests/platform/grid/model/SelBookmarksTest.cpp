#include "platform/grid/model/SelBookmarks.h"

#include "platform/grid/model/RowReader.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace norvel::grid {
namespace {

using adodb::RowCount;
using tests::GeneratedRecordset;

constexpr RowCount tenMillion = 10'000'000;

class SelBookmarksTest : public testing::Test {
  protected:
    void show(RowCount rows) {
        host = GeneratedRecordset::make(tests::customerColumns(), rows);
        look(false);
    }
    void look(bool keep) { selected.SetView(std::make_shared<RowReader>(*host), keep); }
    // The selected rows by their number in the unfiltered, unsorted recordset, from 1.
    std::vector<RowCount> items() {
        std::vector<RowCount> all;
        for (RowCount i = 0; i < selected.Count(); ++i)
            all.push_back(selected.Item(i).toI8());
        return all;
    }
    std::shared_ptr<GeneratedRecordset> host;
    SelBookmarks selected;
};

using Rows = std::vector<RowCount>;

TEST_F(SelBookmarksTest, KeepsTheOrderOfSelection) {
    show(100);
    for (const RowCount row : {7, 3, 50})
        selected.ToggleRow(row);
    EXPECT_EQ(items(), (Rows{8, 4, 51}));
}

TEST_F(SelBookmarksTest, ARangeIsTakenInTheDirectionItWasMade) {
    show(100);
    selected.AddRows(5, 3);
    selected.AddRows(8, 10);
    EXPECT_EQ(items(), (Rows{6, 5, 4, 9, 10, 11}));
}

TEST_F(SelBookmarksTest, ARowIsSelectedOnceAndKeepsItsFirstPlace) {
    show(100);
    selected.AddRows(4, 4);
    selected.AddRows(6, 6);
    selected.AddRows(3, 8);
    EXPECT_EQ(items(), (Rows{5, 7, 4, 6, 8, 9}));
    selected.AddRows(3, 8);
    EXPECT_EQ(selected.Count(), 6);
}

TEST_F(SelBookmarksTest, TogglingTakesARowOutOfTheMiddle) {
    show(100);
    selected.AddRows(0, 9);
    selected.ToggleRow(4);
    EXPECT_EQ(items(), (Rows{1, 2, 3, 4, 6, 7, 8, 9, 10}));
    EXPECT_FALSE(selected.Contains(4));
    EXPECT_TRUE(selected.Contains(5));
    selected.ToggleRow(4);
    EXPECT_EQ(items().back(), 5);
}

TEST_F(SelBookmarksTest, RangesRunFromTheTopWhateverTheOrderOfSelectionAndOfTheRows) {
    using Ranges = std::vector<std::pair<RowCount, RowCount>>;
    show(100);
    selected.AddRows(8, 6);
    selected.AddRows(2, 2);
    EXPECT_EQ(selected.Ranges(), (Ranges{{2, 2}, {6, 8}}));
    host->SetSort("codice desc");
    look(true);
    EXPECT_EQ(selected.Ranges(), (Ranges{{91, 93}, {97, 97}}));
}

TEST_F(SelBookmarksTest, RangesOfThousandsOfRowsAreFoundInAnotherOrderToo) {
    using Ranges = std::vector<std::pair<RowCount, RowCount>>;
    show(10'000);
    selected.AddRows(0, 2999);
    selected.AddRows(5000, 5000);
    host->SetSort("codice desc");
    look(true);
    EXPECT_EQ(selected.Ranges(), (Ranges{{4999, 4999}, {7000, 9999}}));
    selected.AddRows(0, 9999);
    EXPECT_EQ(selected.Ranges(), (Ranges{{0, 9999}}));
}

TEST_F(SelBookmarksTest, RowsOutsideTheViewAreNotSelected) {
    show(10);
    selected.AddRows(-5, 3);
    selected.AddRows(8, 500);
    EXPECT_EQ(items(), (Rows{1, 2, 3, 4, 9, 10}));
    EXPECT_FALSE(selected.Contains(-1));
    EXPECT_FALSE(selected.Contains(10));
    selected.RemoveRow(99);
    EXPECT_EQ(selected.Count(), 6);
}

TEST_F(SelBookmarksTest, NothingIsSelectedWhereThereAreNoRows) {
    show(0);
    selected.AddRows(0, 0);
    EXPECT_EQ(selected.Count(), 0);
    selected.SetView(nullptr, false);
    selected.AddRows(0, 5);
    EXPECT_EQ(selected.Count(), 0);
}

TEST_F(SelBookmarksTest, ABadIndexIsError9) {
    show(10);
    selected.AddRows(0, 2);
    for (const RowCount bad : {-1, 3}) {
        try {
            selected.Item(bad);
            ADD_FAILURE();
        } catch (const Errore& error) {
            EXPECT_EQ(error.numero(), 9);
        }
        EXPECT_THROW(selected.Remove(bad), Errore);
    }
}

TEST_F(SelBookmarksTest, RowsAreAddedByBookmarkAndABookmarkOfNoRowIsRefused) {
    show(10);
    selected.Add(Variant(4.0));
    EXPECT_EQ(items(), (Rows{4}));
    EXPECT_THROW(selected.Add(Variant(77.0)), Errore);
    EXPECT_EQ(selected.Count(), 1);
}

TEST_F(SelBookmarksTest, TellsOfEveryChangeAndOfNothingElse) {
    show(10);
    int changes = 0;
    selected.OnChange = [&] { ++changes; };
    selected.AddRows(0, 3);
    selected.AddRows(1, 2);
    EXPECT_EQ(changes, 1);
    selected.Remove(0);
    selected.RemoveRow(0);
    EXPECT_EQ(changes, 2);
    selected.Clear();
    selected.Clear();
    EXPECT_EQ(changes, 3);
}

TEST_F(SelBookmarksTest, TenMillionRowsAreSelectedAtOnceWithoutReadingOne) {
    show(tenMillion);
    selected.AddRows(0, tenMillion - 1);
    EXPECT_EQ(selected.Count(), tenMillion);
    EXPECT_EQ(selected.Item(0).toI8(), 1);
    EXPECT_EQ(selected.Item(tenMillion - 1).toI8(), tenMillion);
    EXPECT_EQ(host->rowsRead(), 0);
}

TEST_F(SelBookmarksTest, EmptiesFromTheFrontInTheOrderOfSelection) {
    constexpr RowCount count = 300'000;
    show(tenMillion);
    selected.AddRows(count - 1, 0);
    selected.AddRows(count, 2 * count - 1);
    RowCount expected = count;
    for (RowCount i = 0; i < 2 * count; ++i) {
        ASSERT_EQ(selected.Item(0).toI8(), expected);
        selected.Remove(0);
        expected = i < count - 1 ? expected - 1 : i == count - 1 ? count + 1 : expected + 1;
    }
    EXPECT_EQ(selected.Count(), 0);
}

TEST_F(SelBookmarksTest, EveryOtherRowEmptiesFromTheFrontToo) {
    show(tenMillion);
    Rows expected;
    for (RowCount row = 0; row < 40'000; row += 2) {
        selected.ToggleRow(row);
        expected.push_back(row + 1);
    }
    for (const RowCount row : expected) {
        ASSERT_EQ(selected.Item(0).toI8(), row);
        selected.Remove(0);
    }
    EXPECT_EQ(selected.Count(), 0);
}

TEST_F(SelBookmarksTest, ReadingByIndexWorksInAnyOrder) {
    show(1000);
    selected.AddRows(10, 20);
    selected.AddRows(50, 40);
    selected.AddRows(90, 90);
    const Rows forward = items();
    Rows backward;
    for (RowCount i = selected.Count(); i-- > 0;)
        backward.push_back(selected.Item(i).toI8());
    std::ranges::reverse(backward);
    EXPECT_EQ(forward, backward);
}

TEST_F(SelBookmarksTest, ANewOrderKeepsTheSelectedRowsAndTheirOrder) {
    show(1000);
    selected.AddRows(7, 7);
    selected.AddRows(3, 5);
    host->SetSort("[codice]  desc");
    look(true);
    EXPECT_EQ(items(), (Rows{8, 4, 5, 6}));
    EXPECT_TRUE(selected.Contains(999 - 7));
    EXPECT_FALSE(selected.Contains(7));
    selected.ToggleRow(999 - 4); // the row that was selected as number 4
    EXPECT_EQ(items(), (Rows{8, 4, 6}));
    selected.AddRows(0, 1);
    EXPECT_EQ(items(), (Rows{8, 4, 6, 1000, 999}));
}

TEST_F(SelBookmarksTest, TellsWhetherAllRowsOfARangeAreSelected) {
    show(1000);
    EXPECT_FALSE(selected.ContainsAll(0, 0));
    selected.AddRows(10, 19);
    selected.AddRows(29, 20);
    EXPECT_TRUE(selected.ContainsAll(10, 29));
    EXPECT_TRUE(selected.ContainsAll(15, 15));
    EXPECT_FALSE(selected.ContainsAll(9, 12));
    EXPECT_FALSE(selected.ContainsAll(12, 30));
    selected.RemoveRow(21);
    EXPECT_FALSE(selected.ContainsAll(20, 22));
    host->SetSort("desc"); // row 10 is row 989 by now
    look(true);
    EXPECT_TRUE(selected.ContainsAll(980, 989));
    EXPECT_FALSE(selected.ContainsAll(980, 990));
    selected.AddRows(0, 999);
    EXPECT_TRUE(selected.ContainsAll(0, 999));
}

TEST_F(SelBookmarksTest, AfterANewOrderAllRowsOfAFreshSelectionAreInTheNewOrder) {
    show(tenMillion);
    selected.AddRows(0, 5);
    host->SetSort("codice desc");
    look(true);
    selected.Clear();
    selected.AddRows(0, tenMillion - 1);
    EXPECT_EQ(selected.Count(), tenMillion);
    EXPECT_EQ(selected.Item(0).toI8(), tenMillion);
}

TEST_F(SelBookmarksTest, AnotherSetOfRowsEmptiesIt) {
    show(1000);
    selected.AddRows(0, 9);
    host->SetFilter("ogni 2");
    look(false);
    EXPECT_EQ(selected.Count(), 0);
    selected.AddRows(1, 2);
    EXPECT_EQ(items(), (Rows{3, 5}));
}

TEST_F(SelBookmarksTest, RowsThatArriveIntoASortedViewDoNotShiftTheSelection) {
    show(1000);
    host->beginFetch();
    host->SetSort("codice desc");
    look(false);
    selected.AddRows(0, 2); // 1000, 999, 998
    host->arrive(500, false);
    EXPECT_EQ(items(), (Rows{1000, 999, 998}));
    EXPECT_TRUE(selected.Contains(500));
    EXPECT_FALSE(selected.Contains(0));
}

// The same as a plain list of rows, whatever is done in whatever order.
TEST_F(SelBookmarksTest, BehavesLikeAListUnderRandomUse) {
    show(60);
    Rows model;
    std::mt19937 random(4711);
    const auto pick = [&](RowCount below) { return static_cast<RowCount>(random() % below); };
    const auto position = [&](RowCount row) { return std::ranges::find(model, row + 1); };
    for (int step = 0; step < 5000; ++step) {
        const RowCount a = pick(60);
        const RowCount b = pick(60);
        switch (pick(4)) {
        case 0:
            selected.ToggleRow(a);
            if (position(a) == model.end())
                model.push_back(a + 1);
            else
                model.erase(position(a));
            break;
        case 1:
            selected.AddRows(a, b);
            for (RowCount row = a; row != b + (a <= b ? 1 : -1); row += a <= b ? 1 : -1)
                if (position(row) == model.end()) model.push_back(row + 1);
            break;
        case 2:
            if (model.empty()) break;
            selected.Remove(a % static_cast<RowCount>(model.size()));
            model.erase(model.begin() + a % static_cast<RowCount>(model.size()));
            break;
        default:
            selected.RemoveRow(a);
            if (position(a) != model.end()) model.erase(position(a));
            break;
        }
        ASSERT_EQ(items(), model) << "step " << step;
        ASSERT_EQ(selected.Contains(b), position(b) != model.end());
    }
}

} // namespace
} // namespace norvel::grid
