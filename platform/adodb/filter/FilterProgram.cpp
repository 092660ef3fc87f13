#include "platform/adodb/filter/FilterProgram.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/filter/ColumnTest.h"
#include "platform/runtime/Parallel.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr RowNumber rowsWorthThreads = 32768; // fewer are done before threads are awake
constexpr std::size_t rowsAPiece = 16384;     // of a list of rows

struct Condition {
    int column = 0;
    DataTypeEnum type = adEmpty;
    std::shared_ptr<const ColumnTest> test;

    bool implies(const Condition& other) const {
        return column == other.column && test->implies(*other.test);
    }
};
using Conditions = std::vector<Condition>;

// The part of a row group that a run looks at.
struct Piece {
    const RowGroup* group = nullptr;
    RowNumber firstRow = 0; // of the group
    RowNumber begin = 0;    // of the part, in the group
    RowNumber end = 0;
};

class Program : public FilterProgram {
  public:
    explicit Program(std::vector<Conditions> groups) : groups_(std::move(groups)) {}

    void run(const ColumnStore& store, RowNumber first, RowNumber last, RowList& hits,
             unsigned threads) const override {
        const auto pieces = piecesOf(store, first, last);
        const bool few = last - first < rowsWorthThreads;
        collect(pieces.size(), few ? 1 : threads, hits,
                [&](std::size_t i, RowList& found) { runPiece(pieces[i], found); });
    }

    void runOver(const ColumnStore& store, const RowList& rows, RowList& hits,
                 unsigned threads) const override {
        const bool few = rows.size() < rowsWorthThreads;
        collect((rows.size() + rowsAPiece - 1) / rowsAPiece, few ? 1 : threads, hits,
                [&](std::size_t i, RowList& found) {
                    const std::size_t end = std::min(rows.size(), (i + 1) * rowsAPiece);
                    for (std::size_t k = i * rowsAPiece; k < end; ++k)
                        if (matches(store, rows[k])) found.push_back(rows[k]);
                });
    }

    bool matches(const ColumnStore& store, RowNumber row) const override {
        if (groups_.empty()) return true;
        const auto place = store.find(row);
        return std::ranges::any_of(groups_, [&](const Conditions& all) {
            return std::ranges::all_of(all, [&](const Condition& each) {
                return each.test->row(place.group->segment(each.column), each.type, place.row);
            });
        });
    }

    bool narrows(const FilterProgram& otherProgram) const override {
        const auto* other = dynamic_cast<const Program*>(&otherProgram);
        if (!other) return false;
        if (other->groups_.empty()) return true;
        if (groups_.empty()) return false;
        return std::ranges::all_of(groups_, [&](const Conditions& own) {
            return std::ranges::any_of(
                other->groups_, [&](const Conditions& wider) { return impliesAll(own, wider); });
        });
    }

  private:
    static bool impliesAll(const Conditions& own, const Conditions& wider) {
        return std::ranges::all_of(wider, [&](const Condition& wanted) {
            return std::ranges::any_of(own,
                                       [&](const Condition& has) { return has.implies(wanted); });
        });
    }

    // Pieces run on several threads; what they found comes together in their order.
    template <class Work>
    static void collect(std::size_t pieces, unsigned threads, RowList& hits, Work work) {
        if (pieces == 1) return work(0, hits);
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

    static std::vector<Piece> piecesOf(const ColumnStore& store, RowNumber first, RowNumber last) {
        std::vector<Piece> pieces;
        for (std::size_t i = 0; i < store.groups(); ++i) {
            const auto start = static_cast<RowNumber>(store.firstRow(i));
            const RowGroup& group = store.group(i);
            if (start >= last) break;
            if (start + group.rows() <= first) continue;
            pieces.push_back({&group, start, std::max(first, start) - start,
                              std::min(last - start, group.rows())});
        }
        return pieces;
    }

    void runPiece(const Piece& piece, RowList& found) const {
        const std::size_t rows = piece.group->rows();
        std::vector<std::uint8_t> any(rows, groups_.empty() ? 1 : 0);
        std::vector<std::uint8_t> all(rows);
        for (const Conditions& conditions : groups_) {
            std::ranges::fill(all, 1);
            for (const Condition& each : conditions)
                each.test->narrow(piece.group->segment(each.column), each.type, all);
            for (std::size_t row = 0; row < rows; ++row)
                any[row] |= all[row];
        }
        for (RowNumber row = piece.begin; row < piece.end; ++row)
            if (any[row] != 0) found.push_back(piece.firstRow + row);
    }

    std::vector<Conditions> groups_;
};

int columnNamed(const std::string& name, const std::vector<ColumnInfo>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (equalsText(columns[i].name, name)) return static_cast<int>(i);
    throw adoError(adErrItemNotFound, "Il filtro nomina il campo «" + name + "».");
}

} // namespace

FilterProgram::~FilterProgram() = default;

std::shared_ptr<const FilterProgram>
FilterProgram::compile(const Criteria& criteria, const std::vector<ColumnInfo>& columns) {
    std::vector<Conditions> groups;
    for (const auto& clauses : criteria.groups) {
        Conditions& conditions = groups.emplace_back();
        for (const FilterClause& clause : clauses) {
            const int column = columnNamed(clause.name, columns);
            const ColumnInfo& info = columns[static_cast<std::size_t>(column)];
            conditions.push_back({column, info.type, ColumnTest::make(clause, info)});
        }
    }
    return std::make_shared<Program>(std::move(groups));
}

} // namespace norvel::adodb
