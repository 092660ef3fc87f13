#include "platform/adodb/store/FindRow.h"

#include "platform/adodb/store/RawConversion.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

using Cells = std::vector<std::pair<int, Variant>>;

// The rows of a group from..to-1 that may hold a whole number, most of which it tells without a
// Variant; others are left to the comparison of values.
class Candidates {
  public:
    Candidates(const Segment& segment, const Variant& wanted) : segment_(segment) {
        const bool whole = segment.exceptions.empty() &&
                           (segment.storage == Storage::Int32 || segment.storage == Storage::Int64);
        if (whole && isWholeNumber(wanted.type())) number_ = wanted.toI8();
    }
    bool may(std::uint32_t row) const {
        if (!number_) return true;
        return segment_.storage == Storage::Int32
                   ? segment_.values<std::int32_t>()[row] == *number_
                   : segment_.values<std::int64_t>()[row] == *number_;
    }

  private:
    const Segment& segment_;
    std::optional<std::int64_t> number_;
};

bool holds(const ColumnStore& store, const RowGroup& group, std::uint32_t row, const Cells& cells) {
    return std::ranges::all_of(cells, [&](const auto& cell) {
        const DataTypeEnum type = store.columns()[static_cast<std::size_t>(cell.first)].type;
        return sameValue(group.segment(cell.first).value(row, type), cell.second);
    });
}

bool isReal(const Variant& value) {
    return value.type() == VarType::R4 || value.type() == VarType::R8;
}

} // namespace

bool sameValue(const Variant& a, const Variant& b) {
    if (a.isText() && b.isText()) return a.text() == b.text();
    if (a.isNumeric() && b.isNumeric())
        return isReal(a) || isReal(b) ? a.toDouble() == b.toDouble()
                                      : a.toDecimal() == b.toDecimal();
    if (a.type() != b.type()) return false;
    if (a.type() == VarType::Date) return a.toDate().days == b.toDate().days;
    if (a.type() == VarType::Bytes) return a.bytes() == b.bytes();
    return a.isNull() || a.isEmpty();
}

std::optional<std::int64_t> findRow(const ColumnStore& store, const Cells& cells, std::int64_t from,
                                    std::int64_t to) {
    if (cells.empty()) return std::nullopt;
    for (std::size_t i = 0; i < store.groups() && store.firstRow(i) < to; ++i) {
        const RowGroup& group = store.group(i);
        const std::int64_t first = store.firstRow(i);
        const auto begin = static_cast<std::uint32_t>(std::max(from - first, std::int64_t{0}));
        const auto end =
            static_cast<std::uint32_t>(std::min(to - first, std::int64_t{group.rows()}));
        const Candidates candidates(group.segment(cells.front().first), cells.front().second);
        for (std::uint32_t row = begin; row < end; ++row)
            if (candidates.may(row) && holds(store, group, row, cells)) return first + row;
    }
    return std::nullopt;
}

} // namespace norvel::adodb
