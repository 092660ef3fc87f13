// Rows in groups: what order they get, where groups begin, and what becomes of them when the rows
// change. The plain way of any recordset and the engine's own are held against a naive grouping.
#include "platform/adodb/sort/CellOrder.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <map>
#include <random>

namespace norvel::adodb {
namespace {

using Fields = std::vector<std::string>;
using Starts = std::vector<std::vector<RowCount>>;
using Codes = std::vector<std::int64_t>;

// Of the rows on show, in their order, without moving anybody.
RowBlock readAll(Recordset& rs, const std::vector<Variant>& fields) {
    const auto clone = rs.Clone();
    clone->SetSort(rs.Sort());
    clone->SetFilter(rs.Filter());
    if (clone->RecordCount() == 0) return {};
    return clone->GetRows(-1, std::int32_t{adBookmarkFirst}, fields);
}

// A clone with the same filter and sort.
RecordsetRef twin(Recordset& rs) {
    auto clone = rs.Clone(adLockReadOnly);
    clone->SetSort(rs.Sort());
    clone->SetFilter(rs.Filter());
    return clone;
}

Codes codes(Recordset& rs) {
    Codes found;
    if (rs.RecordCount() == 0) return found;
    const RowBlock block = rs.GetRows(-1, std::int32_t{adBookmarkFirst}, {"codice"});
    for (const Variant& value : block.values[0])
        found.push_back(value.toI8());
    return found;
}

struct Naive {
    Codes codes;
    Grouping groups;
};

// Row after row into a map, whose lists keep the order in which rows came.
Naive naiveGrouping(Recordset& rs, const Fields& fields) {
    using Path = std::vector<Variant>;
    const auto less = [](const Path& a, const Path& b) {
        return std::ranges::lexicographical_compare(
            a, b, [](const Variant& x, const Variant& y) { return compareCells(x, y) < 0; });
    };
    std::vector<Variant> read(fields.begin(), fields.end());
    read.emplace_back("codice");
    const RowBlock block = readAll(rs, read);
    std::map<Path, Codes, decltype(less)> groups(less);
    for (std::size_t row = 0; row < static_cast<std::size_t>(block.rows); ++row) {
        Path path;
        for (std::size_t f = 0; f < fields.size(); ++f)
            path.push_back(block.values[f][row]);
        groups[path].push_back(block.values.back()[row].toI8());
    }
    Naive naive;
    naive.groups.starts.resize(fields.size());
    Path last;
    for (const auto& [path, rows] : groups) {
        for (std::size_t level = 0; level < fields.size(); ++level) {
            const Path outer(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(level) + 1);
            const bool same =
                !last.empty() &&
                !less(Path(last.begin(), last.begin() + static_cast<std::ptrdiff_t>(level + 1)),
                      outer);
            if (!same)
                naive.groups.starts[level].push_back(static_cast<RowCount>(naive.codes.size()));
        }
        last = path;
        naive.codes.insert(naive.codes.end(), rows.begin(), rows.end());
    }
    naive.groups.rows = static_cast<RowCount>(naive.codes.size());
    return naive;
}

void expectGrouped(Recordset& rs, const Fields& fields) {
    const Naive naive = naiveGrouping(rs, fields);
    const auto own = twin(rs);
    EXPECT_EQ(own->GroupBy(fields), naive.groups);
    EXPECT_EQ(codes(*own), naive.codes);
    const auto plain = twin(rs);
    EXPECT_EQ(plain->Recordset::GroupBy(fields), naive.groups);
    EXPECT_EQ(codes(*plain), naive.codes);
}

class GroupByTest : public testing::Test {
  protected:
    // One row a code: whatever the generator gives.
    static RecordsetRef mixture(std::mt19937& random, int rows) {
        static const std::vector<Variant> cities{
            Variant::null(), "",      "Forlì",  "FORLÌ",  "forlì", "Forli", "Forlì", "roma",
            "Roma",          "ROMA ", "Zürich", "zurich", "Ærø",   "a",     "Á"};
        auto rs = makeClientRecordset();
        rs->Fields().Append("codice", adInteger);
        rs->Fields().Append("citta", adVarWChar, 50, adFldIsNullable);
        rs->Fields().Append("numero", adDouble, 0, adFldIsNullable);
        rs->Fields().Append("quando", adDate, 0, adFldIsNullable);
        rs->Fields().Append("attivo", adBoolean, 0, adFldIsNullable);
        rs->Open();
        const auto below = [&](int end) {
            return std::uniform_int_distribution<int>(0, end - 1)(random);
        };
        for (int i = 0; i < rows; ++i) {
            const Variant number = below(8) == 0 ? Variant::null() : Variant((below(9) - 4) * 0.5);
            const Variant when = below(6) == 0 ? Variant::null() : Variant(Date{below(5) + 0.25});
            const Variant active = below(5) == 0 ? Variant::null() : Variant(below(2) == 0);
            rs->AddNew({"codice", "citta", "numero", "quando", "attivo"},
                       {i, cities[static_cast<std::size_t>(below(15))], number, when, active});
        }
        return rs;
    }
};

TEST_F(GroupByTest, CaseVariantsAreOneGroupAccentsAndNullsAreGroupsOfTheirOwnAscending) {
    const auto rs = makeClientRecordset();
    rs->Fields().Append("codice", adInteger);
    rs->Fields().Append("citta", adVarWChar, 50, adFldIsNullable);
    rs->Open();
    int code = 0;
    for (const Variant& city : {Variant("Roma"), Variant("forlì"), Variant::null(), Variant("ROMA"),
                                Variant("Forli"), Variant(""), Variant("roma"), Variant("FORLÌ")})
        rs->AddNew({"codice", "citta"}, {++code, city});
    const auto clone = twin(*rs);
    const Grouping groups = clone->GroupBy({"citta"});
    EXPECT_EQ(codes(*clone), (Codes{3, 6, 5, 2, 8, 1, 4, 7}));
    EXPECT_EQ(groups.starts, (Starts{{0, 1, 2, 3, 5}}));
    EXPECT_EQ(groups.rows, 8);
}

TEST_F(GroupByTest, RandomRowsAreGroupedAsByHandWhateverTheFieldsSortAndFilter) {
    std::mt19937 random(20260);
    const std::vector<Fields> fields{{"citta"},  {"numero"}, {"quando", "citta"},
                                     {"attivo"}, {"codice"}, {"citta", "attivo", "numero"}};
    const std::vector<std::string> sorts{"", "numero DESC", "citta DESC, codice DESC", "codice"};
    const std::vector<Variant> filters{Variant(std::int32_t{0}), "numero > 0", "citta LIKE 'ro*'",
                                       "codice < 40", "codice < 0"};
    for (const int rows : {0, 1, 7, 900}) {
        const auto rs = mixture(random, rows);
        for (const Fields& by : fields)
            for (const std::string& sort : sorts)
                for (const Variant& filter : filters) {
                    SCOPED_TRACE(by.front() + " | " + sort + " | " + filter.toDisplay());
                    rs->SetSort(sort);
                    rs->SetFilter(filter);
                    expectGrouped(*rs, by);
                }
    }
}

TEST_F(GroupByTest, WithinAGroupRowsKeepTheOrderOfTheSortAndTheHostKeepsItsOwn) {
    std::mt19937 random(7);
    const auto rs = mixture(random, 50);
    rs->SetSort("codice DESC");
    rs->MoveLast();
    const auto clone = twin(*rs);
    clone->GroupBy({"attivo"});
    EXPECT_EQ(clone->Sort(), "[attivo], [codice] DESC");
    EXPECT_EQ(rs->Sort(), "codice DESC");
    EXPECT_EQ(current(*rs, "codice"), 0);
    EXPECT_EQ(rs->AbsolutePosition(), 50);
}

TEST_F(GroupByTest, AFieldWithABracketInItsNameGroups) {
    for (const bool own : {true, false}) {
        const auto rs = makeClientRecordset();
        rs->Fields().Append("strano ]nome[", adInteger);
        rs->Open();
        for (const int value : {2, 1, 2})
            rs->AddNew({"strano ]nome["}, {value});
        const Fields by{"strano ]nome["};
        const Grouping groups = own ? rs->GroupBy(by) : rs->Recordset::GroupBy(by);
        EXPECT_EQ(groups.starts, (Starts{{0, 1}}));
        const std::string sort = rs->Sort();
        rs->SetSort("");
        rs->SetSort(sort);
        EXPECT_EQ(rs->Sort(), "[strano ]]nome[]");
    }
}

TEST_F(GroupByTest, AFieldThatIsNotThereIsRefusedAndTheOrderStays) {
    std::mt19937 random(7);
    const auto rs = mixture(random, 5);
    rs->SetSort("codice DESC");
    EXPECT_EQ(errorOf([&] { rs->GroupBy({"citta", "manca"}); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->Recordset::GroupBy({"citta", "manca"}); }), 3265);
    EXPECT_EQ(rs->Sort(), "codice DESC");
    EXPECT_EQ(codes(*rs), (Codes{4, 3, 2, 1, 0}));
    EXPECT_EQ(errorOf([] { makeClientRecordset()->GroupBy({"citta"}); }), 3704);
}

TEST_F(GroupByTest, BookmarksOfTheHostAreFoundInTheGroupedCloneAndBack) {
    std::mt19937 random(99);
    const auto rs = mixture(random, 200);
    const auto clone = twin(*rs);
    clone->GroupBy({"citta", "attivo"});
    for (rs->MoveFirst(); !rs->EOF_(); rs->MoveNext()) {
        clone->SetBookmark(rs->Bookmark());
        EXPECT_EQ(current(*clone, "codice"), current(*rs, "codice"));
    }
    for (RowCount place = 1; place <= 200; ++place) {
        clone->SetAbsolutePosition(place);
        rs->SetBookmark(clone->Bookmark());
        EXPECT_EQ(current(*clone, "codice"), current(*rs, "codice"));
        EXPECT_EQ(clone->AbsolutePosition(), place);
    }
}

TEST_F(GroupByTest, EditsAndDeletesAreInTheNextGrouping) {
    std::mt19937 random(5);
    const auto rs = mixture(random, 300);
    for (int round = 0; round < 30; ++round) {
        const auto held = twin(*rs); // a grouping that somebody still looks at
        held->GroupBy({"citta"});
        rs->SetAbsolutePosition(
            std::uniform_int_distribution<RowCount>(1, rs->RecordCount())(random));
        if (round % 3 == 0) {
            rs->Delete();
        } else {
            rs->Fields()("citta").SetValue(round % 2 == 0 ? Variant("nuova") : Variant::null());
            rs->Update();
        }
        EXPECT_EQ(held->RecordCount(), rs->RecordCount());
        expectGrouped(*rs, {"citta"});
        expectGrouped(*rs, {"attivo", "citta"});
    }
}

TEST_F(GroupByTest, ARowThatIsAddedIsInTheNextGrouping) {
    std::mt19937 random(5);
    const auto rs = mixture(random, 20);
    const auto before = twin(*rs);
    before->GroupBy({"citta"});
    rs->AddNew({"codice", "citta"}, {20, "Aosta"});
    EXPECT_EQ(before->RecordCount(), 20);
    expectGrouped(*rs, {"citta"});
}

TEST_F(GroupByTest, ManyRowsOfFewTextsAreGroupedOnAllProcessors) {
    const auto rs = openOn("Provider=SQLite;Data Source=:memory:",
                           "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i "
                           "< 199999) SELECT i AS codice, 'Comune ' || (i * 7919 % 400) AS comune, "
                           "'Zona ' || (i % 3) AS zona FROM n");
    const auto clone = twin(*rs);
    const Grouping groups = clone->GroupBy({"comune", "zona"});
    ASSERT_EQ(groups.starts[0].size(), 400);
    EXPECT_EQ(groups.starts[1].size(), 1200);
    for (std::size_t g = 0; g < 400; ++g)
        EXPECT_EQ(groups.starts[0][g], static_cast<RowCount>(g) * 500);
    const Codes found = codes(*clone);
    for (std::size_t i = 0; i + 1 < found.size(); ++i) {
        const auto next = static_cast<RowCount>(i) + 1;
        if (std::ranges::binary_search(groups.starts[1], next)) continue;
        ASSERT_LT(found[i], found[i + 1]) << "rows keep their order";
        ASSERT_EQ(found[i] * 7919 % 400, found[i + 1] * 7919 % 400);
    }
    expectGrouped(*rs, {"zona"});
}

class GroupedFetchTest : public testing::Test {
  protected:
    std::shared_ptr<Script> script = std::make_shared<Script>();
    ProviderDouble provider{script};
};

TEST_F(GroupedFetchTest, RowsThatComeLaterDoNotMoveTheGroupsThatWereTold) {
    script->rows = 200'000;
    script->holdAt = 100'000;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    const std::string field = rs->Fields()(std::int32_t{0}).Name();
    const auto clone = rs->Clone(adLockReadOnly);
    const Grouping some = clone->GroupBy({field});
    const RowCount there = some.rows;
    EXPECT_GT(there, 0);
    EXPECT_LT(there, 200'000);
    script->go();
    ASSERT_TRUE(rs->WaitFetch(20'000));
    EXPECT_EQ(rs->RecordCount(), 200'000);
    EXPECT_EQ(clone->RecordCount(), there);
    const auto again = rs->Clone(adLockReadOnly);
    EXPECT_EQ(again->GroupBy({field}).rows, 200'000);
}

TEST_F(GroupedFetchTest, WhatCameOfAFetchThatBrokeOffIsGrouped) {
    script->rows = 50'000;
    script->failAt = 20'000;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    rs->WaitFetch(20'000);
    ASSERT_TRUE(rs->FetchError());
    const std::string field = rs->Fields()(std::int32_t{0}).Name();
    const RowCount came = rs->RecordCount();
    EXPECT_GT(came, 0);
    EXPECT_EQ(rs->Clone(adLockReadOnly)->GroupBy({field}).rows, came);
    EXPECT_EQ(rs->Clone(adLockReadOnly)->Recordset::GroupBy({field}).rows, came);
}

} // namespace
} // namespace norvel::adodb
