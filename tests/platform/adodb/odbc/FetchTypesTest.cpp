// What comes of a server's types, texts and NULLs.
#include "platform/adodb/fetch/FetchLimit.h"
#include "tests/platform/adodb/odbc/ServerTest.h"

namespace norvel::adodb {
namespace {

class OdbcFetch : public OnServer {};
ON_SERVERS(OdbcFetch);

TEST_P(OdbcFetch, TypesBecomeAdosCodesAndValues) {
    const auto connection = open();
    const struct {
        const char* mariaDb;
        const char* postgreSql;
        DataTypeEnum type;
        DataTypeEnum ofMariaDb;
        const char* literal;
        Variant value;
    } cases[] = {
        {"SMALLINT", "smallint", adSmallInt, adSmallInt, "-7", std::int16_t{-7}},
        {"INT", "integer", adInteger, adInteger, "123456", std::int32_t{123456}},
        {"BIGINT", "bigint", adBigInt, adBigInt, "9007199254740993",
         std::int64_t{9007199254740993}},
        {"FLOAT", "real", adSingle, adSingle, "1.5", 1.5F},
        {"DOUBLE", "double precision", adDouble, adDouble, "-0.1", -0.1},
        {"DECIMAL(12,2)", "numeric(12,2)", adNumeric, adNumeric, "12345.67",
         Decimal::fromScaled(1234567, 2)},
        {"DATE", "date", adDBDate, adDBDate, "'2011-03-15'", Date{40617}},
        {"DATETIME", "timestamp", adDBTimeStamp, adDBTimeStamp, "'2011-03-15 12:00:00'",
         Date{40617.5}},
        {"TIME", "time", adDBTime, adDBTime, "'06:00:00'", Date{0.25}},
        {"VARCHAR(40)", "varchar(40)", adVarChar, adVarWChar, "'Città'", "Città"},
        {"CHAR(3)", "char(3)", adChar, adWChar, "'abc'", "abc"},
        {"LONGTEXT", "text", adLongVarChar, adLongVarWChar, "'perché'", "perché"},
        {"VARBINARY(10)", "bytea", adLongVarBinary, adVarBinary, "", Bytes{0, 255}},
        {"BIT(1)", "boolean", adBoolean, adBoolean, "", true},
    };
    for (const auto& c : cases) {
        table(connection, "tipi", std::string("v ") + (postgres() ? c.postgreSql : c.mariaDb));
        std::string literal = c.literal;
        if (c.ofMariaDb == adVarBinary) literal = pick("x'00ff'", "'\\x00ff'");
        if (c.type == adBoolean) literal = pick("b'1'", "true");
        connection->Execute("INSERT INTO tipi VALUES (" + literal + "), (NULL)");
        const auto recordset = rows(connection, "SELECT v FROM tipi");
        EXPECT_EQ(recordset->Fields()(0).Type(), postgres() ? c.type : c.ofMariaDb) << c.mariaDb;
        EXPECT_EQ(recordset->Fields()(0).Value(), c.value) << c.mariaDb;
        recordset->MoveNext();
        EXPECT_TRUE(recordset->Fields()(0).Value().isNull()) << c.mariaDb;
    }
}

TEST_P(OdbcFetch, UnicodeGoesBothWays) {
    const auto connection = open();
    table(connection, "testi", "t varchar(100)");
    const std::string text = "è à ù € «Ωmega» 日本 𝄞 l'altro";
    connection->Execute("INSERT INTO testi VALUES ('è à ù € «Ωmega» 日本 𝄞 l''altro')");
    EXPECT_EQ(first(connection, "SELECT t FROM testi"), text);
    EXPECT_EQ(first(connection, "SELECT t FROM testi WHERE t = 'è à ù € «Ωmega» 日本 𝄞 l''altro'"),
              text);
    const auto named = rows(connection, "SELECT t AS città FROM testi");
    EXPECT_EQ(named->Fields()(0).Name(), "città");
}

TEST_P(OdbcFetch, LongTextsAreWhole) {
    const auto connection = open();
    table(connection, "lunghi",
          "n integer, t " + pick("LONGTEXT", "text") + ", b " + pick("LONGBLOB", "bytea"));
    for (int n = 1; n <= 40; ++n) {
        const std::string number = std::to_string(n);
        const int length = n % 10 == 0 ? n * 20000 : n;
        connection->Execute("INSERT INTO lunghi VALUES (" + number + ", repeat('è', " +
                            std::to_string(length) + "), " +
                            (postgres()
                                 ? "convert_to(repeat('x', " + std::to_string(length) + "), 'UTF8')"
                                 : "repeat('x', " + std::to_string(length) + ")") +
                            ")");
    }
    const auto recordset = rows(connection, "SELECT n, t, b FROM lunghi ORDER BY n");
    ASSERT_EQ(recordset->RecordCount(), 40);
    for (int n = 1; n <= 40; ++n, recordset->MoveNext()) {
        const std::size_t length = n % 10 == 0 ? n * 20000 : n;
        EXPECT_EQ(current(*recordset), n);
        EXPECT_EQ(recordset->Fields()("t").Value().text().size(), length * 2) << n;
        EXPECT_EQ(recordset->Fields()("t").Value().text().substr(length * 2 - 2), "è") << n;
        EXPECT_EQ(recordset->Fields()("b").Value().bytes().size(), length) << n;
    }
}

TEST_P(OdbcFetch, ManyRowsComeInOrderAndWhole) {
    const auto connection = open();
    const std::string numbers =
        pick("SELECT seq AS n, concat('riga ', seq) AS t FROM seq_1_to_50000",
             "SELECT n, 'riga ' || n AS t FROM generate_series(1, 50000) n");
    const auto recordset = rows(connection, numbers, adLockReadOnly, adAsyncFetch);
    ASSERT_TRUE(recordset->WaitFetch(20000));
    ASSERT_EQ(recordset->RecordCount(), 50000);
    const RowBlock block = recordset->GetRows();
    for (RowCount i = 0; i < block.rows; ++i) {
        ASSERT_EQ(block.values[0][i].toI8(), i + 1);
        ASSERT_EQ(block.values[1][i].text(), "riga " + std::to_string(i + 1));
    }
}

TEST_P(OdbcFetch, QueriesRunBesideARunningFetch) {
    const auto connection = open();
    const std::string numbers =
        pick("SELECT seq AS n FROM seq_1_to_300000", "SELECT n FROM generate_series(1, 300000) n");
    const auto recordset = rows(connection, numbers, adLockReadOnly, adAsyncFetch);
    EXPECT_EQ(first(connection, "SELECT 42").toI8(), 42);
    const auto second = rows(connection, numbers, adLockReadOnly, adAsyncFetch);
    ASSERT_TRUE(recordset->WaitFetch(20000));
    ASSERT_TRUE(second->WaitFetch(20000));
    EXPECT_EQ(recordset->RecordCount(), 300000);
    EXPECT_EQ(second->RecordCount(), 300000);
}

TEST_P(OdbcFetch, WhatATransactionChangedIsReadWithinIt) {
    const auto connection = open();
    table(connection, "conti", "n integer primary key");
    connection->BeginTrans();
    connection->Execute("INSERT INTO conti VALUES (1)");
    EXPECT_EQ(first(connection, "SELECT count(*) FROM conti").toI8(), 1);
    EXPECT_EQ(first(open(), "SELECT count(*) FROM conti").toI8(), 0);
    connection->RollbackTrans();
    EXPECT_EQ(first(connection, "SELECT count(*) FROM conti").toI8(), 0);
}

TEST_P(OdbcFetch, TemporaryTablesStayInSight) {
    const auto connection = open();
    connection->Execute("CREATE TEMPORARY TABLE passeggera (n integer)");
    RowCount affected = 0;
    connection->Execute("INSERT INTO passeggera VALUES (1), (2)", &affected);
    EXPECT_EQ(affected, 2);
    EXPECT_EQ(first(connection, "SELECT count(*) FROM passeggera").toI8(), 2);
}

TEST_P(OdbcFetch, MoreRowsThanTheLimitStopTheFetch) {
    setFetchLimit(std::size_t{1024} * 1024);
    const auto connection = open();
    const std::string many =
        pick("SELECT seq AS n, concat('riga numero ', seq) AS t FROM seq_1_to_2000000",
             "SELECT n, 'riga numero ' || n AS t FROM generate_series(1, 2000000) n");
    const auto recordset = rows(connection, many, adLockReadOnly, adAsyncFetch);
    EXPECT_TRUE(recordset->WaitFetch(60000));
    setFetchLimit(0);
    ASSERT_TRUE(recordset->FetchError());
    EXPECT_EQ(recordset->FetchError()->numero(), dbStopLimit);
    EXPECT_GT(recordset->RecordCount(), 1000);
    EXPECT_LT(recordset->RecordCount(), 2000000);
    EXPECT_EQ(current(*recordset), 1);
    EXPECT_EQ(rows(connection, pick("SELECT seq FROM seq_1_to_20000",
                                    "SELECT n FROM generate_series(1, 20000) n"))
                  ->RecordCount(),
              20000);
}

TEST_P(OdbcFetch, TheLimitOfOneStatementCutsNoOther) {
    const auto connection = open();
    table(connection, "tanti", "n integer primary key");
    connection->Execute("INSERT INTO tanti " +
                        pick("SELECT seq FROM seq_1_to_20000", "SELECT generate_series(1, 20000)"));
    connection->BeginTrans();
    setFetchLimit(std::size_t{256} * 1024);
    rows(connection, "SELECT n FROM tanti WHERE n < 10");
    setFetchLimit(0);
    EXPECT_EQ(rows(connection, "SELECT n FROM tanti FOR UPDATE")->RecordCount(), 20000);
    connection->RollbackTrans();
}

TEST_P(OdbcFetch, ACommentAtTheEndTakesNothingIn) {
    const auto connection = open();
    table(connection, "note", "n integer primary key");
    connection->Execute("INSERT INTO note VALUES (1), (2)");
    for (const char* end : {"-- davvero?", "; -- e poi?", "/* perché? */", "--"})
        EXPECT_EQ(rows(connection, std::string("SELECT n FROM note ") + end)->RecordCount(), 2)
            << end;
}

TEST_P(OdbcFetch, ATableIsOpenedByItsName) {
    const auto connection = open();
    table(connection, "Elenco_1", "n integer");
    connection->Execute("INSERT INTO Elenco_1 VALUES (5)");
    auto recordset = makeClientRecordset();
    recordset->Open("Elenco_1", ObjectRef(connection), adOpenStatic, adLockReadOnly, adCmdTable);
    EXPECT_EQ(current(*recordset), 5);
}

} // namespace
} // namespace norvel::adodb
