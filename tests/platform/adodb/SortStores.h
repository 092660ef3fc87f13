// Stores of given values, for the tests of sorts.
#pragma once

#include "platform/adodb/sort/SortOrder.h"
#include "platform/adodb/store/GroupBuilder.h"

#include <cstdint>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace norvel::adodb {

using CellRow = std::vector<Variant>;

// As a provider would hand the value over.
inline void setCell(Batch& batch, int column, const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
        return batch.setNull(column);
    case VarType::R8:
        return batch.setReal(column, value.toDouble());
    case VarType::Date:
        return batch.setDate(column, value.toDate().days);
    case VarType::String:
        batch.setText(column, value.text().data(), value.text().size());
        return;
    case VarType::Bytes:
        batch.setBytes(column, value.bytes().data(), value.bytes().size());
        return;
    default:
        return batch.setInteger(
            column, value.toBoolean() && value.type() == VarType::Boolean ? 1 : value.toI8());
    }
}

// Rows go into groups of so many; whatever is gathered at last is a group, too.
inline void addRows(GroupBuilder& builder, int columns, const std::vector<CellRow>& rows,
                    std::size_t groupRows) {
    Batch batch(columns);
    for (std::size_t at = 0; at < rows.size();) {
        batch.reset(batch.capacityLimit());
        const std::size_t end = std::min(rows.size(), (at / groupRows + 1) * groupRows);
        bool more = true;
        for (; more && at < end; ++at) {
            for (int c = 0; c < columns; ++c)
                setCell(batch, c, rows[at][static_cast<std::size_t>(c)]);
            more = batch.endRow();
        }
        builder.take(batch);
        if (at % groupRows == 0) builder.publish();
    }
    builder.publish();
}

inline std::shared_ptr<ColumnStore> storeOf(const std::vector<ColumnInfo>& columns,
                                            const std::vector<CellRow>& rows,
                                            std::size_t groupRows = 65536) {
    auto store = std::make_shared<ColumnStore>(columns);
    GroupBuilder builder(store);
    addRows(builder, static_cast<int>(columns.size()), rows, groupRows);
    return store;
}

// A store of one column "c".
inline std::shared_ptr<ColumnStore> columnOf(DataTypeEnum type, const std::vector<Variant>& values,
                                             std::size_t groupRows = 65536) {
    std::vector<CellRow> rows;
    rows.reserve(values.size());
    for (const Variant& value : values)
        rows.push_back({value});
    return storeOf({describeColumn("c", type)}, rows, groupRows);
}

inline RowList allRows(const ColumnStore& store) {
    RowList rows(static_cast<std::size_t>(store.rows()));
    std::iota(rows.begin(), rows.end(), RowNumber{0});
    return rows;
}

inline std::shared_ptr<const SortOrder> orderOf(const ColumnStore& store, const std::string& sort) {
    return SortOrder::make(parseSort(sort), store.columns());
}

// All rows, or these, sorted.
inline RowList sorted(const ColumnStore& store, const std::string& sort, RowList rows,
                      unsigned threads = 0) {
    orderOf(store, sort)->sort(store, rows, threads);
    return rows;
}
inline RowList sorted(const ColumnStore& store, const std::string& sort, unsigned threads = 0) {
    return sorted(store, sort, allRows(store), threads);
}

} // namespace norvel::adodb
