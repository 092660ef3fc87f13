// Lines of grouped rows: which line is which row, what opening and closing moves, what stays open.
#include "platform/grid/groups/Lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace norvel::grid {
namespace {

using adodb::Grouping;
using adodb::RowCount;

// "0 1" is row 1 in the second line; groups as "G level.number".
std::string shown(const Lines& lines) {
    std::string text;
    for (RowCount i = 0; i < lines.Count(); ++i) {
        const Line line = lines.At(i);
        text += i == 0 ? "" : " ";
        if (line.IsGroup())
            text +=
                "G" + std::to_string(line.group.level) + "." + std::to_string(line.group.number);
        else
            text += std::to_string(line.row);
    }
    return text;
}

Variant nothing(int, RowCount) {
    return {};
}

Lines made(Grouping groups, bool open) {
    Expansion expansion;
    expansion.SetAll(open);
    Lines lines;
    lines.SetGroups(std::move(groups), expansion, nothing);
    return lines;
}

// Three groups, the second of two inner ones.
const Grouping nested{{{0, 2, 5}, {0, 2, 3, 5}}, 6};

TEST(LinesTest, WithoutGroupsEveryRowIsItsLine) {
    Lines lines;
    EXPECT_EQ(lines.Count(), 0);
    lines.SetPlain(3);
    EXPECT_EQ(shown(lines), "0 1 2");
    EXPECT_EQ(lines.LineOfRow(2), 2);
    EXPECT_EQ(lines.NearestLine(2), 2);
    EXPECT_FALSE(lines.Parent(lines.At(1)));
    EXPECT_TRUE(lines.HidingRow(1).empty());
}

TEST(LinesTest, ClosedGroupsAreOneLineEachAndOpenOnesShowWhatIsInThem) {
    EXPECT_EQ(shown(made(nested, false)), "G0.0 G0.1 G0.2");
    EXPECT_EQ(shown(made(nested, true)), "G0.0 G1.0 0 1 G0.1 G1.1 2 G1.2 3 4 G0.2 G1.3 5");
}

TEST(LinesTest, OpeningAGroupShowsItsInnerGroupsAsTheyAre) {
    Lines lines = made(nested, false);
    lines.SetOpen({0, 1}, true);
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G1.1 G1.2 G0.2");
    lines.SetOpen({1, 2}, true);
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G1.1 G1.2 3 4 G0.2");
    lines.SetOpen({0, 1}, false);
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G0.2");
    lines.SetOpen({0, 1}, true);
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G1.1 G1.2 3 4 G0.2");
    lines.SetAllOpen(false);
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G0.2");
    lines.SetAllOpen(true);
    EXPECT_EQ(lines.Count(), 13);
}

TEST(LinesTest, AHiddenRowIsFoundAtTheLineOfTheOutermostClosedGroup) {
    Lines lines = made(nested, false);
    EXPECT_EQ(lines.LineOfRow(3), -1);
    EXPECT_EQ(lines.NearestLine(3), 1);
    EXPECT_EQ(lines.HidingRow(3), (std::vector<GroupId>{{0, 1}, {1, 2}}));
    lines.SetOpen({0, 1}, true);
    EXPECT_EQ(lines.NearestLine(3), 3);
    EXPECT_EQ(lines.LineOfGroup({1, 2}), 3);
    EXPECT_EQ(lines.LineOfGroup({1, 0}), -1);
    lines.SetOpen({1, 2}, true);
    EXPECT_EQ(lines.LineOfRow(3), 4);
    EXPECT_TRUE(lines.HidingRow(3).empty());
}

TEST(LinesTest, AGroupKnowsItsRowsAndWhatItIsIn) {
    const Lines lines = made(nested, true);
    EXPECT_EQ(lines.RowsOf({0, 1}).first, 2);
    EXPECT_EQ(lines.RowsOf({0, 1}).count, 3);
    EXPECT_EQ(lines.RowsOf({0, 2}).count, 1);
    EXPECT_EQ(lines.Parent(lines.At(lines.LineOfRow(4))), (GroupId{1, 2}));
    EXPECT_EQ(lines.Parent(lines.At(lines.LineOfGroup({1, 2}))), (GroupId{0, 1}));
    EXPECT_FALSE(lines.Parent(lines.At(0)));
}

TEST(LinesTest, RowsBetweenLinesAreThoseOfClosedGroupsTooInTheDirectionAsked) {
    using Range = Lines::Range;
    Lines lines = made(nested, false);
    lines.SetOpen({0, 1}, true); // G0.0 G0.1 G1.1 G1.2 G0.2
    EXPECT_EQ(lines.RowsBetween(0, 0), (Range{0, 1}));
    EXPECT_EQ(lines.RowsBetween(0, 1), (Range{0, 1}));
    EXPECT_EQ(lines.RowsBetween(1, 1), std::nullopt);
    EXPECT_EQ(lines.RowsBetween(1, 2), (Range{2, 2}));
    EXPECT_EQ(lines.RowsBetween(4, 2), (Range{5, 2}));
    lines.SetOpen({1, 2}, true); // G0.0 G0.1 G1.1 G1.2 3 4 G0.2
    EXPECT_EQ(lines.RowsBetween(4, 5), (Range{3, 4}));
    EXPECT_EQ(lines.RowsBetween(5, 3), (Range{4, 3}));
    lines.SetPlain(9);
    EXPECT_EQ(lines.RowsBetween(7, 3), (Range{7, 3}));
}

TEST(LinesTest, NoRowsAreNoLinesWhateverTheGroups) {
    Lines lines = made({{{}, {}}, 0}, true);
    EXPECT_EQ(lines.Count(), 0);
    lines.SetAllOpen(false);
    EXPECT_EQ(lines.Count(), 0);
}

// What the lines are by walking all groups.
void naive(const Lines& lines, const Grouping& groups, int level, RowCount first, RowCount end,
           std::vector<Line>& found) {
    const auto& starts = groups.starts[static_cast<std::size_t>(level)];
    for (std::size_t g = 0; g < starts.size(); ++g) {
        if (starts[g] < first || starts[g] >= end) continue;
        const RowCount behind = g + 1 < starts.size() ? starts[g + 1] : groups.rows;
        const GroupId group{level, static_cast<RowCount>(g)};
        found.push_back({starts[g], group});
        if (!lines.IsOpen(group)) continue;
        if (level + 1 < static_cast<int>(groups.starts.size())) {
            naive(lines, groups, level + 1, starts[g], behind, found);
        } else {
            for (RowCount row = starts[g]; row < behind; ++row)
                found.push_back({row, {}});
        }
    }
}

TEST(LinesTest, RandomGroupsOpenedAndClosedShowTheLinesOfANaiveWalk) {
    std::mt19937 random(4711);
    const auto below = [&](RowCount end) {
        return std::uniform_int_distribution<RowCount>(0, end - 1)(random);
    };
    for (int round = 0; round < 60; ++round) {
        Grouping groups;
        groups.rows = 1 + below(120);
        std::vector<bool> starts(static_cast<std::size_t>(groups.rows));
        for (int level = 0; level <= round % 3; ++level) {
            starts[0] = true;
            for (auto&& start : starts)
                if (below(6) == 0) start = true;
            auto& list = groups.starts.emplace_back();
            for (RowCount row = 0; row < groups.rows; ++row)
                if (starts[static_cast<std::size_t>(row)]) list.push_back(row);
        }
        Lines lines = made(groups, round % 2 == 0);
        for (int step = 0; step < 25; ++step) {
            const int level = static_cast<int>(below(lines.Levels()));
            const auto count = groups.starts[static_cast<std::size_t>(level)].size();
            lines.SetOpen({level, below(static_cast<RowCount>(count))}, below(2) == 0);
            std::vector<Line> expected;
            naive(lines, groups, 0, 0, groups.rows, expected);
            ASSERT_EQ(lines.Count(), static_cast<RowCount>(expected.size()));
            std::vector<RowCount> lineOf(static_cast<std::size_t>(groups.rows), -1);
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_EQ(lines.At(static_cast<RowCount>(i)), expected[i]);
                if (expected[i].IsGroup())
                    ASSERT_EQ(lines.LineOfGroup(expected[i].group), static_cast<RowCount>(i));
                else
                    lineOf[static_cast<std::size_t>(expected[i].row)] = static_cast<RowCount>(i);
            }
            for (RowCount row = 0; row < groups.rows; ++row)
                ASSERT_EQ(lines.LineOfRow(row), lineOf[static_cast<std::size_t>(row)]);
        }
    }
}

// --- what stays open ---

class StayingOpenTest : public testing::Test {
  protected:
    // One group a value and level.
    void group(std::vector<std::vector<Variant>> rows) {
        rows_ = std::move(rows);
        Grouping groups;
        groups.rows = static_cast<RowCount>(rows_.size());
        const auto levels = rows_.empty() ? 2 : rows_.front().size();
        groups.starts.resize(levels);
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            bool differs = row == 0;
            for (std::size_t level = 0; level < levels; ++level) {
                const Expansion::Less less;
                differs = differs || less({rows_[row - 1][level]}, {rows_[row][level]});
                if (differs) groups.starts[level].push_back(static_cast<RowCount>(row));
            }
        }
        lines.SetGroups(std::move(groups), expansion, value());
    }
    Lines::ValueOf value() {
        return [this](int level, RowCount row) {
            ++asked;
            return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(level)];
        };
    }
    std::vector<std::vector<Variant>> rows_;
    Expansion expansion;
    Lines lines;
    int asked = 0;
};

TEST_F(StayingOpenTest, AGroupStaysOpenByItsValueInAnyCaseWhereverItStandsByThen) {
    expansion.SetFields({"citta", "zona"});
    expansion.Set({"Roma"}, true);
    expansion.Set({"Roma", "Nord"}, true);
    group({{"Aosta", "Est"}, {"ROMA", "NORD"}, {"ROMA", "NORD"}, {"ROMA", "Sud"}});
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G1.1 1 2 G1.2");
    group({{"Pisa", "Nord"}});
    EXPECT_EQ(shown(lines), "G0.0");
    group({{"roma", "nord"}, {"Torino", "Nord"}});
    EXPECT_EQ(shown(lines), "G0.0 G1.0 0 G0.1");
}

TEST_F(StayingOpenTest, OneClosedAmongAllOpenStaysClosed) {
    expansion.SetFields({"citta", "zona"});
    expansion.SetAll(true);
    expansion.Set({Variant::null()}, false);
    group({{Variant::null(), "Est"}, {"", "Est"}});
    EXPECT_EQ(shown(lines), "G0.0 G0.1 G1.1 1");
    expansion.Set({Variant::null()}, true);
    EXPECT_TRUE(expansion.Others().empty());
}

TEST_F(StayingOpenTest, AnotherInnerFieldKeepsTheOuterGroupsAnotherOuterOneClosesAll) {
    expansion.SetFields({"citta", "zona"});
    expansion.Set({"Roma"}, true);
    expansion.Set({"Roma", "Nord"}, true);
    expansion.SetFields({"CITTA", "via"});
    EXPECT_TRUE(expansion.IsOpen({"roma"}));
    EXPECT_FALSE(expansion.IsOpen({"Roma", "Nord"}));
    expansion.SetFields({"zona"});
    EXPECT_FALSE(expansion.IsOpen({"Roma"}));
    expansion.SetAll(true);
    expansion.SetFields({"citta"});
    EXPECT_FALSE(expansion.All());
}

TEST_F(StayingOpenTest, FewValuesAreReadHoweverManyGroupsThereAre) {
    expansion.SetFields({"n"});
    expansion.Set({std::int32_t{777}}, true);
    std::vector<std::vector<Variant>> rows;
    rows.reserve(100'000);
    for (std::int32_t i = 0; i < 100'000; ++i)
        rows.push_back({i});
    group(std::move(rows));
    EXPECT_EQ(lines.Count(), 100'001);
    EXPECT_EQ(lines.At(778), (Line{777, {}}));
    EXPECT_LT(asked, 40);
}

} // namespace
} // namespace norvel::grid
