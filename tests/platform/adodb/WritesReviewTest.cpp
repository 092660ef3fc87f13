// Writing to tables whose keys, triggers and statements make it easy to hit another row.
#include "tests/platform/adodb/AdodbTest.h"

#include <utility>

namespace norvel::adodb {
namespace {

class WritesTest : public testing::Test {
  protected:
    RecordsetRef open(const std::string& sql, const std::string& query) {
        text = folder.database("prova" + std::to_string(++made) + ".db", sql);
        auto rs = makeClientRecordset();
        rs->Open(query, text, adOpenStatic, adLockOptimistic);
        return rs;
    }
    static void set(Recordset& rs, const char* field, const Variant& value) {
        rs.Fields()(field).SetValue(value);
    }
    static Variant get(Recordset& rs, const char* field) { return rs.Fields()(field).Value(); }
    Variant stored(const std::string& expression) const {
        return openOn(text, "SELECT " + expression)->Fields()(std::int32_t{0}).Value();
    }

    TemporaryFolder folder;
    std::string text;
    int made = 0;
};

TEST_F(WritesTest, AKeyWithNullsThatSeveralRowsShareChangesNone) {
    const auto rs = open("CREATE TABLE t (k TEXT PRIMARY KEY, v TEXT);"
                         "INSERT INTO t VALUES (NULL,'a'),(NULL,'a'),('x','a')",
                         "SELECT * FROM t");
    set(*rs, "v", "b");
    EXPECT_EQ(errorOf([&] { rs->Update(); }), oleFail);
    rs->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), oleFail);
    EXPECT_EQ(stored("count(*) FROM t WHERE v='a'").toI8(), 3);
    EXPECT_EQ(rs->RecordCount(), 3);
}

TEST_F(WritesTest, AChangeThatATriggerLeavesOutIsNotTakenForDone) {
    const auto rs =
        open("CREATE TABLE t (k INTEGER PRIMARY KEY, v TEXT); INSERT INTO t VALUES (1,'a'),(2,'b');"
             "CREATE TRIGGER d BEFORE DELETE ON t BEGIN SELECT RAISE(IGNORE); END;"
             "CREATE TRIGGER u BEFORE UPDATE ON t BEGIN SELECT RAISE(IGNORE); END;"
             "CREATE TRIGGER i BEFORE INSERT ON t BEGIN SELECT RAISE(IGNORE); END",
             "SELECT * FROM t");
    EXPECT_EQ(errorOf([&] { rs->Delete(); }), oleFail);
    EXPECT_EQ(rs->RecordCount(), 2);
    set(*rs, "v", "z");
    EXPECT_EQ(errorOf([&] { rs->Update(); }), oleFail);
    rs->CancelUpdate();
    EXPECT_EQ(errorOf([&] { rs->AddNew({"v"}, {"n"}); }), oleFail);
    rs->CancelUpdate();
    EXPECT_EQ(rs->RecordCount(), 2);
}

TEST_F(WritesTest, ADateKeyIsFoundInWhateverFormItIsKept) {
    for (const char* kept : {"2024-01-05", "2024-01-05 00:00:00", "2024-01-05T00:00",
                             "2024-01-05 10:30", "2024-01-05T10:30:15"}) {
        for (const char* type : {"DATE", "DATETIME"}) {
            const auto rs =
                open("CREATE TABLE t (k " + std::string(type) +
                         " PRIMARY KEY, v TEXT); INSERT INTO t VALUES ('" + kept + "','a')",
                     "SELECT * FROM t");
            ASSERT_EQ(get(*rs, "k").type(), VarType::Date) << kept;
            set(*rs, "v", "b");
            EXPECT_EQ(errorOf([&] { rs->Update(); }), 0) << kept << ' ' << type;
            EXPECT_EQ(stored("v || k FROM t"), Variant("b" + std::string(kept)));
            rs->Delete();
            EXPECT_EQ(stored("count(*) FROM t").toI8(), 0);
        }
    }
}

TEST_F(WritesTest, AColumnThatTheStatementTakesFromAnotherRowIsNeitherWrittenNorMixedUp) {
    const char* table = "CREATE TABLE p (k INTEGER PRIMARY KEY, nome TEXT, capo INTEGER, "
                        "paga INTEGER); INSERT INTO p VALUES (1,'A',2,5),(2,'B',NULL,5)";
    for (const char* query :
         {"SELECT k, paga, (SELECT q.nome FROM p q WHERE q.k = p.capo) AS nomecapo FROM p",
          "SELECT p.k, p.paga, q.nome AS nomecapo FROM p LEFT JOIN p q ON q.k = p.capo"}) {
        const auto rs = open(table, query);
        ASSERT_EQ(get(*rs, "nomecapo"), Variant("B"));
        set(*rs, "paga", std::int32_t{6});
        errorOf([&] { rs->Update(); });
        EXPECT_EQ(get(*rs, "nomecapo"), Variant("B")) << query;
        EXPECT_EQ(stored("group_concat(nome) FROM p"), Variant("A,B"));
    }
}

TEST_F(WritesTest, ARowOfAnotherTableInAUnionIsNotWrittenIntoTheFirst) {
    const auto rs = open("CREATE TABLE t (k INTEGER PRIMARY KEY, v TEXT, w TEXT);"
                         "CREATE TABLE vecchie (k INTEGER PRIMARY KEY, v TEXT, w TEXT);"
                         "INSERT INTO t VALUES (1,'a','x'); INSERT INTO vecchie VALUES (1,'a','y')",
                         "SELECT * FROM t UNION ALL SELECT * FROM vecchie");
    rs->MoveLast();
    ASSERT_EQ(get(*rs, "w"), Variant("y"));
    errorOf([&] {
        set(*rs, "v", "nuovo");
        rs->Update();
    });
    EXPECT_EQ(stored("v FROM t"), Variant("a"));
}

TEST_F(WritesTest, RowsOfOneTableAreToldWhateverTheWayToThem) {
    for (const char* way : {"", " WHERE c = 1", " WHERE k = 1", " WHERE c = 1 ORDER BY v",
                            " ORDER BY c DESC", " WHERE v LIKE 'a%' OR c > 5"}) {
        const auto rs = open("CREATE TABLE t (k INTEGER PRIMARY KEY, c INTEGER, v TEXT, w TEXT);"
                             "CREATE INDEX i ON t (c); INSERT INTO t VALUES (1,1,'a','x')",
                             std::string("SELECT * FROM t") + way);
        set(*rs, "v", "b");
        auto connection = makeConnection();
        connection->Open(text);
        connection->Execute("UPDATE t SET w='y'");
        rs->Update();
        EXPECT_EQ(stored("v || w FROM t"), Variant("by")) << way;
    }
}

TEST_F(WritesTest, TemporaryTablesAndViewsOfOneTableAreWritten) {
    auto connection = makeConnection();
    connection->Open(folder.database("prova.db", "CREATE TABLE t (k INTEGER PRIMARY KEY, v TEXT);"
                                                 "INSERT INTO t VALUES (1,'a'),(2,'b');"
                                                 "CREATE VIEW vista AS SELECT k, v FROM t"));
    connection->Execute("CREATE TEMP TABLE q AS SELECT * FROM t");
    connection->Execute("CREATE TEMP TABLE z (k TEXT PRIMARY KEY, v TEXT)");
    connection->Execute("INSERT INTO z SELECT * FROM t");
    for (const char* query : {"SELECT * FROM z", "SELECT * FROM vista"}) {
        const auto rs = makeClientRecordset();
        rs->Open(query, ObjectRef(connection), adOpenStatic, adLockOptimistic);
        rs->MoveNext();
        set(*rs, "v", "c");
        rs->Update();
        EXPECT_EQ(get(*rs, "v"), Variant("c"));
        rs->MovePrevious();
        rs->Delete();
        rs->Requery();
        EXPECT_EQ(rs->RecordCount(), 1);
        EXPECT_EQ(get(*rs, "v"), Variant("c")) << query;
    }
}

TEST_F(WritesTest, GeneratedColumnsFollowAndCannotBeSet) {
    const auto rs = open("CREATE TABLE t (k INTEGER PRIMARY KEY, v INTEGER, d INTEGER AS (v * 2));"
                         "INSERT INTO t (k, v) VALUES (1, 2)",
                         "SELECT * FROM t");
    set(*rs, "v", std::int32_t{5});
    rs->Update();
    EXPECT_EQ(get(*rs, "d").toI8(), 10);
    set(*rs, "d", std::int32_t{7});
    EXPECT_NE(errorOf([&] { rs->Update(); }), 0);
    rs->CancelUpdate();
    rs->AddNew({"v"}, {std::int32_t{4}});
    EXPECT_EQ(get(*rs, "d").toI8(), 8);
}

TEST_F(WritesTest, DecimalAndBooleanKeysAreFound) {
    const std::pair<const char*, const char*> keys[] = {
        {"DECIMAL(12,4)", "0.1"}, {"CURRENCY", "12.3456"}, {"BOOLEAN", "1"},
        {"REAL", "0.1"},          {"SINGLE", "0.1"},       {"BIGINT", "9007199254740993"},
        {"CHAR(3)", "'007'"},
    };
    for (const auto& [type, key] : keys) {
        const std::string table =
            std::string("(k ") + type + " PRIMARY KEY NOT NULL, v TEXT) WITHOUT ROWID";
        const auto rs = open("CREATE TABLE t " + table + "; INSERT INTO t VALUES (" + key + ",'a')",
                             "SELECT * FROM t");
        set(*rs, "v", "b");
        EXPECT_EQ(errorOf([&] { rs->Update(); }), 0) << type;
        EXPECT_EQ(stored("v FROM t"), Variant("b")) << type;
    }
}

} // namespace
} // namespace norvel::adodb
