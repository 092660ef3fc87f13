// The fetch of a million rows into the column store, beside a bare loop that steps the same
// statement and reads every column, in the same run.
//
//   bench_fetch [--righe N] [--giri N] [--file PATH]
//
// Without --file the sample database is made once in the system's folder of temporary files. Every
// round runs the bare loop, then the store; the last lines compare the best of each.
#include "bench/Sample.h"
#include "platform/adodb/Recordset.h"
#include "platform/runtime/Errore.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace norvel;
using namespace norvel::bench;

constexpr const char* query = "SELECT * FROM clienti";

// What a loop reads of one row: every column as what it is declared to be, looked at so that the
// compiler keeps it.
struct Sum {
    std::int64_t rows = 0;
    std::int64_t integers = 0;
    std::int64_t bytes = 0;
    double reals = 0;
};

void addText(Sum& sum, sqlite3_stmt* statement, int column) {
    const unsigned char* text = sqlite3_column_text(statement, column);
    const int length = sqlite3_column_bytes(statement, column);
    sum.bytes += length;
    if (length > 0) sum.integers += text[0];
}

Sum bareLoop(const std::string& file) {
    sqlite3* db = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_prepare_v2(db, query, -1, &statement, nullptr);
    Sum sum;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++sum.rows;
        sum.integers += sqlite3_column_int64(statement, 0);
        for (int column = 1; column <= 5; ++column)
            addText(sum, statement, column);
        sum.reals += sqlite3_column_double(statement, 6);
        sum.integers += sqlite3_column_int64(statement, 7);
        addText(sum, statement, 8);
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return sum;
}

struct Round {
    double bare = 0;  // milliseconds
    double first = 0; // to the return of Open
    double store = 0; // to the last row
    double resident = 0;
    Sum sum;
    std::int64_t fetched = 0;
};

Round measure(const std::string& file) {
    Round round;
    auto start = Clock::now();
    round.sum = bareLoop(file);
    round.bare = millisecondsSince(start);

    const auto recordset = adodb::makeClientRecordset();
    start = Clock::now();
    recordset->Open(query, "Provider=SQLite;Data Source=" + file, adodb::adOpenStatic,
                    adodb::adLockReadOnly, adodb::adCmdText | adodb::adAsyncFetch);
    round.first = millisecondsSince(start);
    while (!recordset->WaitFetch(1000)) {
    }
    round.store = millisecondsSince(start);
    if (const auto error = recordset->FetchError()) throw *error;
    round.fetched = recordset->RecordCount();
    round.resident = residentMegabytes("VmRSS:");
    return round;
}

double best(const std::vector<Round>& rounds, double Round::*value) {
    return (*std::ranges::min_element(rounds, {}, value)).*value;
}

double median(const std::vector<Round>& rounds) {
    std::vector<double> ratios;
    ratios.reserve(rounds.size());
    for (const Round& round : rounds)
        ratios.push_back(round.store / round.bare);
    std::ranges::sort(ratios);
    return ratios[ratios.size() / 2];
}

int run(const Settings& settings) {
    std::printf("%s; the bare loop has 1 thread, the store 2 (one steps, one builds); processor "
                "cores: %u\n",
                settings.file.c_str(), std::thread::hardware_concurrency());
    std::printf("%10s %12s %10s %12s %10s %7s %12s\n", "rows", "text bytes", "bare ms", "first ms",
                "store ms", "ratio", "resident MB");
    std::vector<Round> rounds;
    for (int i = 0; i < settings.rounds; ++i) {
        const Round r = measure(settings.file);
        std::printf("%10lld %12lld %10.1f %12.2f %10.1f %7.2f %12.1f\n",
                    static_cast<long long>(r.fetched), static_cast<long long>(r.sum.bytes), r.bare,
                    r.first, r.store, r.store / r.bare, r.resident);
        if (r.fetched != r.sum.rows) {
            std::fprintf(stderr, "the loop read %lld rows\n", static_cast<long long>(r.sum.rows));
            return 1;
        }
        rounds.push_back(r);
    }
    std::printf("best: bare %.1f ms, store %.1f ms, ratio %.2f; median ratio %.2f; peak resident "
                "%.1f MB\n",
                best(rounds, &Round::bare), best(rounds, &Round::store),
                best(rounds, &Round::store) / best(rounds, &Round::bare), median(rounds),
                residentMegabytes("VmHWM:"));
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return run(withSampleFile(readArguments(count, arguments)));
    } catch (const Errore& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
