// Connection strings, files, queries and values that a careless host hands over.
#include "platform/adodb/provider/ConnectionString.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <fstream>

namespace norvel::adodb {
namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::string openFailure(const std::string& connection, const std::string& sql = "SELECT 1") {
    return descriptionOf([&] { openOn(connection, sql); });
}

TEST(ConnectionStrings, AreReadByTheUsualRules) {
    const ConnectionString c("provider = SQLite ;DATA SOURCE=\"a;b \"\"c\"\".db\"; Mode='Read';x;;"
                             "Driver={SQL Server};vuoto=;Uid=io;uid=tu");
    EXPECT_EQ(c.value("Provider"), "SQLite");
    EXPECT_EQ(c.value("data source"), "a;b \"c\".db");
    EXPECT_EQ(c.value("MODE"), "Read");
    EXPECT_EQ(c.value("driver"), "SQL Server");
    EXPECT_EQ(c.value("UID"), "tu");
    EXPECT_FALSE(c.value("vuoto"));
    EXPECT_FALSE(c.value("x"));
    EXPECT_FALSE(c.value("manca"));
}

TEST(ConnectionStrings, NoTextMakesTheReaderStumble) {
    for (const char* text :
         {"", ";", "=", ";;;", "=;=", "a=\"", "a='x", "a={", "a=\"x\"y;b=1", "a==b", "   ", "a"})
        EXPECT_FALSE(ConnectionString(text).value("Provider")) << text;
    EXPECT_EQ(ConnectionString("a=\"x\"y;b=1").value("b"), "1");
}

TEST(BadInput, AConnectionStringThatNamesNoProvider) {
    for (const char* connection :
         {"", "Data Source=clienti.db", "clienti.db", ";;=;", "Password=x"}) {
        EXPECT_EQ(errorOf([&] { openOn(connection, "SELECT 1"); }), 3706) << connection;
        EXPECT_TRUE(contains(openFailure(connection), "Provider=SQLite;Data Source="))
            << connection;
    }
}

TEST(BadInput, AnotherProviderIsNamedButNeverItsPassword) {
    const std::pair<const char*, const char*> cases[] = {
        {"Provider=OraOLEDB.Oracle;Data Source=srv;User ID=sa;Password=segreta",
         "«OraOLEDB.Oracle»"},
        {"Driver={Oracle};Server=srv;Uid=sa;Pwd=segreta", "«Oracle»"},
        {"DSN=Contabilità;PWD=segreta", "«Contabilità»"},
        {"provider=\"Nessuno.di.noto\";Jet OLEDB:Database Password=segreta", "«Nessuno.di.noto»"},
    };
    for (const auto& example : cases) {
        const std::string connection = example.first;
        const std::string text = openFailure(connection);
        EXPECT_EQ(errorOf([&] { openOn(connection, "SELECT 1"); }), 3706);
        EXPECT_TRUE(contains(text, example.second)) << text;
        EXPECT_FALSE(contains(text, "segreta")) << text;
    }
}

TEST(BadInput, ADataSourceThatIsMissing) {
    EXPECT_TRUE(contains(openFailure("Provider=SQLite"), "Data Source"));
    EXPECT_TRUE(contains(openFailure("Provider=SQLite;Data Source="), "Data Source"));
}

TEST(BadInput, AMissingDatabaseIsNotCreated) {
    const TemporaryFolder folder;
    const std::string file = folder.file("manca.db");
    const std::string text = openFailure("Provider=SQLite;Data Source=" + file);
    EXPECT_TRUE(contains(text, file) && contains(text, "non esiste")) << text;
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(BadInput, AFolderIsNoDatabase) {
    const TemporaryFolder folder;
    EXPECT_TRUE(
        contains(openFailure("Provider=SQLite;Data Source=" + folder.file("")), "cartella"));
}

TEST(BadInput, APathInTheHostsNotationIsFound) {
    const TemporaryFolder folder;
    folder.database("Clienti.db", "CREATE TABLE t (a)");
    std::string path = folder.file("CLIENTI.DB");
    std::ranges::replace(path, '/', '\\');
    EXPECT_EQ(openFailure("Provider=SQLite;Data Source=" + path, "SELECT * FROM t"), "");
}

TEST(BadInput, AFileThatIsNoDatabase) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("testo.db")) << std::string(5000, 'x');
    EXPECT_TRUE(contains(openFailure("Provider=SQLite;Data Source=" + folder.file("testo.db")),
                         "non è un database"));
}

TEST(BadInput, AnEmptyFileHasNoTables) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("vuoto.db")).flush();
    const std::string connection = "Provider=SQLite;Data Source=" + folder.file("vuoto.db");
    EXPECT_EQ(errorOf([&] { openOn(connection, "SELECT * FROM clienti"); }), dbNoTable);
    EXPECT_EQ(errorOf([&] { openOn(connection, "clienti"); }), dbNoTable);
}

constexpr const char* manyRows =
    "CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT);"
    "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c LIMIT 20000)"
    " INSERT INTO t SELECT n, 'riga numero ' || n FROM c;";

TEST(BadInput, ATruncatedDatabaseSaysSoAndIsNeverAShortResult) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("tronco.db", manyRows);
    const auto size = std::filesystem::file_size(folder.file("tronco.db"));
    for (const auto keep : {size / 2, size - 4096, std::uintmax_t{5000}, std::uintmax_t{4096}}) {
        std::filesystem::resize_file(folder.file("tronco.db"), keep);
        for (const int options : {-1, int{adAsyncFetch}}) {
            std::string text = descriptionOf([&] {
                const auto rs = openOn(connection, "SELECT * FROM t", options);
                rs->MoveLast();
            });
            EXPECT_TRUE(contains(text, "danneggiato")) << keep << ": " << text;
        }
    }
}

TEST(BadInput, ADatabaseWithScribblesInItNeverCrashes) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("guasto.db", manyRows);
    std::fstream file(folder.file("guasto.db"), std::ios::in | std::ios::out | std::ios::binary);
    const auto size =
        static_cast<std::int64_t>(std::filesystem::file_size(folder.file("guasto.db")));
    for (int i = 0; i < 40; ++i) {
        file.seekp(4096 + (i * 7919LL * 13) % (size - 4200));
        file << '\xFF' << '\0' << "scarabocchio" << static_cast<char>(i);
        file.flush();
        errorOf([&] {
            const auto rs = openOn(connection, "SELECT * FROM t", adAsyncFetch);
            rs->GetRows();
        });
    }
}

TEST(BadInput, ALockedDatabaseSaysSoAfterAShortWhile) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("occupato.db", manyRows);
    sqlite3* other = nullptr;
    sqlite3_open(folder.file("occupato.db").c_str(), &other);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    const auto start = std::chrono::steady_clock::now();
    const std::string text = openFailure(connection, "SELECT * FROM t");
    const auto took = std::chrono::steady_clock::now() - start;
    sqlite3_close(other);
    EXPECT_TRUE(contains(text, "bloccato")) << text;
    EXPECT_LT(took, std::chrono::seconds(60)) << "not for as long as the lock lasts";
    EXPECT_EQ(openFailure(connection, "SELECT * FROM t"), "") << "the lock is gone";
}

TEST(BadInput, AQueryWithAnErrorIsExplained) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("dati.db", manyRows);
    const std::tuple<const char*, std::int64_t, const char*> cases[] = {
        {"SELECT * FORM t", dbErrorsInCommand, "«FORM»"},
        {"SELECT manca FROM t", dbErrorsInCommand, "«manca»"},
        {"SELECT * FROM manca", dbNoTable, "«manca»"},
        {"manca", dbNoTable, "«manca»"},
        {"SELECT a FROM t x, t y", dbErrorsInCommand, "«a»"},
        {"SELECT mancante(1)", dbErrorsInCommand, "«mancante»"},
        {"SELECT 'aperto", dbErrorsInCommand, "«'aperto»"},
        {"SELECT * FROM t WHERE d=#boh#", dbErrorsInCommand, "«#»"},
        {"SELECT (1", dbErrorsInCommand, "non è completo"},
        {"SELECT 1; SELECT 2", dbErrorsInCommand, "più di un'istruzione"},
        {"SELECT * FROM t WHERE a=?", dbParamNotOptional, "parametri"},
        {"SELECT * FROM t WHERE a=:codice", dbParamNotOptional, "parametri"},
        {"   ", dbNoCommand, "comando"},
        {"-- solo un commento", dbNoCommand, "comando"},
    };
    for (const auto& example : cases) {
        const auto& [text, number, words] = example;
        const std::string sql = text;
        EXPECT_EQ(errorOf([&] { openOn(connection, sql); }), number) << sql;
        EXPECT_TRUE(contains(openFailure(connection, sql), words))
            << sql << ": " << openFailure(connection, sql);
    }
}

TEST(BadInput, AFailureWhileRowsComeIsRaised) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("dati.db", manyRows);
    const std::string sql = "SELECT iif(a<15000, a, datediff('d', 'pippo', 'pluto')) FROM t";
    EXPECT_EQ(errorOf([&] { openOn(connection, sql); }), dbErrorsInCommand);
    const auto rs = openOn(connection, sql, adAsyncFetch);
    EXPECT_EQ(errorOf([&] { rs->MoveLast(); }), dbErrorsInCommand);
    EXPECT_EQ(rs->State(), adStateOpen | adStateFetchBroken);
    EXPECT_EQ(rs->RecordCount(), 14999);
}

TEST(BadInput, AStatementWithoutRowsLeavesTheRecordsetClosed) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("dati.db", manyRows);
    const auto rs = makeClientRecordset();
    rs->Open("UPDATE t SET b='x' WHERE a<=3", connection);
    EXPECT_EQ(rs->State(), adStateClosed);
    EXPECT_EQ(rs->Fields().Count(), 0);
    EXPECT_EQ(errorOf([&] { rs->MoveFirst(); }), 3704);
    EXPECT_EQ(current(*openOn(connection, "SELECT count(*) FROM t WHERE b='x'")), 3);
    rs->Open("SELECT a FROM t", connection);
    EXPECT_EQ(rs->RecordCount(), 20000);
}

TEST(BadInput, AThousandColumns) {
    const TemporaryFolder folder;
    std::string columns;
    std::string values;
    for (int i = 0; i < 1000; ++i) {
        columns += (i ? ",c" : "c") + std::to_string(i) + (i % 2 ? " TEXT" : " INTEGER");
        values += (i ? "," : "") + std::string(i % 2 ? "'v" : "") + std::to_string(i) +
                  (i % 2 ? "'" : "");
    }
    const std::string connection = folder.database(
        "largo.db", "CREATE TABLE t (" + columns + "); INSERT INTO t VALUES (" + values +
                        "); INSERT INTO t SELECT * FROM t; INSERT INTO t SELECT * FROM t;"
                        "INSERT INTO t SELECT * FROM t; INSERT INTO t SELECT * FROM t;"
                        "INSERT INTO t SELECT * FROM t; INSERT INTO t SELECT * FROM t;"
                        "INSERT INTO t SELECT * FROM t; INSERT INTO t SELECT * FROM t;");
    const auto rs = openOn(connection, "t", adAsyncFetch);
    EXPECT_EQ(rs->Fields().Count(), 1000);
    rs->MoveLast();
    EXPECT_EQ(rs->RecordCount(), 256);
    EXPECT_EQ(rs->Fields()("C998").Value(), Variant(std::int32_t{998}));
    EXPECT_EQ(rs->Fields()(999).Value(), Variant("v999"));
    EXPECT_EQ(rs->GetRows(-1, std::int32_t{adBookmarkFirst}).values[501][255], Variant("v501"));
}

TEST(BadInput, TextsOfTenMegabytesAmongShortOnes) {
    const TemporaryFolder folder;
    const std::string connection = folder.database("lungo.db", "CREATE TABLE t (a TEXT)");
    sqlite3* db = nullptr;
    sqlite3_open(folder.file("lungo.db").c_str(), &db);
    sqlite3_exec(db,
                 "INSERT INTO t VALUES ('breve'),(replace(hex(zeroblob(5000000)),'0','è')),"
                 "('breve'),(hex(zeroblob(5000000))),(hex(zeroblob(9000))),"
                 "(hex(zeroblob(8192))),('fine')",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
    for (const int options : {-1, int{adAsyncFetch}}) {
        const auto rs = openOn(connection, "SELECT a FROM t", options);
        const RowBlock block = rs->GetRows();
        ASSERT_EQ(block.rows, 7);
        const std::size_t sizes[] = {5, 20'000'000, 5, 10'000'000, 18'000, 16'384, 4};
        for (std::size_t i = 0; i < 7; ++i)
            EXPECT_EQ(block.values[0][i].text().size(), sizes[i]) << i;
        EXPECT_EQ(block.values[0][1].text().substr(19'999'996), "èè");
    }
}

TEST(BadInput, RowsWiderThanABatch) {
    const TemporaryFolder folder;
    const std::string connection = folder.database(
        "ampio.db", "CREATE TABLE t (n INTEGER, a TEXT, b TEXT, c BLOB);"
                    "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c LIMIT 500)"
                    " INSERT INTO t SELECT n, hex(zeroblob(7000)), hex(zeroblob(n * 10)),"
                    " zeroblob(15000) FROM c;");
    const auto rs = openOn(connection, "SELECT * FROM t", adAsyncFetch);
    const RowBlock block = rs->GetRows();
    ASSERT_EQ(block.rows, 500);
    for (std::size_t i = 0; i < 500; ++i) {
        ASSERT_EQ(block.values[0][i].toI8(), static_cast<std::int64_t>(i) + 1);
        ASSERT_EQ(block.values[1][i].text().size(), 14000U);
        ASSERT_EQ(block.values[2][i].text().size(), (i + 1) * 20);
        ASSERT_EQ(block.values[3][i].bytes().size(), 15000U);
    }
}

TEST(BadInput, ColumnsOfTheSameNameAreFoundByNumber) {
    const auto rs =
        openOn("Provider=SQLite;Data Source=:memory:", "SELECT 1 AS n, 2 AS N, 3 AS \"\"");
    EXPECT_EQ(rs->Fields().Count(), 3);
    EXPECT_EQ(current(*rs, "n"), 1) << "the first of the name";
    EXPECT_EQ(current(*rs, std::int32_t{1}), 2);
    EXPECT_EQ(current(*rs, ""), 3);
}

TEST(BadInput, AFieldThatIsNotThereIs3265) {
    const auto rs = numbers(1);
    for (const Variant& which :
         {Variant("manca"), Variant(std::int32_t{1}), Variant(std::int32_t{-1}), Variant(),
          Variant::null(), Variant("0"), Variant(Date{1})})
        EXPECT_EQ(errorOf([&] { rs->Fields().Item(which); }), 3265);
    EXPECT_EQ(rs->Fields()(0.1).Name(), "n") << "numbers are rounded to the index";
}

} // namespace
} // namespace norvel::adodb
