// The filter of a recordset: which rows show, where the cursor goes, who is told.
#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>

namespace norvel::adodb {
namespace {

using Lines = std::vector<std::string>;

class FilterTest : public testing::Test {
  protected:
    FilterTest()
        : text(folder.database(
              "prova.db", "CREATE TABLE clienti (codice INTEGER, nome TEXT, saldo REAL);"
                          "INSERT INTO clienti VALUES (1, 'Rossi', 10.5), (2, 'Bianchi', NULL),"
                          "(3, 'ROSSINI', -1), (4, NULL, 0), (5, 'Verdi', 7)")) {}

    RecordsetRef clienti() const { return openOn(text, "SELECT * FROM clienti"); }
    // The codes of the rows on show.
    static std::vector<std::int64_t> codes(Recordset& rs) {
        std::vector<std::int64_t> found;
        if (rs.RecordCount() == 0) return found;
        for (rs.MoveFirst(); !rs.EOF_(); rs.MoveNext())
            found.push_back(current(rs, "codice"));
        return found;
    }
    using Codes = std::vector<std::int64_t>;

    TemporaryFolder folder;
    std::string text;
};

TEST_F(FilterTest, ShowsTheRowsThatMatchAndGoesToTheFirst) {
    const auto rs = clienti();
    rs->MoveLast();
    rs->SetFilter("nome LIKE '*rossi*'");
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(current(*rs, "codice"), 1);
    EXPECT_EQ(codes(*rs), (Codes{1, 3}));
    EXPECT_EQ(rs->Filter().text(), "nome LIKE '*rossi*'");
    rs->MoveLast();
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    EXPECT_EQ(current(*rs, "codice"), 3);
    rs->SetAbsolutePosition(1);
    EXPECT_EQ(current(*rs, "codice"), 1);
    EXPECT_EQ(errorOf([&] { rs->SetAbsolutePosition(3); }), 3001);
    rs->SetFilter(std::int32_t{adFilterNone});
    EXPECT_EQ(rs->RecordCount(), 5);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(rs->Filter().toI8(), 0);
}

TEST_F(FilterTest, WithoutAMatchTheRecordsetIsEmpty) {
    const auto rs = clienti();
    rs->SetFilter("codice>100");
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->BOF());
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(rs->AbsolutePosition(), adPosUnknown);
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
    EXPECT_EQ(errorOf([&] { current(*rs, "codice"); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Bookmark(); }), 3021);
    rs->SetFilter("");
    EXPECT_EQ(current(*rs, "codice"), 1);
}

TEST_F(FilterTest, ARefusedFilterLeavesTheOldOneAndTheCursor) {
    const auto rs = clienti();
    rs->SetFilter("codice>1");
    rs->MoveLast();
    EventLog log;
    rs->Subscribe(&log);
    EXPECT_EQ(errorOf([&] { rs->SetFilter("manca=1"); }), 3265);
    EXPECT_EQ(errorOf([&] { rs->SetFilter("codice="); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetFilter("codice=#pippo#"); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetFilter({}); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetFilter(Variant::null()); }), 3001);
    EXPECT_EQ(errorOf([&] { rs->SetFilter(std::int32_t{4}); }), 3001);
    EXPECT_EQ(rs->Filter().text(), "codice>1");
    EXPECT_EQ(rs->RecordCount(), 4);
    EXPECT_EQ(current(*rs, "codice"), 5);
    EXPECT_EQ(log.lines, Lines{});
    rs->Unsubscribe(&log);
}

TEST_F(FilterTest, TellsOfTheViewAndOfTheMove) {
    const auto rs = clienti();
    EventLog log;
    rs->Subscribe(&log);
    rs->SetFilter("codice>1");
    EXPECT_EQ(log.lines, (Lines{"WillMove 10", "ViewChanged", "MoveComplete 10"}));
    log.lines.clear();
    rs->SetFilter("codice>100");
    EXPECT_EQ(log.lines, (Lines{"WillMove 10", "ViewChanged", "MoveComplete 10"}));
    log.lines.clear();
    log.cancel = "WillMove 10";
    EXPECT_EQ(errorOf([&] { rs->SetFilter(""); }), 3712);
    EXPECT_EQ(rs->RecordCount(), 0) << "a move that is refused leaves the filter";
    rs->Unsubscribe(&log);
}

TEST_F(FilterTest, BookmarksOfRowsThatDoNotShowAreBad) {
    const auto rs = clienti();
    rs->MoveLast();
    const Variant last = rs->Bookmark();
    rs->MoveFirst();
    const Variant first = rs->Bookmark();
    rs->SetFilter("codice<5");
    EXPECT_EQ(errorOf([&] { rs->SetBookmark(last); }), dbBadBookmark);
    rs->MoveLast();
    rs->SetBookmark(first);
    EXPECT_EQ(current(*rs, "codice"), 1);
    EXPECT_EQ(rs->Bookmark(), first) << "a row keeps its bookmark whatever the filter";
    rs->SetFilter("");
    rs->SetBookmark(last);
    EXPECT_EQ(current(*rs, "codice"), 5);
}

TEST_F(FilterTest, AnArrayOfBookmarksShowsThoseRows) {
    const auto rs = clienti();
    std::vector<Variant> marks;
    for (const RowCount position : {4, 2, 2}) {
        rs->SetAbsolutePosition(position);
        marks.push_back(rs->Bookmark());
    }
    rs->SetFilter(marks);
    EXPECT_EQ(codes(*rs), (Codes{2, 4}));
    EXPECT_EQ(rs->Filter().array().size(), 3U);
    const auto other = clienti();
    EXPECT_EQ(errorOf([&] { other->SetFilter(marks); }), dbBadBookmark);
    EXPECT_EQ(errorOf([&] { other->SetFilter(std::vector<Variant>{"x"}); }), 3001);
    EXPECT_EQ(other->RecordCount(), 5);
}

TEST_F(FilterTest, GroupsOfRecords) {
    const auto rs = clienti();
    rs->SetFilter(std::int32_t{adFilterFetchedRecords});
    EXPECT_EQ(rs->RecordCount(), 5);
    EXPECT_EQ(rs->Filter().toI8(), adFilterFetchedRecords);
    rs->SetFilter(std::int32_t{adFilterPendingRecords});
    EXPECT_EQ(rs->RecordCount(), 0) << "nothing waits to be sent";
}

TEST_F(FilterTest, CloneHasAFilterOfItsOwn) {
    const auto rs = clienti();
    rs->SetFilter("codice>3");
    const auto clone = rs->Clone();
    EXPECT_EQ(clone->Filter().toI8(), 0) << "a filter is not inherited";
    EXPECT_EQ(clone->RecordCount(), 5);
    clone->SetFilter("codice<3");
    EXPECT_EQ(codes(*clone), (Codes{1, 2}));
    EXPECT_EQ(codes(*rs), (Codes{4, 5}));
    clone->SetFilter("codice>3");
    EXPECT_EQ(codes(*clone), (Codes{4, 5}));
}

TEST_F(FilterTest, GetRowsReadsTheRowsOnShow) {
    const auto rs = clienti();
    rs->SetFilter("nome<>NULL");
    const RowBlock block = rs->GetRows(-1, {}, {"codice"});
    ASSERT_EQ(block.rows, 4);
    EXPECT_EQ(block.values[0][2].toI8(), 3);
    EXPECT_TRUE(rs->EOF_());
    rs->SetBookmark(block.bookmarks[3]);
    EXPECT_EQ(current(*rs, "codice"), 5);
}

TEST_F(FilterTest, AClosedRecordsetKeepsAFilterUnreadAndOpensWithIt) {
    const auto rs = makeClientRecordset();
    rs->SetFilter("codice=2");
    rs->Open("SELECT * FROM clienti", text);
    EXPECT_EQ(codes(*rs), Codes{2});
    rs->Close();
    EXPECT_EQ(rs->Filter().toI8(), 0);
    rs->SetFilter("((((");
    rs->Open("SELECT * FROM clienti", text);
    EXPECT_EQ(rs->RecordCount(), 5);
    EXPECT_EQ(rs->Filter().toI8(), 0);
}

TEST_F(FilterTest, RequeryKeepsTheFilterButNotTheBookmarks) {
    const auto rs = clienti();
    rs->SetFilter("codice>3");
    rs->Requery();
    EXPECT_EQ(codes(*rs), (Codes{4, 5}));
    EXPECT_EQ(rs->Filter().text(), "codice>3");
    rs->MoveFirst();
    rs->SetFilter(std::vector<Variant>{rs->Bookmark()});
    EXPECT_EQ(rs->RecordCount(), 1);
    rs->Requery();
    EXPECT_EQ(rs->RecordCount(), 5);
    EXPECT_EQ(rs->Filter().toI8(), 0);
}

TEST_F(FilterTest, ANewRowThatTheFilterDoesNotShowLeavesTheCursorAtTheEnd) {
    const auto rs = makeClientRecordset();
    rs->Fields().Append("n", adInteger);
    rs->Open();
    for (const int n : {1, 2, 3})
        rs->AddNew({"n"}, {n});
    rs->SetFilter("n>1");
    EXPECT_EQ(rs->RecordCount(), 2);
    rs->AddNew({"n"}, {5});
    EXPECT_EQ(current(*rs, "n"), 5);
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    rs->AddNew();
    EXPECT_EQ(rs->RecordCount(), 4) << "the new row counts before Update";
    rs->Fields()("n").SetValue(0);
    rs->Update();
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(rs->RecordCount(), 3);
    rs->SetFilter("");
    EXPECT_EQ(rs->RecordCount(), 5);
}

class FilterFetchTest : public testing::Test {
  protected:
    FilterFetchTest() : script(std::make_shared<Script>()), provider(script) { runOwnerQueue(); }
    ~FilterFetchTest() override { script->go(); }
    FilterFetchTest(const FilterFetchTest&) = delete;
    FilterFetchTest& operator=(const FilterFetchTest&) = delete;

    std::shared_ptr<Script> script;
    ProviderDouble provider;
};

TEST_F(FilterFetchTest, AFilterHoldsForTheRowsThatComeLater) {
    script->rows = 200'000;
    script->holdAt = 50'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->SetAbsolutePosition(50'000);
    rs->SetFilter("n>=49990");
    EXPECT_EQ(rs->RecordCount(), 10);
    rs->MoveNext();
    script->go();
    rs->MoveLast(); // waits
    EXPECT_EQ(current(*rs), 199'999);
    EXPECT_EQ(rs->RecordCount(), 150'010);
    rs->SetAbsolutePosition(2);
    EXPECT_EQ(current(*rs), 49'991);
}

TEST_F(FilterFetchTest, SettingAFilterWaitsForNothingAndTheFirstMatchThatComesBecomesCurrent) {
    script->rows = 200'000;
    script->holdAt = 50'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->SetFilter("n=150000");
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->EOF_());
    EventLog log;
    rs->Subscribe(&log);
    script->go();
    ASSERT_TRUE(deliverUntil(
        [&] { return std::ranges::count(log.lines, "FetchComplete 0") > 0 || rs->WaitFetch(0); }));
    ASSERT_TRUE(deliverUntil([&] { return !rs->EOF_(); }));
    EXPECT_EQ(current(*rs), 150'000);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(std::ranges::count(log.lines, "MoveComplete 10"), 1);
    rs->Unsubscribe(&log);
}

TEST_F(FilterFetchTest, ANeedleThatGrowsWhileRowsArriveMissesNone) {
    script->rows = 300'000;
    const auto rs = openDouble(adAsyncFetch);
    for (const char* needle : {"1", "12", "123"})
        rs->SetFilter(std::string("n LIKE '*") + needle + "*'");
    rs->MoveLast();
    RowCount expected = 0;
    for (int n = 0; n < 300'000; ++n)
        expected += std::to_string(n).find("123") != std::string::npos;
    EXPECT_EQ(rs->RecordCount(), expected);
}

TEST_F(FilterFetchTest, AFetchThatBreaksOffIsNoEndUnderAFilterEither) {
    script->rows = 100'000;
    script->failAt = 60'000;
    const auto rs = openDouble(adAsyncFetch);
    rs->SetFilter("n>=59990");
    const auto raised = errorOf([&] { rs->MoveLast(); });
    ASSERT_TRUE(rs->FetchError());
    EXPECT_EQ(raised, rs->FetchError()->numero());
    EXPECT_EQ(rs->RecordCount(), 10);
    EXPECT_NE(rs->State() & adStateFetchBroken, 0);
}

} // namespace
} // namespace norvel::adodb
