// Sorts of the sample database's customers, beside a bare loop in the same run: std::sort of as
// many 8-byte keys.
//
//   bench_sort [--righe N] [--giri N] [--file PATH]
//
// Without --file the sample database is made once in the system's folder of temporary files. Each
// figure is the best of the rounds, in milliseconds. "first": nothing is kept of the column yet;
// "again": its ranks and its order are; "DESC": the whole set in the other direction; "tenth":
// every tenth row. The last lines are a recordset's own: what an operator waits for.
#include "bench/Sample.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/sort/ColumnRanks.h"
#include "platform/adodb/sort/SortOrder.h"
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Parallel.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace norvel;
using namespace norvel::bench;

// The best of the rounds; prepare is not measured.
double best(int rounds, const std::function<void()>& prepare, const std::function<void()>& work) {
    double least = 1e300;
    for (int i = 0; i < rounds; ++i) {
        prepare();
        const auto start = Clock::now();
        work();
        least = std::min(least, millisecondsSince(start));
    }
    return least;
}

// As the recordset stores them, but that the turnover is a double.
std::vector<adodb::ColumnInfo> columns() {
    using namespace adodb;
    return {describeColumn("codice", adInteger),     describeColumn("ragione_sociale", adVarWChar),
            describeColumn("citta", adVarWChar),     describeColumn("provincia", adVarWChar),
            describeColumn("indirizzo", adVarWChar), describeColumn("data_nascita", adDate),
            describeColumn("fatturato", adDouble),   describeColumn("attivo", adBoolean),
            describeColumn("note", adVarWChar)};
}

// False where the row no longer fits.
bool takeRow(sqlite3_stmt* statement, adodb::Batch& batch) {
    for (int c = 0; c < batch.columns(); ++c) {
        switch (sqlite3_column_type(statement, c)) {
        case SQLITE_INTEGER:
            if (c == 6)
                batch.setReal(c, sqlite3_column_double(statement, c));
            else
                batch.setInteger(c, sqlite3_column_int64(statement, c));
            break;
        case SQLITE_FLOAT:
            batch.setReal(c, sqlite3_column_double(statement, c));
            break;
        case SQLITE_TEXT: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, c));
            const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, c));
            if (!batch.setText(c, text, length)) return false;
            break;
        }
        default:
            batch.setNull(c);
        }
    }
    return true;
}

std::shared_ptr<adodb::ColumnStore> load(const std::string& file) {
    auto store = std::make_shared<adodb::ColumnStore>(columns());
    adodb::GroupBuilder builder(store);
    adodb::Batch batch(store->columnCount());
    sqlite3* db = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_prepare_v2(db, "SELECT * FROM clienti", -1, &statement, nullptr);
    bool row = sqlite3_step(statement) == SQLITE_ROW;
    while (row) {
        batch.reset(batch.capacityLimit());
        bool more = true;
        while (row && more && takeRow(statement, batch)) {
            more = batch.endRow();
            row = sqlite3_step(statement) == SQLITE_ROW;
        }
        builder.take(batch);
    }
    builder.publish();
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return store;
}

std::uint64_t scattered(std::uint64_t n) {
    n = (n ^ (n >> 30U)) * 0xBF58476D1CE4E5B9U;
    n = (n ^ (n >> 27U)) * 0x94D049BB133111EBU;
    return n ^ (n >> 31U);
}

double bareSort(std::size_t rows, int rounds) {
    std::vector<std::uint64_t> keys(rows);
    return best(
        rounds,
        [&] {
            for (std::size_t i = 0; i < rows; ++i)
                keys[i] = scattered(i);
        },
        [&] { std::ranges::sort(keys); });
}

// What the values of a column take, as bytes of text or of numbers.
std::size_t bytesOf(const adodb::ColumnStore& store, int column) {
    std::size_t bytes = 0;
    for (std::size_t g = 0; g < store.groups(); ++g) {
        const adodb::Segment& segment = store.group(g).segment(column);
        for (std::uint32_t row = 0; row < segment.rows; ++row)
            bytes += segment.ends == nullptr ? 8 : segment.text(row).size();
    }
    return bytes;
}

class Sorts {
  public:
    Sorts(const adodb::ColumnStore& store, double bare, int rounds)
        : store_(store), bare_(bare), rounds_(rounds),
          all_(static_cast<std::size_t>(store.rows())) {
        std::iota(all_.begin(), all_.end(), adodb::RowNumber{0});
    }

    static void head() {
        std::printf("%-28s %7s %12s %9s %7s %9s %9s %9s %9s\n", "sort", "threads", "bytes", "first",
                    "ratio", "again", "DESC", "tenth", "kept MB");
    }

    void measure(const std::string& sort, const std::vector<int>& sorted, unsigned threads) {
        const auto order = adodb::SortOrder::make(adodb::parseSort(sort), store_.columns());
        const auto turned =
            adodb::SortOrder::make(adodb::parseSort(sort + " DESC"), store_.columns());
        const auto forget = [&] {
            for (const int column : sorted)
                store_.derived().forget(column);
            rows_ = all_;
        };
        const auto work = [&] { order->sort(store_, rows_, threads); };
        const auto whole = [&] { rows_ = all_; };
        const double first = best(rounds_, forget, work);
        const double again = best(rounds_, whole, work);
        const double down = best(rounds_, whole, [&] { turned->sort(store_, rows_, threads); });
        const auto tenth = [&] {
            rows_.clear();
            for (std::size_t i = 0; i < all_.size(); i += 10)
                rows_.push_back(all_[i]);
        };
        const double part = best(rounds_, tenth, work);
        std::size_t bytes = 0;
        double kept = 0;
        for (const int column : sorted) {
            bytes += bytesOf(store_, column);
            kept += static_cast<double>(store_.derived().of<adodb::KeptOrder>(column)->bytes()) /
                    1048576.0;
        }
        std::printf("%-28s %7u %12zu %9.1f %7.2f %9.2f %9.2f %9.2f %9.1f\n", sort.c_str(),
                    threads == 0 ? parallelThreads() : threads, bytes, first, first / bare_, again,
                    down, part, kept);
    }

  private:
    const adodb::ColumnStore& store_;
    double bare_;
    int rounds_;
    adodb::RowList all_;
    adodb::RowList rows_;
};

void timed(const char* what, const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    std::printf("  %-52s %9.2f ms\n", what, millisecondsSince(start));
}

void recordset(const std::string& file) {
    const auto rs = adodb::makeClientRecordset();
    rs->Open("SELECT * FROM clienti", "Provider=SQLite;Data Source=" + file, adodb::adOpenStatic,
             adodb::adLockReadOnly);
    const auto to = [&](const std::string& sort) {
        return [&rs, sort] {
            rs->SetSort(sort);
            rs->MoveFirst();
        };
    };
    const auto filter = [&](const std::string& text) {
        return [&rs, text] {
            rs->SetFilter(text);
            rs->MoveFirst();
        };
    };
    std::printf("recordset, %lld rows, Sort or Filter and MoveFirst, once each:\n",
                static_cast<long long>(rs->RecordCount()));
    timed("Sort = ragione_sociale", to("[ragione_sociale]  asc"));
    timed("Sort = ragione_sociale, turned", to("[ragione_sociale]  desc"));
    timed("turned again", to("[ragione_sociale]  asc"));
    timed("Sort = fatturato", to("[fatturato]  asc"));
    timed("Sort = ragione_sociale again", to("[ragione_sociale]  asc"));
    timed("no sort", to(""));
    timed("Filter: contains \"ros\", no sort", filter("ragione_sociale LIKE '*ros*'"));
    timed("no filter", filter(""));
    timed("Sort = ragione_sociale again", to("[ragione_sociale]  asc"));
    timed("Filter: contains \"ros\", sort kept", filter("ragione_sociale LIKE '*ros*'"));
    timed("Filter: contains \"ross\", sort kept", filter("ragione_sociale LIKE '*ross*'"));
    timed("no filter, sort kept", filter(""));
}

void run(const Settings& settings) {
    const auto store = load(settings.file);
    const auto rows = static_cast<std::size_t>(store->rows());
    const double bare = bareSort(rows, settings.rounds);
    std::printf("%s: %zu rows, 9 columns; std::sort of %zu 8-byte keys, 1 thread: %.1f ms\n",
                settings.file.c_str(), rows, rows, bare);
    Sorts sorts(*store, bare, settings.rounds);
    Sorts::head();
    for (const unsigned threads : {1U, 0U}) {
        sorts.measure("ragione_sociale", {1}, threads);
        sorts.measure("indirizzo", {4}, threads);
        sorts.measure("note", {8}, threads);
        sorts.measure("citta", {2}, threads);
        sorts.measure("fatturato", {6}, threads);
        sorts.measure("data_nascita", {5}, threads);
        sorts.measure("codice", {0}, threads);
        sorts.measure("attivo", {7}, threads);
        sorts.measure("citta, fatturato", {2, 6}, threads);
    }
    recordset(settings.file);
}

} // namespace

int main(int count, char** arguments) {
    try {
        run(withSampleFile(readArguments(count, arguments)));
        return 0;
    } catch (const Errore& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
