#include "platform/grid/model/DataTypeCode.h"

#include "platform/adodb/client/ColumnRows.h"
#include "platform/grid/model/Model.h"
#include "platform/grid/model/RowReader.h"

#include <algorithm>
#include <span>

namespace norvel::grid {

using namespace adodb;

namespace {

constexpr RowCount firstChunk = 16;
constexpr RowCount largestChunk = 4096;

// What the values looked at say.
struct Findings {
    bool valued = false; // one was not Null
    bool others = false; // one was neither Null nor 0 nor -1
    void look(const Variant& value) {
        if (value.isNull() || value.isEmpty()) return;
        valued = true;
        const auto number = value.isNumeric() ? value.toDouble() : 1;
        others = others || (number != 0 && number != -1);
    }
    bool yesNo() const { return valued && !others; }
};

// Places of Null rows count as well: they hold 0, or what was there before an edit.
template <class Integer>
bool allYesNo(std::span<const Integer> values) {
    return std::ranges::all_of(values, [](Integer value) { return value == 0 || value == -1; });
}

bool anyValue(const Segment& segment) {
    for (std::uint32_t row = 0; row < segment.rows; ++row)
        if (!segment.isNull(row)) return true;
    return false;
}

// Whole runs of integers at once where they are what is looked for; else value by value.
void look(const Segment& segment, DataTypeEnum type, Findings& findings) {
    if (segment.storage == Storage::Null) return;
    const bool plain =
        (segment.storage == Storage::Int32 && allYesNo(segment.values<std::int32_t>())) ||
        (segment.storage == Storage::Int64 && allYesNo(segment.values<std::int64_t>()));
    if (plain && segment.exceptions.empty()) {
        findings.valued = findings.valued || anyValue(segment);
        return;
    }
    for (std::uint32_t row = 0; row < segment.rows && !findings.others; ++row)
        findings.look(segment.value(row, type));
}

Findings lookAtColumns(const ColumnStore& store, int column) {
    Findings findings;
    const DataTypeEnum type = store.columns()[static_cast<std::size_t>(column)].type;
    for (std::size_t group = 0; group < store.groups() && !findings.others; ++group)
        look(store.group(group).segment(column), type, findings);
    return findings;
}

// A clone is made without the filter.
Findings lookAtRows(Recordset& recordset, int field) {
    Findings findings;
    const RecordsetRef all = recordset.Clone(adLockReadOnly);
    RowReader reader(*all);
    const RowCount rows = reader.Rows();
    RowCount chunk = firstChunk;
    for (RowCount row = 0; row < rows && !findings.others;) {
        const RowBlock block = reader.Values(row, std::min(chunk, rows - row), {field});
        if (block.rows == 0) break;
        for (const Variant& value : block.values[0])
            findings.look(value);
        row += block.rows;
        chunk = std::min(largestChunk, chunk * 4);
    }
    return findings;
}

} // namespace

int dataTypeCode(Recordset& recordset, int field) {
    const DataTypeEnum type = recordset.Fields()(field).Type();
    if (type == adBoolean) return yesNoTypeCode;
    if (!isIntegerType(type)) return type;
    const auto columns = ColumnRows::of(recordset);
    const Findings findings =
        columns ? lookAtColumns(columns->store(), field) : lookAtRows(recordset, field);
    return findings.yesNo() ? yesNoTypeCode : static_cast<int>(type);
}

} // namespace norvel::grid
