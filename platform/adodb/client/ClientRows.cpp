// Reading the values of a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"

#include <numeric>

namespace norvel::adodb {

RowCount ClientRecordset::shownRows() const {
    return view_->rows() + (newRow_ ? 1 : 0);
}

bool ClientRecordset::onNewRow() const {
    return newRow_ && cursor_.onRow() && cursor_.on == Cursor::On::NewRow;
}

Variant ClientRecordset::currentValue(int column) const {
    requireRow();
    if (onNewRow()) return (*newRow_)[static_cast<std::size_t>(column)];
    if (const auto edited = edits_.find(column); edited != edits_.end()) return edited->second;
    return rows_->store().value(column, cursor().row);
}

// As it was read, whatever is being edited; a new row has none.
Variant ClientRecordset::originalValue(int column) const {
    requireRow();
    return onNewRow() ? Variant() : rows_->store().value(column, cursor().row);
}

std::vector<std::size_t> ClientRecordset::columnsOf(const std::vector<Variant>& fields) const {
    std::vector<std::size_t> columns;
    if (fields.empty()) {
        columns.resize(static_cast<std::size_t>(fields_.Count()));
        std::iota(columns.begin(), columns.end(), std::size_t{0});
        return columns;
    }
    columns.reserve(fields.size());
    for (const Variant& field : fields)
        columns.push_back(fields_.indexOf(field));
    return columns;
}

// Rows first..first+count-1 of those on show, column by column: where each row lies is looked up
// once.
RowBlock ClientRecordset::readBlock(RowCount first, RowCount count,
                                    const std::vector<std::size_t>& columns) const {
    const ColumnStore& store = rows_->store();
    RowBlock block;
    block.rows = count;
    block.bookmarks.reserve(static_cast<std::size_t>(count));
    std::vector<ColumnStore::Place> places;
    places.reserve(static_cast<std::size_t>(count));
    for (RowCount i = 0; i < count; ++i) {
        const RowCount row = view_->rowAt(first + i);
        places.push_back(store.find(row));
        block.bookmarks.push_back(makeBookmark(rows_->generation(), row));
    }
    block.values.resize(columns.size());
    for (std::size_t c = 0; c < columns.size(); ++c) {
        const DataTypeEnum type = store.columns()[columns[c]].type;
        const int column = static_cast<int>(columns[c]);
        block.values[c].reserve(places.size());
        for (const ColumnStore::Place& place : places)
            block.values[c].push_back(place.group->segment(column).value(place.row, type));
    }
    return block;
}

} // namespace norvel::adodb
