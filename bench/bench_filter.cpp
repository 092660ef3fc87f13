// Filters over a million rows of nine columns, each beside a bare loop over the same bytes in the
// same run: a wide scan (or a plain comparison) that yields row numbers, no more.
//
//   bench_filter [--righe N] [--giri N]
//
// Every figure is the best of its rounds, in milliseconds; the ratio is that of the two best. The
// bare loop scans texts that are folded already, all in one piece, 65,536 rows at a time.
#include "bench/Sample.h"
#include "platform/adodb/filter/FilterProgram.h"
#include "platform/adodb/filter/FoldedColumn.h"
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Parallel.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace {

using namespace norvel;
using namespace norvel::adodb;
using namespace norvel::bench;

// --- the rows ---

enum Columns { codice, nome, indirizzo, provincia, citta, nascita, fatturato, saldo, attivo };

// Pseudo-random numbers, the same in every run (splitmix64).
class Luck {
  public:
    std::size_t below(std::size_t n) {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return static_cast<std::size_t>(((z ^ (z >> 31U)) >> 32U) * n >> 32U);
    }
    template <std::size_t n>
    std::string_view of(const std::string_view (&list)[n]) {
        return list[below(n)];
    }

  private:
    std::uint64_t state_ = 71'000;
};

constexpr std::string_view trades[] = {"Mobilificio", "Studio legale", "Officina",   "Panificio",
                                       "Immobiliare", "Carpenteria",   "Tipografia", "Caffè",
                                       "Ottica",      "Autotrasporti", "Società",    "Vetreria"};
// Of these fourteen one has the needle.
constexpr std::string_view names[] = {"Rossi",   "Bianchi", "Ferrari", "Esposito", "D'Amico",
                                      "Colombo", "Ricci",   "Marino",  "Greco",    "Bruno",
                                      "Gallo",   "Conti",   "De Luca", "Mancini"};
constexpr std::string_view streets[] = {"Via Garibaldi", "Corso Cavour",     "Piazza Dante",
                                        "Via Mazzini",   "Viale Università", "Via Monterosso",
                                        "Via Verdi",     "Largo Augusto",    "Via dei Mille"};
constexpr std::string_view towns[] = {"Milano", "Forlì", "Roma",  "Napoli", "Torino",
                                      "Cantù",  "Bari",  "Lecce", "Prato",  "Rho"};
constexpr std::string_view provinces[] = {"MI", "FC", "RM", "NA", "TO", "CO", "BA", "LE", "PO"};

void addRow(Batch& batch, std::int64_t number, Luck& luck, std::string& text) {
    const auto set = [&](int column) {
        if (!batch.setText(column, text.data(), text.size())) throw Errore(5, "la riga è lunga");
    };
    batch.setInteger(codice, number);
    text.assign(luck.of(trades)).append(" ").append(luck.of(names)).append(" ");
    set((text.append(std::to_string(luck.below(900'000))), nome)); // hardly ever the same twice
    text.assign(luck.of(streets)).append(", ").append(std::to_string(luck.below(30'000)));
    set((text.append(" int. ").append(std::to_string(luck.below(100))), indirizzo));
    set((text.assign(luck.of(provinces)), provincia));
    set((text.assign(luck.of(towns)), citta));
    batch.setDate(nascita, static_cast<double>(10'000 + luck.below(30'000)));
    batch.setReal(fatturato, static_cast<double>(luck.below(1'000'000)) / 7.0);
    batch.setReal(saldo, static_cast<double>(luck.below(10'000'000)) / 100.0);
    batch.setInteger(attivo, luck.below(5) != 0 ? 1 : 0);
}

std::shared_ptr<ColumnStore> makeStore(std::int64_t rows) {
    auto store = std::make_shared<ColumnStore>(
        std::vector{describeColumn("codice", adInteger), describeColumn("nome", adVarWChar),
                    describeColumn("indirizzo", adVarWChar),
                    describeColumn("provincia", adVarWChar), describeColumn("citta", adVarWChar),
                    describeColumn("nascita", adDate), describeColumn("fatturato", adDouble),
                    describeColumn("saldo", adCurrency), describeColumn("attivo", adBoolean)});
    GroupBuilder builder(store);
    Batch batch(store->columnCount());
    Luck luck;
    std::string text;
    for (std::int64_t number = 0; number < rows;) {
        batch.reset(1000);
        do
            addRow(batch, number++, luck, text);
        while (batch.endRow() && number < rows);
        builder.take(batch);
    }
    builder.publish();
    return store;
}

// --- the bare loops ---

constexpr RowNumber slice = 65'536;

// A column's folded texts, as the grid shows them, in one piece.
struct Flat {
    std::vector<char> bytes;
    std::vector<std::uint32_t> ends{0};

    Flat(const ColumnStore& store, int column) {
        for (std::int64_t row = 0; row < store.rows(); ++row) {
            const Variant value = store.value(column, row);
            const std::string folded = foldText(value.toDisplay());
            bytes.insert(bytes.end(), folded.begin(), folded.end());
            ends.push_back(static_cast<std::uint32_t>(bytes.size()));
        }
        bytes.resize(bytes.size() + 64); // so that the loop may read on
    }
    std::size_t size() const { return bytes.size() - 64; }
};

// Row numbers of each slice, in room that is there.
struct Found {
    explicit Found(std::size_t count)
        : rows(count), numbers(count + slice), counts((count + slice - 1) / slice) {}
    std::size_t rows;
    std::vector<RowNumber> numbers;
    std::vector<std::size_t> counts;

    // scan(begin, end, to) writes the rows that pass and returns how many.
    template <class Scan>
    std::size_t run(unsigned threads, Scan scan) {
        runParallel(
            counts.size(),
            [&](std::size_t i) {
                const std::size_t begin = i * slice;
                counts[i] = scan(begin, std::min(rows, begin + slice), numbers.data() + begin);
            },
            threads);
        std::size_t total = 0;
        for (const std::size_t count : counts)
            total += count;
        return total;
    }
};

std::size_t plainScan(const Flat& flat, std::size_t begin, std::size_t end, std::string_view needle,
                      RowNumber* to) {
    std::size_t count = 0;
    for (std::size_t row = begin; row < end; ++row) {
        const std::string_view text(flat.bytes.data() + flat.ends[row],
                                    flat.ends[row + 1] - flat.ends[row]);
        if (text.find(needle) != std::string_view::npos) to[count++] = static_cast<RowNumber>(row);
    }
    return count;
}

#ifdef __SSE2__
__attribute__((target("avx2"))) std::size_t wideScan(const Flat& flat, std::size_t begin,
                                                     std::size_t end, std::string_view needle,
                                                     RowNumber* to) {
    const char* bytes = flat.bytes.data();
    const __m256i first = _mm256_set1_epi8(needle.front());
    const __m256i last = _mm256_set1_epi8(needle.back());
    const std::size_t behind = flat.ends[end];
    std::size_t row = begin;
    std::size_t count = 0;
    std::size_t next = 0;
    for (std::size_t at = flat.ends[begin]; at < behind; at += 32) {
        const auto* head = reinterpret_cast<const __m256i*>(bytes + at);
        const auto* tail = reinterpret_cast<const __m256i*>(bytes + at + needle.size() - 1);
        const __m256i both = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_loadu_si256(head), first),
                                              _mm256_cmpeq_epi8(_mm256_loadu_si256(tail), last));
        auto bits = static_cast<unsigned>(_mm256_movemask_epi8(both));
        for (; bits != 0; bits &= bits - 1) {
            const std::size_t position = at + static_cast<std::size_t>(std::countr_zero(bits));
            if (position < next || position >= behind) continue;
            if (std::memcmp(bytes + position, needle.data(), needle.size()) != 0) continue;
            while (flat.ends[row + 1] <= position)
                ++row;
            if (position + needle.size() > flat.ends[row + 1]) continue;
            to[count++] = static_cast<RowNumber>(row);
            next = flat.ends[row + 1];
        }
    }
    return count;
}
#endif

std::size_t bareScan(const Flat& flat, std::size_t begin, std::size_t end, std::string_view needle,
                     RowNumber* to) {
#ifdef __SSE2__
    static const bool wide = __builtin_cpu_supports("avx2") != 0;
    if (wide) return wideScan(flat, begin, end, needle, to);
#endif
    return plainScan(flat, begin, end, needle, to);
}

// The values of a column as they lie, group after group.
template <class T>
std::vector<T> flatValues(const ColumnStore& store, int column) {
    std::vector<T> all;
    for (std::size_t i = 0; i < store.groups(); ++i) {
        const auto values = store.group(i).segment(column).values<T>();
        all.insert(all.end(), values.begin(), values.end());
    }
    return all;
}

template <class T, class Test>
std::size_t bareValues(const std::vector<T>& values, Found& found, unsigned threads, Test test) {
    return found.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
        std::size_t count = 0;
        for (std::size_t row = begin; row < end; ++row) {
            to[count] = static_cast<RowNumber>(row);
            count += test(values[row]) ? 1 : 0;
        }
        return count;
    });
}

// --- measuring ---

class Table {
  public:
    Table(std::int64_t rows, int rounds) : rows_(rows), rounds_(rounds) {
        std::printf("%-34s %9s %7s %8s %9s %9s %6s %8s\n", "", "hits", "MB", "threads", "bare ms",
                    "filter ms", "ratio", "ns/row");
    }
    // bare and filter, given a number of threads (0: all), return how many rows they found; before
    // runs ahead of every filter, unmeasured.
    using Run = std::function<std::size_t(unsigned)>;
    void line(const char* what, double megabytes, const Run& bare, const Run& filter,
              const std::function<void()>& before = {}) {
        for (const unsigned threads : {1U, 0U}) {
            double bestBare = 1e9;
            double bestFilter = 1e9;
            std::size_t hits = 0;
            for (int i = 0; i < rounds_; ++i) {
                auto start = Clock::now();
                const std::size_t expected = bare(threads);
                bestBare = std::min(bestBare, millisecondsSince(start));
                if (before) before();
                start = Clock::now();
                hits = filter(threads);
                bestFilter = std::min(bestFilter, millisecondsSince(start));
                if (hits != expected) {
                    std::fprintf(stderr, "%s: the bare loop found %zu rows, the filter %zu\n", what,
                                 expected, hits);
                    std::exit(1);
                }
            }
            std::printf("%-34s %9zu %7.1f %8u %9.3f %9.3f %6.2f %8.3f\n", what, hits, megabytes,
                        threads == 0 ? parallelThreads() : threads, bestBare, bestFilter,
                        bestFilter / bestBare, bestFilter * 1e6 / static_cast<double>(rows_));
            std::fflush(stdout);
        }
    }

  private:
    std::int64_t rows_;
    int rounds_;
};

using Program = std::shared_ptr<const FilterProgram>;

class Bench {
  public:
    Bench(std::int64_t rows, int rounds)
        : store_(makeStore(rows)), names_(*store_, nome), streets_(*store_, indirizzo),
          found_(static_cast<std::size_t>(rows)), more_(static_cast<std::size_t>(rows)),
          table_(rows, rounds) {}

    void run() {
        texts();
        further();
        values();
        dictionaries();
        sets();
        few();
        memory();
    }

  private:
    Program compiled(const std::string& filter) const {
        return FilterProgram::compile(parseFilter(filter), store_->columns());
    }
    Table::Run filtered(const std::string& filter) const {
        return [this, program = compiled(filter)](unsigned threads) {
            RowList hits;
            program->run(*store_, 0, static_cast<RowNumber>(store_->rows()), hits, threads);
            return hits.size();
        };
    }
    Table::Run scanned(const Flat& flat, const std::string& needle) {
        return [this, &flat, needle](unsigned threads) {
            return found_.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
                return bareScan(flat, begin, end, needle, to);
            });
        };
    }
    template <class T, class Test>
    Table::Run compared(const std::vector<T>& values, Test test) {
        return [this, &values, test](unsigned threads) {
            return bareValues(values, found_, threads, test);
        };
    }

    void texts() {
        const double size = static_cast<double>(names_.size()) / 1e6;
        table_.line("first use, folding included", size, scanned(names_, "ros"),
                    filtered("nome LIKE '*ros*'"), [&] { store_->derived().forget(nome); });
        filtered("indirizzo LIKE '*ros*'")(0);
        table_.line("contains \"ros\"", size, scanned(names_, "ros"),
                    filtered("nome LIKE '*ros*'"));
        table_.line("contains \"rzs\", which misses", size, scanned(names_, "rzs"),
                    filtered("nome LIKE '*rzs*'"));
        table_.line("contains \"o\", nearly everywhere", size, scanned(names_, "o"),
                    filtered("nome LIKE '*o*'"));
        const auto first = scanned(names_, "ros");
        table_.line(
            "two columns contain \"ros\"", size + static_cast<double>(streets_.size()) / 1e6,
            [&](unsigned threads) { // both are scanned; how many rows have both is known
                first(threads);
                more_.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
                    return bareScan(streets_, begin, end, "ros", to);
                });
                if (both_ == 0) both_ = countBoth();
                return both_;
            },
            filtered("nome LIKE '*ros*' AND indirizzo LIKE '*ros*'"));
    }
    std::size_t countBoth() const {
        std::size_t count = 0;
        for (std::size_t i = 0; i < found_.counts.size(); ++i) {
            RowList rows;
            const auto* a = found_.numbers.data() + i * slice;
            const auto* b = more_.numbers.data() + i * slice;
            std::set_intersection(a, a + found_.counts[i], b, b + more_.counts[i],
                                  std::back_inserter(rows));
            count += rows.size();
        }
        return count;
    }

    // A needle that grows by a letter.
    void further() {
        RowList old;
        const auto wide = compiled("nome LIKE '*ros*'");
        wide->run(*store_, 0, static_cast<RowNumber>(store_->rows()), old);
        const auto narrow = compiled("nome LIKE '*ross*'");
        const auto over = [&](unsigned threads) {
            RowList hits;
            if (narrow->narrows(*wide)) narrow->runOver(*store_, old, hits, threads);
            return hits.size();
        };
        const double size = static_cast<double>(names_.size()) / 1e6;
        table_.line("a letter more, over the rows left", size, scanned(names_, "ross"), over);
        std::ranges::shuffle(old, std::minstd_rand(1));
        table_.line("the same in another order", size, scanned(names_, "ross"), over);
        const auto starts = [&](const char* text) {
            return [&, wanted = std::string(text)](unsigned threads) {
                return found_.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
                    std::size_t count = 0;
                    for (std::size_t row = begin; row < end; ++row)
                        if (names_.ends[row + 1] - names_.ends[row] >= wanted.size() &&
                            std::memcmp(names_.bytes.data() + names_.ends[row], wanted.data(),
                                        wanted.size()) == 0)
                            to[count++] = static_cast<RowNumber>(row);
                    return count;
                });
            };
        };
        table_.line("begins with \"mob\"", size, starts("mob"), filtered("nome LIKE 'mob*'"));
        const std::string whole = "mobilificio rossi 4711";
        table_.line(
            "= a text", size,
            [&](unsigned threads) {
                return found_.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
                    std::size_t count = 0;
                    for (std::size_t row = begin; row < end; ++row)
                        if (names_.ends[row + 1] - names_.ends[row] == whole.size() &&
                            std::memcmp(names_.bytes.data() + names_.ends[row], whole.data(),
                                        whole.size()) == 0)
                            to[count++] = static_cast<RowNumber>(row);
                    return count;
                });
            },
            filtered("nome='Mobilificio Rossi 4711'"));
    }

    void values() {
        const auto rows = static_cast<double>(store_->rows());
        const auto numbers = flatValues<std::int32_t>(*store_, codice);
        const Flat shown(*store_, codice);
        const double size = static_cast<double>(shown.size()) / 1e6;
        table_.line("first use of numbers as texts", size, scanned(shown, "471"),
                    filtered("codice LIKE '*471*'"), [&] { store_->derived().forget(codice); });
        table_.line("a whole number contains \"471\"", size, scanned(shown, "471"),
                    filtered("codice LIKE '*471*'"));
        table_.line("= a whole number", rows * 4 / 1e6,
                    compared(numbers, [](std::int32_t v) { return v == 4711; }),
                    filtered("codice=4711"));
        table_.line("> a whole number", rows * 4 / 1e6,
                    compared(numbers, [](std::int32_t v) { return v > 500'000; }),
                    filtered("codice>500000"));
        const auto reals = flatValues<double>(*store_, fatturato);
        table_.line("< a double", rows * 8 / 1e6,
                    compared(reals, [](double v) { return v < 1000; }), filtered("fatturato<1000"));
        const auto money = flatValues<std::int32_t>(*store_, saldo);
        table_.line("> an amount of money", rows * 4 / 1e6,
                    compared(money, [](std::int32_t v) { return v > 500'000'000; }),
                    filtered("saldo>50000"));
        const auto days = flatValues<std::int32_t>(*store_, nascita);
        table_.line("two bounds of a date", rows * 4 / 1e6,
                    compared(days, [](std::int32_t v) { return v >= 20'000 && v < 21'000; }),
                    filtered("nascita>=#1954-10-03# AND nascita<#1957-06-29#"));
        const auto flags = flatValues<std::uint8_t>(*store_, attivo);
        table_.line("a Boolean", rows / 1e6, compared(flags, [](std::uint8_t v) { return v == 0; }),
                    filtered("attivo=0"));
    }

    void dictionaries() {
        const auto rows = static_cast<double>(store_->rows());
        const auto numbers = flatValues<std::uint8_t>(*store_, citta);
        const auto has = [](std::string_view town) {
            return findText(town, "ro") != std::string::npos;
        };
        std::vector<bool> wanted;
        const Segment& segment = store_->group(0).segment(citta);
        for (std::uint32_t i = 0; i < segment.entries; ++i)
            wanted.push_back(has(segment.run(i)));
        // The texts have other numbers in other groups: the loop looks at the first group's.
        const auto some = static_cast<RowNumber>(segment.rows);
        const auto program = compiled("citta LIKE '*ro*'");
        table_.line(
            "contains, of a dictionary (1 group)", some / 1e6,
            [&](unsigned) {
                std::size_t count = 0;
                for (RowNumber row = 0; row < some; ++row) {
                    found_.numbers[count] = row;
                    count += wanted[numbers[row]] ? 1 : 0;
                }
                return count;
            },
            [&](unsigned threads) {
                RowList hits;
                program->run(*store_, 0, some, hits, threads);
                return hits.size();
            });
        const auto whole = filtered("provincia='MI'");
        const std::size_t known = whole(0);
        table_.line(
            "= a text of a dictionary", rows / 1e6,
            [&](unsigned threads) {
                bareValues(numbers, found_, threads, [](std::uint8_t v) { return v == 1; });
                return known;
            },
            whole);
    }

    // A multiple choice of a thousand values.
    void sets() {
        std::string filter;
        for (int i = 0; i < 1000; ++i)
            filter += (i ? " OR codice=" : "codice=") + std::to_string(i * 17);
        const auto rows = static_cast<double>(store_->rows());
        const auto numbers = flatValues<std::int32_t>(*store_, codice);
        table_.line("= one of 1,000 numbers", rows * 4 / 1e6,
                    compared(numbers, [](std::int32_t v) { return v < 17'000 && v % 17 == 0; }),
                    filtered(filter));
        filter.clear();
        std::unordered_set<std::string> wanted;
        for (int i = 0; i < 1000; ++i) {
            const std::string text = "Mobilificio Rossi " + std::to_string(i * 10);
            filter.append(i ? " OR nome='" : "nome='").append(text).append("'");
            wanted.insert(foldText(text));
        }
        table_.line(
            "= one of 1,000 texts", static_cast<double>(names_.size()) / 1e6,
            [&](unsigned threads) {
                return found_.run(threads, [&](std::size_t begin, std::size_t end, RowNumber* to) {
                    std::size_t count = 0;
                    for (std::size_t row = begin; row < end; ++row)
                        if (wanted.contains({names_.bytes.data() + names_.ends[row],
                                             names_.ends[row + 1] - names_.ends[row]}))
                            to[count++] = static_cast<RowNumber>(row);
                    return count;
                });
            },
            filtered(filter));
    }

    // Where several threads begin to pay; the filter chooses by itself.
    void few() {
        for (const RowNumber rows : {1'000U, 10'000U, 65'536U}) {
            const auto program = compiled("nome LIKE '*ros*'");
            const std::string what = "contains \"ros\", " + std::to_string(rows) + " rows";
            if (rows > store_->rows()) continue;
            table_.line(
                what.c_str(), static_cast<double>(names_.ends[rows]) / 1e6,
                [&](unsigned) { return bareScan(names_, 0, rows, "ros", found_.numbers.data()); },
                [&](unsigned threads) {
                    RowList hits;
                    program->run(*store_, 0, rows, hits, threads);
                    return hits.size();
                });
        }
    }

    void memory() const {
        std::printf("\nthe store: %.1f MB; folded texts:",
                    static_cast<double>(store_->bytes()) / 1e6);
        for (int column = 0; column < store_->columnCount(); ++column) {
            const auto kept = store_->derived().of<FoldedColumn>(column);
            if (kept->memory() > 0)
                std::printf(" %s %.1f MB",
                            store_->columns()[static_cast<std::size_t>(column)].name.c_str(),
                            static_cast<double>(kept->memory()) / 1e6);
        }
        std::printf("\n");
    }

    std::shared_ptr<ColumnStore> store_;
    Flat names_;
    Flat streets_;
    Found found_;
    Found more_;
    std::size_t both_ = 0;
    Table table_;
};

} // namespace

int main(int count, char** arguments) {
    const Settings settings = readArguments(count, arguments, {.rounds = 15});
    try {
        std::printf("%lld rows of 9 columns\n", static_cast<long long>(settings.rows));
        Bench(settings.rows, settings.rounds).run();
        return 0;
    } catch (const Errore& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
