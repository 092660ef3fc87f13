// Which filters only look at the rows that another one kept.
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/FilterMixture.h"

#include <algorithm>

namespace norvel::adodb {
namespace {

bool narrows(const std::vector<ColumnInfo>& columns, const std::string& narrower,
             const std::string& wider) {
    return FilterProgram::compile(parseFilter(narrower), columns)
        ->narrows(*FilterProgram::compile(parseFilter(wider), columns));
}

TEST(FilterNarrowing, NumbersByTheirOrder) {
    const std::vector<ColumnInfo> columns{describeColumn("n", adInteger)};
    const char* yes[][2] = {{"n>5", "n>3"},
                            {"n>5", "n>=5"},
                            {"n>5", "n<>5"},
                            {"n>5", "n<>4"},
                            {"n>=5", "n>4"},
                            {"n>=5", "n>=5"},
                            {"n<2", "n<3"},
                            {"n<2", "n<=2"},
                            {"n<=2", "n<3"},
                            {"n<=2", "n<>3"},
                            {"n=4", "n>3"},
                            {"n=4", "n<=4"},
                            {"n=4", "n>=4"},
                            {"n=4", "n<>5"},
                            {"n=4", "n=4.0"},
                            {"n<>4", "n<>4"},
                            {"n>5", "n<>NULL"},
                            {"n=4", "n=4 OR n=5"},
                            {"n=4 OR n=5", "n>3"},
                            {"n=4 OR n=5", "n=5 OR n=3 OR n=4"},
                            {"n<>4 AND n<>5", "n<>4"},
                            {"n<>4 AND n<>5 AND n<>6", "n<>5 AND n<>4"},
                            {"n>9", "n<>4 AND n<>5"},
                            {"n>3 AND n<9", "n>2"}};
    for (const auto& [narrower, wider] : yes)
        EXPECT_TRUE(narrows(columns, narrower, wider)) << narrower << " / " << wider;
    const char* no[][2] = {{"n>3", "n>5"},        {"n>=5", "n>5"},
                           {"n>=5", "n<>5"},      {"n<=2", "n<2"},
                           {"n=4", "n>4"},        {"n=4", "n<>4"},
                           {"n=4", "n<4"},        {"n<>4", "n>4"},
                           {"n<>4", "n<>5"},      {"n>5", "n<9"},
                           {"n>5", "n=6"},        {"n=4 OR n=5", "n=4"},
                           {"n=4 OR n=5", "n>4"}, {"n<>4", "n<>4 AND n<>5"},
                           {"n=4", "n=NULL"}};
    for (const auto& [narrower, wider] : no)
        EXPECT_FALSE(narrows(columns, narrower, wider)) << narrower << " / " << wider;
}

TEST(FilterNarrowing, TextsAndSets) {
    const std::vector<ColumnInfo> columns{describeColumn("a", adVarWChar)};
    EXPECT_TRUE(narrows(columns, "a='x'", "a='X' OR a='y'"));
    EXPECT_TRUE(narrows(columns, "a='xa' OR a='xb'", "a LIKE 'x*'"));
    EXPECT_TRUE(narrows(columns, "a='x'", "a<>'y'"));
    EXPECT_TRUE(narrows(columns, "a='x'", "a<>'y' AND a<>'z'"));
    EXPECT_FALSE(narrows(columns, "a='x'", "a<>'y' AND a<>'x'"));
    EXPECT_FALSE(narrows(columns, "a='xa' OR a='yb'", "a LIKE 'x*'"));
    EXPECT_FALSE(narrows(columns, "a<'x'", "a<'y'")) << "collation is not looked into";
    EXPECT_TRUE(narrows(columns, "a<'x'", "a<'X'"));
}

// Where it says that a filter narrows, every row of one is a row of the other.
TEST(FilterNarrowing, IsNeverClaimedWrongly) {
    Mixture mixture(2026);
    const ColumnStore& store = *mixture.store;
    std::vector<std::string> filters(500);
    for (std::size_t i = 0; i < filters.size(); ++i) {
        filters[i] = mixture.clause();
        if (i % 4 < 2) filters[i] += (i % 4 == 0 ? " AND " : " OR ") + mixture.clause();
    }
    std::vector<std::shared_ptr<const FilterProgram>> programs;
    programs.reserve(filters.size());
    std::vector<RowList> rows;
    for (const std::string& filter : filters) {
        programs.push_back(compiled(store, filter));
        rows.emplace_back();
        programs.back()->run(store, 0, static_cast<RowNumber>(store.rows()), rows.back());
    }
    int claimed = 0;
    for (std::size_t a = 0; a < filters.size(); ++a)
        for (std::size_t b = 0; b < filters.size(); ++b) {
            if (a == b || !programs[a]->narrows(*programs[b])) continue;
            ++claimed;
            ASSERT_TRUE(std::ranges::includes(rows[b], rows[a]))
                << filters[a] << " / " << filters[b];
        }
    EXPECT_GT(claimed, 500);
}

} // namespace
} // namespace norvel::adodb
