// The sort of a recordset: the order in which rows show, what stays where it was, who is told.
#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <random>

namespace norvel::adodb {
namespace {

using Codes = std::vector<std::int64_t>;

// From the first row on, by moves.
Codes codes(Recordset& rs) {
    Codes found;
    if (rs.RecordCount() == 0) return found;
    for (rs.MoveFirst(); !rs.EOF_(); rs.MoveNext())
        found.push_back(current(rs, "codice"));
    return found;
}

// The same by one block, without moving the recordset.
Codes shown(Recordset& rs) {
    const auto clone = rs.Clone();
    clone->SetFilter(rs.Filter());
    clone->SetSort(rs.Sort());
    Codes found;
    if (clone->RecordCount() == 0) return found;
    const RowBlock block = clone->GetRows(-1, std::int32_t{adBookmarkFirst}, {"codice"});
    for (const Variant& value : block.values[0])
        found.push_back(value.toI8());
    return found;
}

class SortedRecordsetTest : public testing::Test {
  protected:
    SortedRecordsetTest()
        : text(folder.database(
              "prova.db",
              "CREATE TABLE clienti (codice INTEGER, nome TEXT, \"data nascita\" DATE);"
              "INSERT INTO clienti VALUES (1, 'rossi', '1970-05-01'), (2, 'Bianchi', NULL),"
              "(3, 'Àlberti', '1960-01-01'), (4, NULL, '1980-01-01'), (5, 'ROSSI', "
              "'1965-01-01')")) {}
    RecordsetRef clienti() const { return openOn(text, "SELECT * FROM clienti"); }

    TemporaryFolder folder;
    std::string text;
};

TEST_F(SortedRecordsetTest, NullsComeFirstAscendingAndEqualRowsKeepTheirOrderBothWays) {
    const auto rs = clienti();
    rs->SetSort("[nome]  asc");
    EXPECT_EQ(codes(*rs), (Codes{4, 3, 2, 1, 5}));
    EXPECT_EQ(rs->Sort(), "[nome]  asc");
    rs->SetSort("[nome]  desc");
    EXPECT_EQ(codes(*rs), (Codes{1, 5, 2, 3, 4}));
    EXPECT_EQ(shown(*rs), (Codes{1, 5, 2, 3, 4}));
    rs->SetSort("nome, codice DESC");
    EXPECT_EQ(codes(*rs), (Codes{4, 3, 2, 5, 1}));
    rs->SetSort("");
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3, 4, 5}));
    EXPECT_EQ(rs->Sort(), "");
}

TEST_F(SortedRecordsetTest, AFieldNameWithBlanksSortsInBrackets) {
    const auto rs = clienti();
    rs->SetSort("[data nascita]  asc");
    EXPECT_EQ(codes(*rs), (Codes{2, 3, 5, 1, 4}));
}

TEST_F(SortedRecordsetTest, TheCursorStaysOnItsRowAndTheBookmarksHold) {
    const auto rs = clienti();
    rs->SetAbsolutePosition(2);
    const Variant bianchi = rs->Bookmark();
    rs->SetSort("nome");
    EXPECT_EQ(current(*rs, "codice"), 2);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->MovePrevious();
    EXPECT_EQ(current(*rs, "codice"), 3);
    rs->SetBookmark(bianchi);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->SetSort("nome DESC");
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    EXPECT_EQ(current(*rs, "codice"), 2);
    rs->MoveNext();
    EXPECT_EQ(current(*rs, "codice"), 3);
    rs->MoveLast();
    const Variant last = rs->Bookmark();
    rs->MoveFirst();
    EXPECT_EQ(rs->CompareBookmarks(rs->Bookmark(), last), adCompareLessThan);
    rs->SetSort("nome");
    EXPECT_EQ(rs->CompareBookmarks(rs->Bookmark(), last), adCompareGreaterThan);
}

TEST_F(SortedRecordsetTest, AtTheEdgesTheCursorStaysThere) {
    const auto rs = clienti();
    rs->MoveLast();
    rs->MoveNext();
    rs->SetSort("nome");
    EXPECT_TRUE(rs->EOF_());
    rs->MovePrevious();
    EXPECT_EQ(current(*rs, "codice"), 5);
    rs->MoveFirst();
    rs->MovePrevious();
    rs->SetSort("");
    EXPECT_TRUE(rs->BOF());
    rs->MoveNext();
    EXPECT_EQ(current(*rs, "codice"), 1);
}

TEST_F(SortedRecordsetTest, FilterAndSortAreIndependent) {
    const auto rs = clienti();
    rs->SetSort("codice DESC");
    rs->SetFilter("nome LIKE '*ssi*'");
    EXPECT_EQ(codes(*rs), (Codes{5, 1}));
    EXPECT_EQ(rs->AbsolutePosition(), adPosEOF);
    rs->SetFilter("nome LIKE '*rossi*'"); // narrows: found among the rows that show
    EXPECT_EQ(codes(*rs), (Codes{5, 1}));
    rs->SetSort("codice");
    EXPECT_EQ(codes(*rs), (Codes{1, 5}));
    EXPECT_EQ(rs->Filter().text(), "nome LIKE '*rossi*'");
    rs->SetFilter("codice>2");
    EXPECT_EQ(codes(*rs), (Codes{3, 4, 5}));
    EXPECT_EQ(rs->Sort(), "codice");
    rs->SetFilter("");
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3, 4, 5}));
}

TEST_F(SortedRecordsetTest, ARefusedSortLeavesTheOldOneTheRowAndTheFilter) {
    const auto rs = clienti();
    rs->SetFilter("codice>1");
    rs->SetSort("nome");
    rs->MoveLast();
    EventLog log;
    rs->Subscribe(&log);
    EXPECT_EQ(errorOf([&] { rs->SetSort("manca"); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->SetSort("nome,"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetSort("nome, [NOME] DESC"); }), dbCantOrder);
    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(rs->Sort(), "nome");
    EXPECT_EQ(current(*rs, "codice"), 5);
    EXPECT_EQ(codes(*rs), (Codes{4, 3, 2, 5}));
    rs->Unsubscribe(&log);
}

TEST_F(SortedRecordsetTest, TellsThatTheViewChangedAndNoMove) {
    const auto rs = clienti();
    EventLog log;
    rs->Subscribe(&log);
    rs->SetSort("nome");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"ViewChanged"}));
    rs->Unsubscribe(&log);
}

TEST_F(SortedRecordsetTest, AClosedRecordsetKeepsASortForItsOpening) {
    const auto rs = makeClientRecordset();
    rs->SetSort("codice DESC");
    EXPECT_EQ(rs->Sort(), "codice DESC");
    rs->Open("SELECT * FROM clienti", text);
    EXPECT_EQ(current(*rs, "codice"), 5);
    rs->Close();
    EXPECT_EQ(rs->Sort(), "");
}

TEST_F(SortedRecordsetTest, ClonesHaveSortsOfTheirOwn) {
    const auto rs = clienti();
    rs->SetSort("codice DESC");
    const auto clone = rs->Clone();
    EXPECT_EQ(clone->Sort(), "");
    EXPECT_EQ(codes(*clone), (Codes{1, 2, 3, 4, 5}));
    clone->SetSort("nome");
    EXPECT_EQ(codes(*clone), (Codes{4, 3, 2, 1, 5}));
    EXPECT_EQ(codes(*rs), (Codes{5, 4, 3, 2, 1}));
    clone->SetSort("codice DESC"); // the view that rs has
    rs->SetSort("codice");         // turned round; the clone's stays
    EXPECT_EQ(codes(*clone), (Codes{5, 4, 3, 2, 1}));
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3, 4, 5}));
}

TEST_F(SortedRecordsetTest, SurvivesARequery) {
    const auto rs = clienti();
    rs->SetSort("nome DESC");
    rs->SetFilter("codice<5");
    rs->Requery();
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3, 4}));
    EXPECT_EQ(rs->Sort(), "nome DESC");
}

// 0, 1, 2… come from a source that is held in the middle.
TEST_F(SortedRecordsetTest, RowsThatAFetchBringsGoToTheirPlacesAndTheCursorFollowsItsRow) {
    const auto script = std::make_shared<Script>();
    const ProviderDouble provider(script);
    script->rows = 3000;
    script->holdAt = 1000;
    const auto rs = openDouble(adAsyncFetchNonBlocking);
    ASSERT_TRUE(deliverUntil([&] { return rs->RecordCount() == 1000; }));
    rs->SetSort("n DESC");
    EXPECT_EQ(current(*rs), 0);
    EXPECT_EQ(rs->AbsolutePosition(), 1000);
    script->go();
    ASSERT_TRUE(deliverUntil([&] { return rs->State() == adStateOpen; }));
    EXPECT_EQ(current(*rs), 0);
    EXPECT_EQ(rs->AbsolutePosition(), 3000);
    rs->MoveFirst();
    EXPECT_EQ(current(*rs), 2999);
    const RowBlock block = rs->GetRows();
    ASSERT_EQ(block.rows, 3000);
    for (std::size_t i = 0; i < 3000; ++i)
        ASSERT_EQ(block.values[0][i].toI8(), static_cast<std::int64_t>(2999 - i));
}

// Turned round a list is read backwards, runs of equal rows forwards: every position, every row.
TEST_F(SortedRecordsetTest, TurningRoundAgreesWithSortingAnewWhateverTheRunsOfEquals) {
    std::mt19937 chance(20261121);
    for (int round = 0; round < 40; ++round) {
        const int rows = 1 + static_cast<int>(chance() % 200);
        const int kinds = 1 + static_cast<int>(chance() % (round % 2 ? 200 : 5));
        const auto rs = makeClientRecordset();
        rs->Fields().Append("codice", adInteger);
        rs->Fields().Append("gruppo", adInteger);
        rs->Open();
        std::vector<std::pair<std::int64_t, std::int64_t>> expected;
        for (int i = 0; i < rows; ++i) {
            const auto group = static_cast<std::int32_t>(chance() % static_cast<unsigned>(kinds));
            rs->AddNew({"codice", "gruppo"}, {std::int32_t{i}, group});
            expected.emplace_back(group, i);
        }
        rs->SetSort("gruppo");
        rs->SetSort("gruppo DESC");
        std::ranges::stable_sort(expected, [](auto a, auto b) { return a.first > b.first; });
        Codes wanted;
        for (const auto& row : expected)
            wanted.push_back(row.second);
        ASSERT_EQ(shown(*rs), wanted) << "round " << round;
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            rs->SetAbsolutePosition(static_cast<RowCount>(i) + 1);
            ASSERT_EQ(current(*rs, "codice"), wanted[i]);
            rs->SetBookmark(rs->Bookmark());
            ASSERT_EQ(rs->AbsolutePosition(), static_cast<RowCount>(i) + 1);
        }
        rs->SetFilter("codice>=0"); // shown through a filter, still turned
        ASSERT_EQ(shown(*rs), wanted);
        rs->AddNew({"codice", "gruppo"}, {std::int32_t{rows}, std::int32_t{-1}});
        EXPECT_EQ(rs->AbsolutePosition(), rs->RecordCount()) << "the least goes last";
        rs->SetSort("gruppo");
        EXPECT_EQ(rs->AbsolutePosition(), 1);
    }
}

// Once many rows were looked for, where each one stands is kept while the order stays.
class ManyLookedForTest : public SortedRecordsetTest {
  protected:
    void SetUp() override {
        rs->Fields().Append("codice", adInteger);
        rs->Fields().Append("nome", adVarWChar, 20);
        rs->SetLockType(adLockOptimistic);
        rs->Open();
        for (int i = 0; i < 1500; ++i)
            add(i);
    }
    void add(int code) {
        rs->AddNew({"codice", "nome"}, {code, "nome " + std::to_string(code * 7919 % 37)});
        rs->Update();
    }
    // In a walk over the places in an order of its own, each row is found where it shows.
    void expectFound() {
        const auto rows = static_cast<std::size_t>(rs->RecordCount());
        std::vector<Variant> bookmarks;
        for (rs->MoveFirst(); !rs->EOF_(); rs->MoveNext())
            bookmarks.push_back(rs->Bookmark());
        ASSERT_EQ(bookmarks.size(), rows);
        std::size_t wrong = 0;
        for (std::size_t i = 0, at = 0; i < rows; ++i, at = (at + 1009) % rows) {
            rs->SetBookmark(bookmarks[at]);
            if (rs->AbsolutePosition() != static_cast<RowCount>(at) + 1) ++wrong;
        }
        EXPECT_EQ(wrong, 0U) << rs->Sort();
    }
    RecordsetRef rs = makeClientRecordset();
};

TEST_F(ManyLookedForTest, EachIsWhereItShowsInEveryOrderAndBehindEveryFilter) {
    for (const char* sort : {"nome", "nome DESC", "nome DESC, codice DESC", "codice DESC"}) {
        rs->SetSort(sort);
        expectFound();
        rs->SetFilter("codice > 300");
        expectFound();
        rs->SetFilter(adFilterNone);
        expectFound();
    }
}

TEST_F(ManyLookedForTest, RowsThatChangeComeAndGoAreWhereTheyShowThen) {
    for (const char* sort : {"nome", "nome DESC"}) {
        rs->SetSort(sort);
        expectFound();
        rs->SetAbsolutePosition(1200);
        const Variant bookmark = rs->Bookmark();
        rs->Fields()("nome").SetValue("a");
        rs->Update();
        rs->SetBookmark(bookmark);
        EXPECT_EQ(rs->AbsolutePosition(), rs->Sort() == "nome" ? 1 : rs->RecordCount());
        expectFound();
        rs->SetAbsolutePosition(700);
        const Variant gone = rs->Bookmark();
        rs->Delete();
        EXPECT_NE(errorOf([&] { rs->SetBookmark(gone); }), 0);
        expectFound();
        add(5000);
        expectFound();
    }
}

TEST_F(ManyLookedForTest, ARowThatDoesNotShowIsNotFound) {
    rs->MoveFirst();
    const Variant first = rs->Bookmark();
    rs->MoveLast();
    const Variant last = rs->Bookmark();
    rs->SetSort("nome");
    rs->SetFilter("codice > 0 AND codice < 1499");
    expectFound();
    EXPECT_NE(errorOf([&] { rs->SetBookmark(first); }), 0);
    EXPECT_NE(errorOf([&] { rs->SetBookmark(last); }), 0);
}

} // namespace
} // namespace norvel::adodb
