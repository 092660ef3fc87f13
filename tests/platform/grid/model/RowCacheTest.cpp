#include "platform/grid/model/RowCache.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using adodb::RowCount;
using Gap = RowCache::Gap;

void store(RowCache& cache, const Gap& gap) {
    std::vector<std::vector<std::string>> texts;
    std::vector<Variant> bookmarks;
    for (const int field : gap.fields) {
        std::vector<std::string> column;
        for (RowCount i = 0; i < gap.count; ++i)
            column.push_back(std::to_string(gap.first + i) + "/" + std::to_string(field));
        texts.push_back(std::move(column));
    }
    for (RowCount i = 0; i < gap.count; ++i)
        bookmarks.emplace_back(gap.first + i + 1);
    cache.Store(gap, std::move(texts), std::move(bookmarks));
}

void fill(RowCache& cache, RowCount first, RowCount count, const std::vector<int>& fields,
          RowCount rows) {
    for (const Gap& gap : cache.Missing(first, count, fields, rows))
        store(cache, gap);
}

// What is asked for, in a recordset of so many rows, after another request was answered.
struct Case {
    const char* name;
    RowCount rows;
    struct {
        RowCount first, count;
        std::vector<int> fields;
    } before, asked;
    std::vector<Gap> missing;
};

class RowCacheTable : public testing::TestWithParam<Case> {};

TEST_P(RowCacheTable, TellsWhatIsMissing) {
    const Case& c = GetParam();
    RowCache cache;
    fill(cache, c.before.first, c.before.count, c.before.fields, c.rows);
    EXPECT_EQ(cache.Missing(c.asked.first, c.asked.count, c.asked.fields, c.rows), c.missing);
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, RowCacheTable,
    testing::Values(
        Case{"nothing_held", 1000, {0, 0, {}}, {0, 10, {0, 1}}, {{0, 64, {0, 1}}}},
        Case{"all_held", 1000, {0, 10, {0, 1}}, {50, 14, {1, 0}}, {}},
        Case{"next_block", 1000, {0, 10, {0}}, {60, 10, {0}}, {{64, 64, {0}}}},
        Case{"two_blocks", 1000, {0, 0, {}}, {60, 10, {0}}, {{0, 64, {0}}, {64, 64, {0}}}},
        Case{"a_column_more", 1000, {0, 10, {0}}, {0, 10, {2, 0, 1}}, {{0, 64, {1, 2}}}},
        Case{"the_last_block_is_short",
             70,
             {0, 0, {}},
             {60, 100, {0}},
             {{0, 64, {0}}, {64, 6, {0}}}},
        Case{"behind_the_last_row", 70, {0, 0, {}}, {70, 10, {0}}, {}},
        Case{"before_the_first_row", 70, {0, 0, {}}, {-5, 3, {0}}, {}},
        Case{"no_rows", 0, {0, 0, {}}, {0, 50, {0}}, {}},
        Case{"no_columns", 70, {0, 0, {}}, {0, 50, {}}, {}},
        Case{"far_down", 10'000'000, {0, 50, {0}}, {9'999'990, 10, {0}}, {{9'999'936, 64, {0}}}}),
    [](const auto& instance) { return instance.param.name; });

TEST(RowCache, GivesBackCellsAndBookmarks) {
    RowCache cache;
    fill(cache, 100, 50, {3, 7}, 1000);
    ASSERT_NE(cache.Text(130, 7), nullptr);
    EXPECT_EQ(*cache.Text(130, 7), "130/7");
    EXPECT_EQ(cache.Text(130, 4), nullptr);
    EXPECT_EQ(cache.Text(500, 7), nullptr);
    EXPECT_EQ(cache.Text(-1, 7), nullptr);
    ASSERT_NE(cache.Bookmark(130), nullptr);
    EXPECT_EQ(cache.Bookmark(130)->toI8(), 131);
    EXPECT_EQ(cache.Bookmark(-1), nullptr);
}

TEST(RowCache, ABlockThatWasShortIsReadAgainOnceMoreRowsArrived) {
    RowCache cache;
    fill(cache, 0, 10, {0}, 10);
    EXPECT_TRUE(cache.Missing(0, 10, {0}, 40).empty()) << "what is asked is there";
    EXPECT_EQ(cache.Missing(0, 20, {0}, 40), (std::vector<Gap>{{0, 40, {0}}}));
}

TEST(RowCache, AReadThatBroughtFewerRowsLeavesTheRestMissing) {
    RowCache cache;
    cache.Store({0, 64, {0}}, {{"a", "b"}}, {1, 2});
    EXPECT_NE(cache.Text(1, 0), nullptr);
    EXPECT_EQ(cache.Text(2, 0), nullptr);
    EXPECT_EQ(cache.Missing(0, 5, {0}, 64).size(), 1U);
}

TEST(RowCache, DropsWhatWasUsedLeastRecently) {
    RowCache measure;
    fill(measure, 0, 1, {0}, 10'000);
    RowCache cache(3 * measure.Bytes() + measure.Bytes() / 2); // three blocks
    for (RowCount block = 0; block < 3; ++block)
        fill(cache, block * 64, 1, {0}, 10'000);
    fill(cache, 0, 1, {0}, 10'000); // the first one is used again
    fill(cache, 3 * 64, 1, {0}, 10'000);
    EXPECT_NE(cache.Text(3 * 64, 0), nullptr);
    EXPECT_NE(cache.Text(0, 0), nullptr);
    EXPECT_EQ(cache.Text(64, 0), nullptr);
}

TEST(RowCache, KeepsAllOfOneRequestHoweverLarge) {
    RowCache cache(100);
    fill(cache, 0, 640, {0}, 10'000);
    EXPECT_TRUE(cache.Missing(0, 640, {0}, 10'000).empty());
    fill(cache, 5000, 1, {0}, 10'000);
    EXPECT_EQ(cache.Text(0, 0), nullptr);
    EXPECT_NE(cache.Text(5000, 0), nullptr);
    cache.Clear();
    EXPECT_EQ(cache.Bytes(), 0U);
}

TEST(RowCache, TenThousandPagesLeaveNoMoreThanTheLimitBehind) {
    constexpr std::size_t limit = 1 << 20;
    RowCache cache(limit);
    for (RowCount page = 0; page < 10'000; ++page)
        fill(cache, page * 997, 50, {0, 1}, 10'000'000);
    EXPECT_LE(cache.Bytes(), limit);
    EXPECT_GT(cache.Bytes(), limit / 2);
}

} // namespace
} // namespace norvel::grid
