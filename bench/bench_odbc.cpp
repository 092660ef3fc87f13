// A million rows from MariaDB and PostgreSQL into the column store, beside a bare loop of the same
// driver over the same statement, bound in blocks, in the same run.
//
//   bench_odbc [--righe N] [--giri N]
//
// The servers are started for the occasion (mariadb-server, postgresql). Every round runs the bare
// loop, then the store; the last line of a server compares the best of each.
#include "platform/adodb/Recordset.h"
#include "platform/adodb/odbc/OdbcConnection.h"
#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/odbc/OdbcText.h"
#include "platform/runtime/Errore.h"
#include "tests/platform/adodb/odbc/Servers.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace norvel;
using namespace norvel::adodb;
using Clock = std::chrono::steady_clock;

constexpr const char* query = "SELECT * FROM clienti";
constexpr std::size_t blockRows = 500;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A table like the sample database's customers, made by the server itself.
void makeTable(const std::string& connectionText, bool postgres, std::int64_t rows) {
    const auto connection = makeConnection();
    connection->Open(connectionText);
    connection->SetCommandTimeout(0);
    connection->Execute(std::string("CREATE TABLE clienti (codice integer primary key, "
                                    "ragione_sociale varchar(80), citta varchar(60), provincia "
                                    "char(2), indirizzo varchar(80), data_nascita date, fatturato "
                                    "decimal(12,2), attivo ") +
                        (postgres ? "boolean" : "bit(1)") + ", note text)");
    const std::string count = std::to_string(rows);
    connection->Execute(
        postgres
            ? "INSERT INTO clienti SELECT n, 'Autofficina Perché ' || n || ' s.r.l.', 'Città ' "
              "|| n % 400, 'MI', 'Via Garibaldi, ' || n % 240, date '1930-01-01' + n % 27000, "
              "n % 50000000 / 100.0, n % 5 <> 0, CASE WHEN n % 5 = 0 THEN NULL ELSE 'Cliente "
              "affezionato, paga alla consegna' END FROM generate_series(1, " +
                  count + ") n"
            : "INSERT INTO clienti SELECT seq, concat('Autofficina Perché ', seq, ' s.r.l.'), "
              "concat('Città ', seq % 400), 'MI', concat('Via Garibaldi, ', seq % 240), "
              "date_add('1930-01-01', interval seq % 27000 day), seq % 50000000 / 100.0, seq % 5 "
              "<> 0, if(seq % 5 = 0, NULL, 'Cliente affezionato, paga alla consegna') FROM "
              "seq_1_to_" +
                  count);
}

struct Column {
    SQLSMALLINT type;
    std::size_t width;
    std::vector<char> values;
    std::vector<SQLLEN> lengths;
};

// What a program would write that wants the rows and nothing else.
std::int64_t bareLoop(const OdbcTarget& target) {
    const auto connection = OdbcConnection::open(target);
    OdbcStatement statement(connection, nullptr, 0);
    SQLULEN fetched = 0;
    SQLSetStmtAttr(statement.get(), SQL_ATTR_CURSOR_TYPE, odbcNumber(SQL_CURSOR_FORWARD_ONLY), 0);
    SQLSetStmtAttr(statement.get(), SQL_ATTR_ROW_ARRAY_SIZE, odbcNumber(blockRows), 0);
    SQLSetStmtAttr(statement.get(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    statement.execute(query);
    std::vector<Column> columns{
        {SQL_C_SBIGINT, 8, {}, {}}, {SQL_C_CHAR, 321, {}, {}},
        {SQL_C_CHAR, 241, {}, {}},  {SQL_C_CHAR, 9, {}, {}},
        {SQL_C_CHAR, 321, {}, {}},  {SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT), {}, {}},
        {SQL_C_CHAR, 42, {}, {}},   {SQL_C_SBIGINT, 8, {}, {}},
        {SQL_C_CHAR, 1024, {}, {}}};
    SQLUSMALLINT number = 0;
    for (Column& column : columns) {
        column.values.resize(column.width * blockRows);
        column.lengths.resize(blockRows);
        SQLBindCol(statement.get(), ++number, column.type, column.values.data(),
                   static_cast<SQLLEN>(column.width), column.lengths.data());
    }
    std::int64_t rows = 0;
    std::int64_t bytes = 0;
    while (statement.call([&] { return SQLFetch(statement.get()); }) != SQL_NO_DATA) {
        rows += static_cast<std::int64_t>(fetched);
        for (const Column& column : columns) // looked at, so that the compiler keeps it
            for (SQLULEN row = 0; row < fetched; ++row)
                bytes += column.lengths[row] + column.values[row * column.width];
    }
    if (bytes == 0) std::puts("no bytes");
    return rows;
}

struct Round {
    double bare = 0;
    double first = 0;
    double store = 0;
};

Round measure(const std::string& text, const OdbcTarget& target, std::int64_t rows) {
    Round round;
    auto start = Clock::now();
    const std::int64_t bare = bareLoop(target);
    round.bare = millisecondsSince(start);

    const auto recordset = makeClientRecordset();
    start = Clock::now();
    recordset->Open(query, text, adOpenStatic, adLockReadOnly, adCmdText | adAsyncFetch);
    round.first = millisecondsSince(start);
    while (!recordset->WaitFetch(1000)) {
    }
    round.store = millisecondsSince(start);
    if (const auto error = recordset->FetchError()) throw *error;
    if (bare != rows || recordset->RecordCount() != rows)
        throw Errore(5, "righe: " + std::to_string(bare) + ", " +
                            std::to_string(recordset->RecordCount()));
    return round;
}

void runOn(const std::string& name, std::int64_t rows, int rounds) {
    TestServer& server = testServer(name);
    const std::string text = server.connection();
    makeTable(text, server.isPostgres(), rows);
    const auto target = odbcTarget(ConnectionString(text), odbcDrivers(), odbcSources());
    Round best{1e9, 1e9, 1e9};
    for (int i = 0; i < rounds; ++i) {
        const Round r = measure(text, *target, rows);
        std::printf("%-11s %10lld rows  bare %8.1f ms  first %8.1f ms  store %8.1f ms  speed %3.0f "
                    "%%\n",
                    name.c_str(), static_cast<long long>(rows), r.bare, r.first, r.store,
                    100 * r.bare / r.store);
        best = {std::min(best.bare, r.bare), std::min(best.first, r.first),
                std::min(best.store, r.store)};
    }
    std::printf("%-11s best: bare %.1f ms, store %.1f ms: %.0f %% of the bare loop's speed\n",
                name.c_str(), best.bare, best.store, 100 * best.bare / best.store);
}

} // namespace

int main(int count, char** arguments) {
    std::int64_t rows = 1'000'000;
    int rounds = 3;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::string_view(arguments[i]) == "--righe") rows = std::atoll(arguments[i + 1]);
        if (std::string_view(arguments[i]) == "--giri") rounds = std::atoi(arguments[i + 1]);
    }
    try {
        for (const std::string& name : serverNames())
            runOn(name, rows, std::max(rounds, 1));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
