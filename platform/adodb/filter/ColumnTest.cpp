#include "platform/adodb/filter/ColumnTest.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <vector>

namespace norvel::adodb {

namespace {

constexpr std::size_t rowsWorthFolding = 128; // of a group
constexpr std::size_t looksWorthFolding = 16; // one in so many rows

// The exceptional rows in a range.
std::span<const Exceptional> exceptionsIn(const Segment& segment, std::uint32_t begin,
                                          std::uint32_t end) {
    const auto& all = segment.exceptions;
    if (all.empty()) return {};
    const auto from = std::ranges::lower_bound(all, begin, {}, &Exceptional::row);
    const auto to = std::ranges::lower_bound(from, all.end(), end, {}, &Exceptional::row);
    return {from, to};
}

// Takes the exceptional rows out of ascending rows; taken, where wanted, becomes those.
std::size_t takeOut(std::span<const Exceptional> exceptions, RowNumber* rows, std::size_t count,
                    std::vector<const Exceptional*>* taken = nullptr) {
    auto next = exceptions.begin();
    return refineWhere(rows, count, [&](RowNumber row) {
        while (next != exceptions.end() && next->row < row)
            ++next;
        const bool ordinary = next == exceptions.end() || next->row != row;
        if (!ordinary && taken) taken->push_back(&*next);
        return ordinary;
    });
}

// Puts rows among others, both ascending, none in both; there is room for them.
std::size_t putAmong(const std::vector<RowNumber>& more, RowNumber* rows, std::size_t count) {
    const std::size_t total = count + more.size();
    std::size_t to = total;
    for (std::size_t left = more.size(); left > 0;)
        rows[--to] = count > 0 && rows[count - 1] > more[left - 1] ? rows[--count] : more[--left];
    return total;
}

std::size_t withoutNulls(const Segment& segment, RowNumber* rows, std::size_t count) {
    if (!segment.nulls) return count;
    return refineWhere(rows, count, [&](RowNumber row) { return !segment.isNull(row); });
}

} // namespace

const FoldedSegment* Cells::folded(std::size_t looks) const {
    if (folded_) return folded_.get();
    if (segment.rows < rowsWorthFolding) return nullptr;
    const auto kept = store_.derived().of<FoldedColumn>(column_);
    folded_ = looks * looksWorthFolding < segment.rows ? kept->made(group_)
                                                       : kept->segment(group_, segment, type);
    return folded_.get();
}

ColumnTest::~ColumnTest() = default;

std::size_t ColumnTest::select(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                               RowNumber* rows) const {
    const Segment& segment = cells.segment;
    if (segment.storage == Storage::Null) return 0;
    std::size_t count = 0;
    if (segment.storage != Storage::Mixed)
        count = withoutNulls(segment, rows, selectPlain(cells, begin, end, rows));
    const auto exceptions = exceptionsIn(segment, begin, end);
    if (exceptions.empty()) return count;
    count = takeOut(exceptions, rows, count);
    std::vector<RowNumber> passing;
    for (const Exceptional& each : exceptions)
        if (value(each.value)) passing.push_back(each.row);
    return putAmong(passing, rows, count);
}

std::size_t ColumnTest::refine(const Cells& cells, RowNumber* rows, std::size_t count) const {
    const Segment& segment = cells.segment;
    if (segment.storage == Storage::Null || count == 0) return 0;
    count = withoutNulls(segment, rows, count);
    if (count == 0) return 0;
    std::vector<RowNumber> passing;
    if (const auto exceptions = exceptionsIn(segment, rows[0], rows[count - 1] + 1);
        !exceptions.empty()) {
        std::vector<const Exceptional*> taken;
        count = takeOut(exceptions, rows, count, &taken);
        for (const Exceptional* each : taken)
            if (value(each->value)) passing.push_back(each->row);
    }
    if (segment.storage != Storage::Mixed) count = refinePlain(cells, rows, count);
    return putAmong(passing, rows, count);
}

bool ColumnTest::row(const Segment& segment, DataTypeEnum type, std::uint32_t row) const {
    if (segment.isNull(row)) return null();
    if (const Variant* other = segment.exception(row)) return value(*other);
    return plainRow(segment, type, row);
}

std::size_t ColumnTest::selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                    RowNumber* rows) const {
    std::iota(rows, rows + (end - begin), begin);
    const std::size_t count = withoutNulls(cells.segment, rows, end - begin);
    return refinePlain(cells, rows, takeOut(exceptionsIn(cells.segment, begin, end), rows, count));
}

std::size_t ColumnTest::refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const {
    return refineWhere(rows, count,
                       [&](RowNumber row) { return plainRow(cells.segment, cells.type, row); });
}

bool ColumnTest::plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const {
    return value(segment.value(row, type));
}

} // namespace norvel::adodb
