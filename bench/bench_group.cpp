// Grouping a recordset's rows by a column of 400 values, by two columns, and by one of as many
// values as rows, beside a bare loop in the same run: a hash table of the texts' bytes and a
// counting sort of row numbers, on one thread.
//
//   bench_group [--righe N] [--giri N]
//
// Each figure is the best of the rounds, in milliseconds. "first": nothing is kept of the columns
// yet; "again": their ranks are (the recordset was sorted by them, or grouped before). Both are all
// that an operator waits for: the clone's new order and the groups. "lines": what the grid makes of
// them.
#include "bench/Sample.h"
#include "platform/adodb/Recordset.h"
#include "platform/grid/groups/Lines.h"
#include "platform/runtime/Parallel.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace norvel;
using namespace norvel::bench;

// Rows of made-up towns, a district each, and a code that no other row has.
std::string query(std::int64_t rows) {
    return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " +
           std::to_string(rows) +
           ") SELECT 'Comune di ' || (i * 7919 % 400) AS comune, 'Zona ' || (i * 31 % 7) AS zona, "
           "'Codice ' || (i * 7919 % 1000003) AS codice FROM n";
}

adodb::RecordsetRef open(std::int64_t rows) {
    auto recordset = adodb::makeClientRecordset();
    recordset->Open(query(rows), "Provider=SQLite;Data Source=:memory:", adodb::adOpenStatic,
                    adodb::adLockReadOnly);
    return recordset;
}

std::vector<std::string> texts(adodb::Recordset& recordset, const std::string& field) {
    std::vector<std::string> found;
    const auto clone = recordset.Clone();
    const adodb::RowBlock block = clone->GetRows(-1, std::int32_t{adodb::adBookmarkFirst}, {field});
    for (const Variant& value : block.values[0])
        found.push_back(value.text());
    return found;
}

// Row numbers, equal texts together.
std::size_t bareGrouping(const std::vector<std::string>& texts) {
    std::unordered_map<std::string_view, std::uint32_t> numbers;
    std::vector<std::uint32_t> groups(texts.size());
    std::vector<std::uint32_t> sizes;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto [at, fresh] =
            numbers.try_emplace(texts[i], static_cast<std::uint32_t>(sizes.size()));
        if (fresh) sizes.push_back(0);
        groups[i] = at->second;
        ++sizes[at->second];
    }
    std::vector<std::uint32_t> next(sizes.size());
    for (std::size_t g = 1; g < sizes.size(); ++g)
        next[g] = next[g - 1] + sizes[g - 1];
    std::vector<std::uint32_t> rows(texts.size());
    for (std::uint32_t i = 0; i < texts.size(); ++i)
        rows[next[groups[i]]++] = i;
    return sizes.size() + rows.back();
}

struct Times {
    double first = 1e300, again = 1e300, lines = 1e300;
};

double timed(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return millisecondsSince(start);
}

void measure(const Settings& settings, const std::vector<std::string>& fields) {
    Times best;
    std::size_t groups = 0;
    std::string name;
    for (const std::string& field : fields)
        name += (name.empty() ? "" : ", ") + field;
    for (int round = 0; round < settings.rounds; ++round) {
        const auto recordset = open(settings.rows); // nothing is kept of it
        adodb::Grouping found;
        const auto group = [&] {
            found = recordset->Clone(adodb::adLockReadOnly)->GroupBy(fields);
        };
        best.first = std::min(best.first, timed(group));
        best.again = std::min(best.again, timed(group));
        groups = found.starts.back().size();
        best.lines = std::min(best.lines, timed([&] {
                                  grid::Lines lines;
                                  lines.SetGroups(std::move(found), {}, {});
                                  lines.SetAllOpen(true);
                              }));
    }
    std::printf("%-16s %9zu %9.2f %9.2f %9.2f\n", name.c_str(), groups, best.first, best.again,
                best.lines);
}

} // namespace

int main(int count, char** arguments) {
    const Settings settings = readArguments(count, arguments);
    try {
        const auto recordset = open(settings.rows);
        std::printf("%lld rows, %u threads\n", static_cast<long long>(settings.rows),
                    parallelThreads());
        std::printf("%-16s %9s %9s %9s %9s\n", "by", "groups", "first", "again", "lines");
        measure(settings, {"comune"});
        measure(settings, {"comune", "zona"});
        measure(settings, {"codice"});
        for (const char* field : {"comune", "codice"}) {
            const auto column = texts(*recordset, field);
            std::size_t check = 0;
            double best = 1e300;
            for (int round = 0; round < settings.rounds; ++round)
                best = std::min(best, timed([&] { check += bareGrouping(column); }));
            std::printf("bare loop by %-10s, 1 thread: %.2f (%zu)\n", field, best, check);
        }
    } catch (const Errore& error) {
        std::fprintf(stderr, "%s\n", error.descrizione().c_str());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
