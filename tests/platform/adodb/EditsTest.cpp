// Changes of rows that came from a database: what is written, what is refused, what shows then.
#include "platform/runtime/OwnerQueue.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <map>
#include <random>

namespace norvel::adodb {
namespace {

using Lines = std::vector<std::string>;
using Codes = std::vector<std::int64_t>;

class EditsTest : public testing::Test {
  protected:
    EditsTest()
        : text(folder.database(
              "prova.db",
              "CREATE TABLE clienti (codice INTEGER PRIMARY KEY, nome TEXT NOT NULL, "
              "saldo NUMERIC(10,2) DEFAULT 12.5, nato DATE, visto DATETIME, attivo BOOLEAN, "
              "foto BLOB, CHECK (saldo < 1000));"
              "INSERT INTO clienti (codice, nome, saldo, nato, attivo) VALUES "
              "(1, 'Rossi', 10, '1970-05-01', 1), (2, 'Bianchi', NULL, NULL, 0), "
              "(3, 'Verdi', 5.25, '1960-01-02', 1);"
              "CREATE TABLE sfuse (nome TEXT); INSERT INTO sfuse VALUES ('uno');"
              "CREATE TABLE \"nome \"\" strano\" (\"la chiave\" TEXT PRIMARY KEY, \"a]\"\"b\" "
              "TEXT) "
              "WITHOUT ROWID; INSERT INTO \"nome \"\" strano\" VALUES ('l''una', 'x')")) {
        connection->Open(text);
    }
    RecordsetRef open(const std::string& sql = "SELECT * FROM clienti",
                      LockTypeEnum lock = adLockOptimistic) const {
        auto rs = makeClientRecordset();
        rs->Open(sql, ObjectRef(connection), adOpenStatic, lock);
        return rs;
    }
    void execute(const std::string& sql) const { connection->Execute(sql); }
    // What a reader of its own finds.
    Variant stored(const std::string& expression) const {
        return openOn(text, "SELECT " + expression)->Fields()(std::int32_t{0}).Value();
    }
    static void set(Recordset& rs, const char* field, const Variant& value) {
        rs.Fields()(field).SetValue(value);
    }
    static Variant get(Recordset& rs, const char* field) { return rs.Fields()(field).Value(); }
    static Codes codes(Recordset& rs) {
        Codes found;
        if (rs.RecordCount() == 0) return found;
        for (rs.MoveFirst(); !rs.EOF_(); rs.MoveNext())
            found.push_back(current(rs, "codice"));
        return found;
    }

    TemporaryFolder folder;
    std::string text;
    ConnectionRef connection = makeConnection();
};

TEST_F(EditsTest, AValueIsWrittenByUpdateAndNotBefore) {
    const auto rs = open();
    EXPECT_TRUE(rs->Supports(adAddNew | adUpdate | adDelete));
    rs->MoveNext();
    EXPECT_EQ(rs->EditMode(), adEditNone);
    set(*rs, "nome", "Neri");
    EXPECT_EQ(rs->EditMode(), adEditInProgress);
    EXPECT_EQ(get(*rs, "nome"), Variant("Neri"));
    EXPECT_EQ(rs->Fields()("nome").OriginalValue(), Variant("Bianchi"));
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=2"), Variant("Bianchi"));
    rs->Update();
    EXPECT_EQ(rs->EditMode(), adEditNone);
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=2"), Variant("Neri"));
    EXPECT_EQ(get(*rs, "nome"), Variant("Neri"));
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    rs->Update(); // nothing to do
}

TEST_F(EditsTest, EveryTypeIsReadBackAsItWasSet) {
    const auto rs = open();
    const std::map<std::string, Variant> values{
        {"nome", "È l'ora; -- \"\\ ?1 😀"},
        {"saldo", Variant(*Decimal::fromDouble(-999.99))},
        {"nato", Date{40664}},
        {"visto", Date{40664.5}},
        {"attivo", false},
        {"foto", Variant(Bytes{0, 1, 255})},
    };
    for (const auto& [name, value] : values)
        set(*rs, name.c_str(), value);
    rs->Update();
    const auto again = open();
    for (const auto& [name, value] : values) {
        EXPECT_EQ(get(*rs, name.c_str()).toDisplay(), value.toDisplay()) << name;
        EXPECT_EQ(get(*again, name.c_str()).type(), get(*rs, name.c_str()).type()) << name;
        EXPECT_EQ(get(*again, name.c_str()).toDisplay(), value.toDisplay()) << name;
    }
    EXPECT_EQ(get(*again, "foto").bytes(), (Bytes{0, 1, 255}));
    EXPECT_EQ(stored("typeof(saldo) || nato || visto || attivo FROM clienti WHERE codice=1"),
              Variant("real2011-05-012011-05-01 12:00:000"));
    for (const char* name : {"saldo", "nato", "visto", "attivo", "foto"})
        set(*rs, name, Variant::null());
    rs->Update();
    rs->Requery();
    for (const char* name : {"saldo", "nato", "visto", "attivo", "foto"})
        EXPECT_TRUE(get(*rs, name).isNull()) << name;
    EXPECT_EQ(errorOf([&] { set(*rs, "saldo", "molto"); }), 3421);
}

TEST_F(EditsTest, ANewRowTakesItsNumberAndDefaultsFromTheDatabase) {
    const auto rs = open();
    rs->AddNew();
    EXPECT_EQ(rs->EditMode(), adEditAdd);
    EXPECT_TRUE(get(*rs, "codice").isEmpty());
    EXPECT_EQ(rs->RecordCount(), 4);
    set(*rs, "nome", "Gialli");
    rs->Update();
    EXPECT_EQ(current(*rs, "codice"), 4);
    EXPECT_EQ(get(*rs, "saldo").toDouble(), 12.5);
    EXPECT_EQ(rs->AbsolutePosition(), 4);
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=4"), Variant("Gialli"));
    rs->AddNew({"nome", "codice"}, {"Blu", std::int32_t{10}});
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3, 4, 10}));
    rs->MoveLast();
    set(*rs, "nome", "Bluastri"); // a row of this session's own is a row like others
    rs->Update();
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=10"), Variant("Bluastri"));
}

TEST_F(EditsTest, CancelUpdateTakesTheChangeBack) {
    const auto rs = open();
    EXPECT_EQ(errorOf([&] { rs->CancelUpdate(); }), 3219);
    set(*rs, "nome", "Neri");
    rs->CancelUpdate();
    EXPECT_EQ(get(*rs, "nome"), Variant("Rossi"));
    rs->MoveNext();
    rs->AddNew();
    rs->CancelUpdate();
    EXPECT_EQ(rs->AbsolutePosition(), 2);
    EXPECT_EQ(stored("count(*) FROM clienti WHERE nome='Neri'").toI8(), 0);
}

TEST_F(EditsTest, MovingWritesFirst) {
    const auto rs = open();
    set(*rs, "nome", "Neri");
    rs->MoveNext();
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=1"), Variant("Neri"));
    EXPECT_EQ(current(*rs, "codice"), 2);
}

TEST_F(EditsTest, ARefusedChangeStaysPendingAndNobodyMoves) {
    const auto rs = open();
    set(*rs, "saldo", 5000.0);
    EXPECT_EQ(errorOf([&] { rs->MoveNext(); }), dbIntegrityViolation);
    EXPECT_EQ(current(*rs, "codice"), 1);
    EXPECT_EQ(rs->EditMode(), adEditInProgress);
    EXPECT_EQ(get(*rs, "saldo").toDouble(), 5000);
    EXPECT_EQ(errorOf([&] { rs->Requery(); }), 3219);
    EXPECT_EQ(errorOf([&] { rs->Close(); }), 3219);
    set(*rs, "saldo", 500.0);
    rs->Update();
    EXPECT_EQ(stored("saldo FROM clienti WHERE codice=1").toDouble(), 500);
    rs->AddNew();
    EXPECT_EQ(errorOf([&] { rs->Update(); }), dbIntegrityViolation) << "nome is missing";
    EXPECT_EQ(rs->EditMode(), adEditAdd);
    rs->CancelUpdate();
    EXPECT_EQ(codes(*rs), (Codes{1, 2, 3}));
}

TEST_F(EditsTest, AnotherOperatorsChangeOfTheSameFieldIsNotOverwritten) {
    const auto rs = open();
    set(*rs, "nome", "Neri");
    execute("UPDATE clienti SET nome='Verdoni' WHERE codice=1");
    EXPECT_EQ(errorOf([&] { rs->Update(); }), dbConcurrency);
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=1"), Variant("Verdoni"));
    rs->CancelUpdate();
    EXPECT_EQ(get(*rs, "nome"), Variant("Rossi"));
}

TEST_F(EditsTest, ChangesOfDifferentFieldsAreBothKeptAndReadBack) {
    const auto rs = open();
    set(*rs, "nome", "Neri");
    execute("UPDATE clienti SET saldo=77 WHERE codice=1");
    rs->Update();
    EXPECT_EQ(stored("nome || saldo FROM clienti WHERE codice=1"), Variant("Neri77"));
    EXPECT_EQ(get(*rs, "saldo").toDouble(), 77);
}

TEST_F(EditsTest, ARowThatOthersDeletedOrChangedCannotBeChangedOrDeleted) {
    const auto rs = open();
    execute("DELETE FROM clienti WHERE codice=1");
    set(*rs, "nome", "Neri");
    EXPECT_EQ(errorOf([&] { rs->Update(); }), dbConcurrency);
    rs->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), dbConcurrency);
    EXPECT_EQ(rs->RecordCount(), 3);
    rs->MoveNext();
    execute("UPDATE clienti SET saldo=1 WHERE codice=2");
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), dbConcurrency);
    EXPECT_EQ(stored("count(*) FROM clienti WHERE codice=2").toI8(), 1);
}

TEST_F(EditsTest, AChangedKeyIsFollowed) {
    const auto rs = open();
    set(*rs, "codice", std::int32_t{50});
    rs->Update();
    EXPECT_EQ(current(*rs, "codice"), 50);
    set(*rs, "nome", "Neri");
    rs->Update();
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=50"), Variant("Neri"));
    set(*rs, "codice", std::int32_t{2});
    EXPECT_EQ(errorOf([&] { rs->Update(); }), dbIntegrityViolation);
}

TEST_F(EditsTest, ADeletedRowStaysCurrentButUnreadableUntilAMove) {
    const auto rs = open();
    rs->MoveNext();
    const Variant bookmark = rs->Bookmark();
    rs->Delete();
    EXPECT_EQ(stored("count(*) FROM clienti").toI8(), 2);
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(errorOf([&] { get(*rs, "nome"); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->EditMode(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3021);
    EXPECT_EQ(errorOf([&] { rs->SetBookmark(bookmark); }), dbBadBookmark);
    EXPECT_FALSE(rs->BOF() || rs->EOF_());
    rs->MoveNext();
    EXPECT_EQ(current(*rs, "codice"), 3);
    rs->Delete();
    rs->MovePrevious();
    EXPECT_EQ(current(*rs, "codice"), 1);
    rs->Delete();
    rs->MoveNext();
    EXPECT_TRUE(rs->EOF_());
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3021);
}

TEST_F(EditsTest, AGroupIsDeletedThroughAFilterOfBookmarks) {
    const auto rs = open();
    const Variant first = rs->Bookmark();
    EXPECT_EQ(errorOf([&] { rs->Delete(adAffectGroup); }), 3219);
    rs->MoveLast();
    const Variant last = rs->Bookmark();
    rs->SetFilter(Variant(std::vector<Variant>{first, last}));
    rs->Delete(adAffectGroup);
    EXPECT_EQ(rs->RecordCount(), 0);
    rs->SetFilter("");
    EXPECT_EQ(codes(*rs), (Codes{2}));
    EXPECT_EQ(stored("count(*) FROM clienti").toI8(), 1);
}

TEST_F(EditsTest, WhatCannotBeWrittenIsRefusedBeforehandOrSaysWhy) {
    EXPECT_EQ(errorOf([&] { set(*open("SELECT * FROM clienti", adLockReadOnly), "nome", "x"); }),
              3251);
    const auto computed = open("SELECT codice, nome, saldo * 2 AS doppio FROM clienti");
    EXPECT_EQ(errorOf([&] { set(*computed, "doppio", 1.0); }), 3251);
    set(*computed, "nome", "Neri");
    computed->Update();
    EXPECT_EQ(get(*computed, "doppio").toDouble(), 20) << "kept, where the database is not asked";
    const auto keyless = open("SELECT nome FROM clienti");
    set(*keyless, "nome", "x");
    EXPECT_EQ(errorOf([&] { keyless->Update(); }), oleFail);
    keyless->CancelUpdate();
    const auto loose = open("SELECT * FROM sfuse");
    EXPECT_EQ(errorOf([&] { loose->Delete(); }), oleFail);
    loose->AddNew({"nome"}, {"due"});
    EXPECT_EQ(stored("count(*) FROM sfuse").toI8(), 2);
    const auto joined = open("SELECT clienti.codice, sfuse.nome FROM clienti, sfuse");
    EXPECT_FALSE(joined->Supports(adUpdate));
    EXPECT_EQ(errorOf([&] { joined->Delete(); }), 3251);
}

TEST_F(EditsTest, NamesAndKeysOfAnyCharactersAreWritten) {
    const auto rs = open("SELECT * FROM \"nome \"\" strano\"");
    set(*rs, "a]\"b", "y'");
    rs->Update();
    EXPECT_EQ(stored("\"a]\"\"b\" FROM \"nome \"\" strano\""), Variant("y'"));
    rs->AddNew({"la chiave"}, {"'); DROP TABLE clienti; --"});
    EXPECT_EQ(rs->RecordCount(), 2);
    rs->Delete();
    EXPECT_EQ(stored("count(*) FROM clienti").toI8(), 3);
    EXPECT_EQ(stored("count(*) FROM \"nome \"\" strano\"").toI8(), 1);
}

TEST_F(EditsTest, AChangeOutsideATransactionOfTheHostsIsRolledBackWithIt) {
    const auto rs = open();
    connection->BeginTrans();
    set(*rs, "nome", "Neri");
    rs->Update();
    connection->RollbackTrans();
    EXPECT_EQ(stored("nome FROM clienti WHERE codice=1"), Variant("Rossi"));
}

TEST_F(EditsTest, ClonesSeeTheChangesAndHearOfThem) {
    const auto rs = open();
    const auto clone = rs->Clone();
    clone->SetSort("nome");
    clone->MoveFirst(); // Bianchi
    EventLog log;
    clone->Subscribe(&log);
    set(*rs, "nome", "Zorzi");
    rs->Update();
    EXPECT_EQ(log.lines,
              (Lines{"WillChangeField 1 nome", "WillChangeRecord 11", "FieldChangeComplete 1 nome",
                     "RecordChangeComplete 11", "WillChangeRecord 3", "RecordChangeComplete 3"}));
    EXPECT_EQ(codes(*clone), (Codes{2, 3, 1}));
    clone->MoveLast();
    rs->Delete(); // the clone's current row
    EXPECT_EQ(clone->RecordCount(), 2);
    EXPECT_EQ(errorOf([&] { get(*clone, "nome"); }), 3021);
    clone->MovePrevious();
    EXPECT_EQ(current(*clone, "codice"), 3);
    clone->AddNew({"nome"}, {"Azzurri"});
    EXPECT_EQ(codes(*rs), (Codes{2, 3, 4})) << "the deleted row's number is not used again";
    clone->Unsubscribe(&log);
}

TEST_F(EditsTest, ASinkMayRefuseAChange) {
    const auto rs = open();
    EventLog log;
    rs->Subscribe(&log);
    log.cancel = "WillChangeField 1 nome";
    EXPECT_EQ(errorOf([&] { set(*rs, "nome", "Neri"); }), 3712);
    EXPECT_EQ(rs->EditMode(), adEditNone);
    log.cancel = "WillChangeRecord 3";
    set(*rs, "nome", "Neri");
    EXPECT_EQ(errorOf([&] { rs->Update(); }), 3712);
    EXPECT_EQ(rs->EditMode(), adEditInProgress);
    log.cancel = "WillChangeRecord 2";
    rs->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), 3712);
    EXPECT_EQ(rs->RecordCount(), 3);
    rs->Unsubscribe(&log);
}

TEST_F(EditsTest, ARowChangedOutOfTheFilterLeavesTheCursorOnTheNext) {
    const auto rs = open();
    rs->SetFilter("codice<3");
    set(*rs, "codice", std::int32_t{30});
    rs->Update();
    EXPECT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(current(*rs, "codice"), 2);
    set(*rs, "codice", std::int32_t{20});
    rs->Update();
    EXPECT_EQ(rs->RecordCount(), 0);
    EXPECT_TRUE(rs->BOF() && rs->EOF_());
    rs->AddNew({"nome"}, {"Oltre"});
    EXPECT_TRUE(rs->EOF_());
}

TEST_F(EditsTest, AChangedSortKeyMovesTheRowAndTheCursorWithIt) {
    const auto rs = open();
    rs->SetSort("nome");
    EXPECT_EQ(codes(*rs), (Codes{2, 1, 3}));
    rs->MoveFirst();
    set(*rs, "nome", "zeta");
    rs->Update();
    EXPECT_EQ(rs->AbsolutePosition(), 3);
    EXPECT_EQ(codes(*rs), (Codes{1, 3, 2}));
}

// Random changes, filters and sorts against a table kept beside.
TEST_F(EditsTest, RandomChangesAgreeWithAnIndependentTable) {
    std::mt19937 chance(20261121);
    const auto pick = [&](unsigned n) { return static_cast<std::int64_t>(chance() % n); };
    execute("CREATE TABLE prova (codice INTEGER PRIMARY KEY, gruppo INTEGER)");
    execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400) "
            "INSERT INTO prova SELECT i, i % 7 FROM n");
    const auto rs = open("SELECT * FROM prova");
    const auto clone = rs->Clone();
    const char* filters[] = {"", "gruppo>3", "gruppo=2 OR gruppo=5", "codice<200", "gruppo=NULL"};
    const char* sorts[] = {"", "gruppo", "gruppo DESC", "gruppo DESC, codice DESC"};
    std::string filter;
    std::string sort;
    for (int step = 0; step < 600; ++step) {
        Recordset& one = step % 2 ? *rs : *clone;
        if (one.RecordCount() > 0) one.SetAbsolutePosition(1 + pick(20) % one.RecordCount());
        const bool onRow = one.RecordCount() > 0;
        const Variant group =
            pick(6) == 0 ? Variant::null() : Variant(static_cast<std::int32_t>(pick(7)));
        switch (pick(6)) {
        case 0:
            if (onRow) one.Delete();
            break;
        case 1:
            one.AddNew({"gruppo"}, {group});
            break;
        case 2:
            filter = filters[pick(5)];
            rs->SetFilter(filter);
            break;
        case 3:
            sort = sorts[pick(4)];
            rs->SetSort(sort);
            break;
        default:
            if (onRow) {
                set(one, "gruppo", group);
                one.Update();
            }
        }
        if (step % 10) continue;
        std::string sql = "SELECT codice FROM prova";
        if (!filter.empty())
            sql += " WHERE " + (filter == "gruppo=NULL" ? std::string("gruppo IS NULL") : filter);
        // Rows without an order stand as they were read, later ones behind them: by their number.
        sql += " ORDER BY " + (sort.empty() ? "" : sort + ", ") + "codice";
        Codes expected;
        const auto other = openOn(text, sql);
        if (other->RecordCount() > 0) {
            const RowBlock block = other->GetRows();
            for (const Variant& value : block.values[0])
                expected.push_back(value.toI8());
        }
        ASSERT_EQ(codes(*rs), expected) << "step " << step << ": " << filter << " / " << sort;
    }
}

} // namespace
} // namespace norvel::adodb
