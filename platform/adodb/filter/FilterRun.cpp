#include "platform/adodb/filter/FilterRun.h"

#include "platform/runtime/Parallel.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <span>

namespace norvel::adodb {

namespace {

constexpr RowNumber rowsWorthThreads = 65536; // fewer are done before threads are awake
constexpr RowNumber rowsAPiece = 65536;       // of a store: at least, in whole groups
constexpr RowNumber slowRowsAPiece = 4096;    // where looking at a row is slow
constexpr std::size_t listedAPiece = 16384;   // of a list of rows
constexpr std::size_t fewListed = 64;         // are looked at one by one
// Conditions that scan look at rows one by one where at most one in so many is left.
constexpr std::size_t fewLeft = 8;
constexpr std::size_t wordBits = 64;

// Room for row numbers that are written before they are read.
class Room {
  public:
    RowNumber* of(std::size_t rows) {
        if (rows > size_) {
            rows_ = std::make_unique_for_overwrite<RowNumber[]>(rows);
            size_ = rows;
        }
        return rows_.get();
    }

  private:
    std::unique_ptr<RowNumber[]> rows_;
    std::size_t size_ = 0;
};

// A set of rows.
class Marks {
  public:
    explicit Marks(std::size_t rows) : words_((rows + wordBits - 1) / wordBits) {}
    void set(RowNumber row) { words_[row / wordBits] |= std::uint64_t{1} << (row % wordBits); }
    bool has(RowNumber row) const {
        return (words_[row / wordBits] >> (row % wordBits) & std::uint64_t{1}) != 0;
    }
    template <class Use>
    void each(Use use) const {
        for (std::size_t word = 0; word < words_.size(); ++word)
            for (std::uint64_t bits = words_[word]; bits != 0; bits &= bits - 1)
                use(static_cast<RowNumber>(word * wordBits +
                                           static_cast<std::size_t>(std::countr_zero(bits))));
    }

  private:
    std::vector<std::uint64_t> words_;
};

// Runs conditions over one group after the other; one thread's.
class GroupRun {
  public:
    GroupRun(const ColumnStore& store, const std::vector<Conditions>& alternatives)
        : store_(store), alternatives_(alternatives) {}

    // Appends the rows from begin to end (of the group) that match, as rows of the store.
    void select(std::size_t group, RowNumber begin, RowNumber end, RowList& found) {
        unite(group, end - begin, found, [&](const Conditions& conditions, RowNumber* rows) {
            return selectAll(conditions, group, begin, end, rows);
        });
    }
    // Of the ascending rows of the store, all of which lie in the group.
    void refine(std::size_t group, std::span<const RowNumber> listed, RowList& found) {
        const auto first = static_cast<RowNumber>(store_.firstRow(group));
        unite(group, listed.size(), found, [&](const Conditions& conditions, RowNumber* rows) {
            std::ranges::transform(listed, rows, [=](RowNumber row) { return row - first; });
            return refineAll(conditions, group, rows, listed.size());
        });
    }

  private:
    // What the alternatives find comes together in the rows' order.
    template <class Find>
    void unite(std::size_t group, std::size_t most, RowList& found, Find find) {
        const auto first = static_cast<RowNumber>(store_.firstRow(group));
        RowNumber* rows = rows_.of(most);
        if (alternatives_.size() == 1) {
            const std::size_t count = find(alternatives_.front(), rows);
            std::for_each(rows, rows + count, [=](RowNumber& row) { row += first; });
            found.insert(found.end(), rows, rows + count);
            return;
        }
        Marks marks(store_.group(group).rows());
        for (const Conditions& conditions : alternatives_) {
            const std::size_t count = find(conditions, rows);
            std::for_each(rows, rows + count, [&](RowNumber row) { marks.set(row); });
        }
        marks.each([&](RowNumber row) { found.push_back(row + first); });
    }

    std::size_t selectAll(const Conditions& conditions, std::size_t group, RowNumber begin,
                          RowNumber end, RowNumber* rows) {
        const Condition& first = conditions.front();
        const Cells cells(store_, group, first.column);
        return refineAll(std::span(conditions).subspan(1), group, rows,
                         first.test->select(cells, begin, end, rows));
    }

    std::size_t refineAll(std::span<const Condition> conditions, std::size_t group, RowNumber* rows,
                          std::size_t count) {
        for (const Condition& each : conditions) {
            if (count == 0) break;
            const Cells cells(store_, group, each.column);
            const bool few = count < (rows[count - 1] - rows[0]) / fewLeft;
            count = few || !each.test->scans(cells.segment)
                        ? each.test->refine(cells, rows, count)
                        : intersect(*each.test, cells, rows, count);
        }
        return count;
    }

    std::size_t intersect(const ColumnTest& test, const Cells& cells, RowNumber* rows,
                          std::size_t count) {
        const RowNumber begin = rows[0];
        const RowNumber end = rows[count - 1] + 1;
        RowNumber* others = others_.of(end - begin);
        const RowNumber* const behind = others + test.select(cells, begin, end, others);
        const RowNumber* next = others;
        return refineWhere(rows, count, [&](RowNumber row) {
            while (next != behind && *next < row)
                ++next;
            return next != behind && *next == row;
        });
    }

    const ColumnStore& store_;
    const std::vector<Conditions>& alternatives_;
    Room rows_;
    Room others_;
};

// Pieces run on several threads; what they found comes together in their order.
template <class Work>
void collect(std::size_t pieces, unsigned threads, RowList& hits, Work work) {
    if (pieces <= 1) {
        if (pieces == 1) work(0, hits);
        return;
    }
    std::vector<RowList> found(pieces);
    runParallel(
        pieces, [&](std::size_t i) { work(i, found[i]); }, threads);
    std::size_t total = hits.size();
    for (const RowList& part : found)
        total += part.size();
    hits.reserve(total);
    for (const RowList& part : found)
        hits.insert(hits.end(), part.begin(), part.end());
}

std::size_t groupOf(const ColumnStore& store, std::int64_t row) {
    std::size_t low = 0;
    std::size_t high = store.groups();
    while (high - low > 1) {
        const std::size_t middle = low + (high - low) / 2;
        (store.firstRow(middle) <= row ? low : high) = middle;
    }
    return low;
}

// Whether looking at one row takes so long that a thread for a few of them pays.
bool isSlow(const std::vector<Conditions>& alternatives) {
    return std::ranges::any_of(alternatives, [](const Conditions& conditions) {
        return conditions.back().test->cost() == ColumnTest::Cost::Collation; // the dearest
    });
}

// Where the pieces from first to last begin, and last itself. A piece is whole groups, but where
// slow rows make it worth while to cut them.
std::vector<RowNumber> cutsOf(const ColumnStore& store, RowNumber first, RowNumber last,
                              bool slow) {
    std::vector<RowNumber> cuts{first};
    if (slow) {
        while (last - cuts.back() > slowRowsAPiece)
            cuts.push_back(cuts.back() + slowRowsAPiece);
    } else {
        for (std::size_t group = groupOf(store, first) + 1; group < store.groups(); ++group) {
            const auto start = static_cast<RowNumber>(store.firstRow(group));
            if (start >= last) break;
            if (start - cuts.back() >= rowsAPiece) cuts.push_back(start);
        }
    }
    cuts.push_back(last);
    return cuts;
}

// Of ascending rows; those of one group at a time.
void refineListed(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                  std::span<const RowNumber> rows, RowList& found) {
    GroupRun run(store, alternatives);
    while (!rows.empty()) {
        const std::size_t group = groupOf(store, rows.front());
        const std::int64_t behind = store.firstRow(group) + store.group(group).rows();
        const auto end = std::ranges::lower_bound(rows, behind, {},
                                                  [](RowNumber row) { return std::int64_t{row}; });
        const auto count = static_cast<std::size_t>(end - rows.begin());
        run.refine(group, rows.first(count), found);
        rows = rows.subspan(count);
    }
}

void refineAscending(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                     std::span<const RowNumber> rows, RowList& hits, unsigned threads) {
    const bool slow = isSlow(alternatives);
    const std::size_t piece = slow ? slowRowsAPiece : listedAPiece;
    const bool few = !slow && rows.size() < rowsWorthThreads;
    collect((rows.size() + piece - 1) / piece, few ? 1 : threads, hits,
            [&](std::size_t i, RowList& found) {
                const std::size_t begin = i * piece;
                refineListed(store, alternatives,
                             rows.subspan(begin, std::min(piece, rows.size() - begin)), found);
            });
}

} // namespace

void runFilter(const ColumnStore& store, const std::vector<Conditions>& alternatives,
               RowNumber first, RowNumber last, RowList& hits, unsigned threads) {
    last = static_cast<RowNumber>(std::min<std::int64_t>(last, store.rows()));
    if (first >= last) return;
    if (alternatives.empty()) {
        const std::size_t before = hits.size();
        hits.resize(before + (last - first));
        std::iota(hits.begin() + static_cast<std::ptrdiff_t>(before), hits.end(), first);
        return;
    }
    const bool slow = isSlow(alternatives);
    const auto cuts = cutsOf(store, first, last, slow);
    const bool few = !slow && last - first < rowsWorthThreads;
    collect(cuts.size() - 1, few ? 1 : threads, hits, [&](std::size_t i, RowList& found) {
        GroupRun run(store, alternatives);
        std::size_t group = groupOf(store, cuts[i]);
        for (RowNumber from = cuts[i]; from < cuts[i + 1]; ++group) {
            const auto start = static_cast<RowNumber>(store.firstRow(group));
            const RowNumber end = std::min(cuts[i + 1], start + store.group(group).rows());
            run.select(group, from - start, end - start, found);
            from = end;
        }
    });
}

void runFilterOver(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                   const RowList& rows, RowList& hits, unsigned threads) {
    if (alternatives.empty()) {
        hits.insert(hits.end(), rows.begin(), rows.end());
    } else if (rows.size() <= fewListed) {
        for (const RowNumber row : rows)
            if (rowMatches(store, alternatives, row)) hits.push_back(row);
    } else if (std::ranges::adjacent_find(rows, std::ranges::greater_equal()) == rows.end()) {
        refineAscending(store, alternatives, rows, hits, threads);
    } else { // in the order of the rows, and then in the list's own
        Marks listed(static_cast<std::size_t>(store.rows()));
        for (const RowNumber row : rows)
            listed.set(row);
        RowList ascending;
        ascending.reserve(rows.size());
        listed.each([&](RowNumber row) { ascending.push_back(row); });
        RowList kept;
        refineAscending(store, alternatives, ascending, kept, threads);
        Marks matching(static_cast<std::size_t>(store.rows()));
        for (const RowNumber row : kept)
            matching.set(row);
        std::ranges::copy_if(rows, std::back_inserter(hits),
                             [&](RowNumber row) { return matching.has(row); });
    }
}

bool rowMatches(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                RowNumber row) {
    if (alternatives.empty()) return true;
    const auto place = store.find(row);
    return std::ranges::any_of(alternatives, [&](const Conditions& conditions) {
        return std::ranges::all_of(conditions, [&](const Condition& each) {
            const DataTypeEnum type = store.columns()[static_cast<std::size_t>(each.column)].type;
            return each.test->row(place.group->segment(each.column), type, place.row);
        });
    });
}

} // namespace norvel::adodb
