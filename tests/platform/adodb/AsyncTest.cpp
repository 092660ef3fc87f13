// Statements whose first block comes in the background, and the way back to the row after a
// Requery.
#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

constexpr RowCount many = 200'000;
using Lines = std::vector<std::string>;

class AsyncTest : public testing::Test {
  protected:
    bool ended(const EventLog& log) {
        return deliverUntil(
            [&] { return !log.lines.empty() && log.lines.back().starts_with("FetchComplete"); });
    }
    std::shared_ptr<Script> script = std::make_shared<Script>();
    ProviderDouble provider{script};
};

TEST_F(AsyncTest, AnOpeningGivesControlBackBeforeTheFirstRow) {
    script->rows = many;
    script->holdAt = 0;
    const auto rs = makeClientRecordset();
    EventLog log;
    rs->Subscribe(&log);
    rs->Open("numeri", "Provider=Doppio", adOpenStatic, adLockReadOnly, adAsyncExecute);
    EXPECT_EQ(rs->State(), adStateExecuting);
    EXPECT_EQ(errorOf([&] { rs->RecordCount(); }), 3711);
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3711);
    EXPECT_EQ(errorOf([&] { rs->Open("numeri", "Provider=Doppio"); }), 3705);
    EXPECT_FALSE(rs->WaitFetch(1));
    EXPECT_TRUE(log.lines.empty());
    script->go();
    ASSERT_TRUE(ended(log));
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), many);
    EXPECT_EQ(current(*rs), 0);
    EXPECT_EQ(log.lines[0], "WillMove 10");
    EXPECT_EQ(log.lines[1], "ViewChanged");
    EXPECT_EQ(log.lines[2], "MoveComplete 10");
    rs->Unsubscribe(&log);
}

TEST_F(AsyncTest, WaitingForTheFetchWaitsForTheOpeningToo) {
    script->rows = many;
    const auto rs = openDouble(adAsyncExecute);
    ASSERT_TRUE(rs->WaitFetch(20'000));
    EXPECT_EQ(rs->RecordCount(), many);
}

TEST_F(AsyncTest, AnOpeningThatFailsTellsWhyAndStaysClosed) {
    script->rows = many;
    script->failAt = 0;
    const auto rs = makeClientRecordset();
    EventLog log;
    rs->Subscribe(&log);
    rs->Open("numeri", "Provider=Doppio", adOpenStatic, adLockReadOnly, adAsyncExecute);
    ASSERT_TRUE(ended(log));
    EXPECT_EQ(log.lines, (Lines{"FetchComplete error -2147467259"}));
    EXPECT_EQ(rs->State(), adStateClosed);
    ASSERT_TRUE(rs->FetchError());
    EXPECT_EQ(rs->FetchError()->descrizione(), "linea interrotta");
    EXPECT_EQ(errorOf([&] { rs->RecordCount(); }), 3704);
    script->failAt = -1;
    rs->Open("numeri", "Provider=Doppio");
    EXPECT_EQ(rs->RecordCount(), many);
    EXPECT_FALSE(rs->FetchError());
    rs->Unsubscribe(&log);
}

TEST_F(AsyncTest, ClosingEndsAnOpening) {
    script->rows = many;
    script->holdAt = 0;
    const auto rs = openDouble(adAsyncExecute);
    rs->Close();
    EXPECT_EQ(rs->State(), adStateClosed);
    EXPECT_EQ(script->live, 0);
    EventLog log;
    rs->Subscribe(&log);
    runOwnerQueue();
    EXPECT_TRUE(log.lines.empty());
    rs->Unsubscribe(&log);
    script->go();
    rs->Open("numeri", "Provider=Doppio");
    EXPECT_EQ(rs->RecordCount(), many);
}

TEST_F(AsyncTest, CancelEndsAnOpeningWithItsError) {
    script->rows = many;
    script->holdAt = 0;
    const auto rs = openDouble(adAsyncExecute);
    rs->Cancel();
    EXPECT_EQ(rs->State(), adStateClosed);
    ASSERT_TRUE(rs->FetchError());
    EXPECT_EQ(rs->FetchError()->numero(), 3712);
}

TEST_F(AsyncTest, LettingGoOfARecordsetEndsItsOpening) {
    script->rows = many;
    script->holdAt = 0;
    { const auto rs = openDouble(adAsyncExecute); }
    EXPECT_EQ(script->live, 0);
    runOwnerQueue();
}

TEST_F(AsyncTest, ClosingTheConnectionEndsAnOpeningOnIt) {
    script->rows = many;
    script->holdAt = 0;
    const auto connection = makeConnection();
    connection->Open("Provider=Doppio");
    const auto rs = makeClientRecordset();
    rs->Open("numeri", ObjectRef(connection), adOpenStatic, adLockReadOnly, adAsyncExecute);
    connection->Close();
    EXPECT_EQ(rs->State(), adStateClosed);
    EXPECT_EQ(script->live, 0);
}

TEST_F(AsyncTest, AStreamingRecordsetIsAsynchronousWithoutOptions) {
    script->rows = many;
    script->holdAt = 0;
    const auto rs = makeStreamingRecordset();
    rs->Open("numeri", "Provider=Doppio", adOpenUnspecified, adLockUnspecified, -1);
    EXPECT_EQ(rs->State(), adStateExecuting);
    script->go();
    ASSERT_TRUE(rs->WaitFetch(20'000));
    EXPECT_EQ(rs->RecordCount(), many);
    rs->MoveLast();
    EXPECT_EQ(current(*rs), many - 1);
}

TEST_F(AsyncTest, ARequeryLeavesTheOldRowsOnShowUntilTheFirstNewBlock) {
    script->rows = 10;
    const auto rs = openDouble(-1);
    rs->SetAbsolutePosition(5);
    script->rows = many;
    script->holdAt = 0;
    EventLog log;
    rs->Subscribe(&log);
    rs->Requery(adAsyncFetchNonBlocking);
    EXPECT_EQ(rs->State(), adStateOpen | adStateExecuting);
    EXPECT_EQ(rs->RecordCount(), 10);
    EXPECT_EQ(current(*rs), 4);
    rs->MoveNext();
    EXPECT_EQ(current(*rs), 5);
    script->go();
    ASSERT_TRUE(ended(log));
    EXPECT_EQ(rs->RecordCount(), many);
    EXPECT_EQ(rs->State(), adStateOpen);
    rs->Unsubscribe(&log);
}

TEST_F(AsyncTest, ARequeryThatFailsKeepsTheRowsAndTheCursorAndSaysWhy) {
    script->rows = 10;
    const auto rs = openDouble(-1);
    rs->SetAbsolutePosition(5);
    script->failAt = 0;
    EventLog log;
    rs->Subscribe(&log);
    rs->Requery(adAsyncFetchNonBlocking);
    ASSERT_TRUE(ended(log));
    EXPECT_EQ(log.lines.back(), "FetchComplete error -2147467259");
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), 10);
    EXPECT_EQ(current(*rs), 4);
    rs->Unsubscribe(&log);
}

TEST_F(AsyncTest, ANewerRequeryTakesThePlaceOfOneThatRuns) {
    script->rows = 10;
    const auto rs = openDouble(-1);
    script->holdAt = 0;
    for (int i = 0; i < 5; ++i)
        rs->Requery(adAsyncFetchNonBlocking);
    ASSERT_TRUE(deliverUntil([&] { return script->live == 1; }));
    script->rows = 20;
    script->go();
    ASSERT_TRUE(deliverUntil([&] { return rs->State() == adStateOpen; }));
    EXPECT_EQ(rs->RecordCount(), 20);
}

TEST_F(AsyncTest, CancelEndsARequeryAndKeepsTheOldRows) {
    script->rows = 10;
    const auto rs = openDouble(-1);
    script->holdAt = 0;
    rs->Requery(adAsyncFetchNonBlocking);
    rs->Cancel();
    EXPECT_EQ(rs->State(), adStateOpen);
    EXPECT_EQ(rs->RecordCount(), 10);
    EXPECT_EQ(script->live, 0);
}

// --- back to the row ---

class ReturnTest : public testing::Test {
  protected:
    ReturnTest()
        : text(folder.database("prova.db",
                               "CREATE TABLE articoli (codice INTEGER PRIMARY KEY, nome TEXT);"
                               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                               "WHERE i < 3000) INSERT INTO articoli SELECT i, 'a' || i FROM n;"
                               "CREATE TABLE righe (documento TEXT, riga INTEGER, nota TEXT, "
                               "PRIMARY KEY (documento, riga)) WITHOUT ROWID;"
                               "INSERT INTO righe VALUES ('A', 1, 'x'), ('A', 2, 'y'), "
                               "('B', 1, 'z'), ('B', 2, 'w');"
                               "CREATE TABLE sfuse (nome TEXT); "
                               "INSERT INTO sfuse VALUES ('uno'), ('due')")) {
        connection->Open(text);
    }
    RecordsetRef open(const std::string& sql) const {
        auto rs = makeClientRecordset();
        rs->Open(sql, ObjectRef(connection));
        return rs;
    }
    void execute(const std::string& sql) const { connection->Execute(sql); }

    TemporaryFolder folder;
    std::string text;
    ConnectionRef connection = makeConnection();
};

TEST_F(ReturnTest, ARequeryReturnsToItsRowByKeyWhereverThatStandsNow) {
    const auto rs = open("SELECT * FROM articoli ORDER BY nome DESC, codice");
    rs->SetFilter("codice=1500");
    rs->SetFilter("");
    while (current(*rs, "codice") != 1500)
        rs->MoveNext();
    execute("DELETE FROM articoli WHERE codice > 2000");
    execute("UPDATE articoli SET nome = 'aaa' WHERE codice = 1500");
    rs->Requery();
    EXPECT_EQ(current(*rs, "codice"), 1500);
    EXPECT_EQ(rs->AbsolutePosition(), 1);
    EXPECT_EQ(rs->RecordCount(), 2000);
}

TEST_F(ReturnTest, ARowThatIsGoneLeavesTheFirst) {
    const auto rs = open("SELECT * FROM articoli");
    rs->SetAbsolutePosition(100);
    execute("DELETE FROM articoli WHERE codice = 100");
    rs->Requery();
    EXPECT_EQ(rs->AbsolutePosition(), 1);
}

TEST_F(ReturnTest, InTheBackgroundTheCursorReturnsWhenTheRowComes) {
    const auto rs = open("SELECT * FROM articoli");
    rs->MoveLast();
    EventLog log;
    rs->Subscribe(&log);
    rs->Requery(adAsyncFetchNonBlocking);
    ASSERT_TRUE(deliverUntil([&] {
        return rs->State() == adStateOpen && !log.lines.empty() &&
               log.lines.back() == "FetchComplete";
    }));
    EXPECT_EQ(current(*rs, "codice"), 3000);
    EXPECT_EQ(rs->AbsolutePosition(), 3000);
    rs->Unsubscribe(&log);
}

// The statement counts for a while before it gives its last rows, among them the cursor's.
TEST_F(ReturnTest, WhoeverMovesFirstStays) {
    const auto rs = open("SELECT * FROM articoli WHERE codice < 2900 OR (WITH RECURSIVE n(i) AS "
                         "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000000) "
                         "SELECT max(i) FROM n) > 0");
    rs->MoveLast();
    EventLog log;
    rs->Subscribe(&log);
    rs->Requery(adAsyncFetch);
    ASSERT_EQ(rs->AbsolutePosition(), 1);
    rs->SetAbsolutePosition(7);
    ASSERT_TRUE(deliverUntil([&] { return rs->State() == adStateOpen; }));
    runOwnerQueue();
    EXPECT_EQ(rs->RecordCount(), 3000);
    EXPECT_EQ(rs->AbsolutePosition(), 7);
    rs->Unsubscribe(&log);
}

TEST_F(ReturnTest, AKeyOfSeveralColumnsCountsWhole) {
    const auto rs = open("SELECT nota, riga, documento FROM righe");
    rs->SetAbsolutePosition(3); // B 1
    execute("INSERT INTO righe VALUES ('A', 0, 'prima')");
    rs->Requery();
    EXPECT_EQ(rs->AbsolutePosition(), 4);
    EXPECT_EQ(rs->Fields()("nota").Value().text(), "z");
}

TEST_F(ReturnTest, WithoutAKeyItIsTheFirstRow) {
    const auto loose = open("SELECT * FROM sfuse");
    loose->MoveLast();
    loose->Requery();
    EXPECT_EQ(loose->AbsolutePosition(), 1);
    const auto half = open("SELECT nota, riga FROM righe");
    half->MoveLast();
    half->Requery();
    EXPECT_EQ(half->AbsolutePosition(), 1);
}

TEST_F(ReturnTest, AJoinReturnsByTheKeysOfAllItsTables) {
    const auto rs = open("SELECT articoli.codice, righe.documento, righe.riga FROM articoli, righe "
                         "WHERE articoli.codice < 3 ORDER BY 1, 2, 3");
    rs->SetAbsolutePosition(6);
    rs->Requery();
    EXPECT_EQ(rs->AbsolutePosition(), 6);
}

TEST_F(ReturnTest, AFilterThatHidesTheRowNowLeavesTheFirstThatShows) {
    const auto rs = open("SELECT * FROM articoli");
    rs->SetFilter("nome LIKE 'a1*'");
    rs->SetAbsolutePosition(3);
    execute("UPDATE articoli SET nome = 'b' WHERE codice = " +
            std::to_string(current(*rs, "codice")));
    rs->Requery();
    EXPECT_EQ(rs->AbsolutePosition(), 1);
}

} // namespace
} // namespace norvel::adodb
