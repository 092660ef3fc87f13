#include "platform/adodb/client/ColumnRows.h"

#include "platform/adodb/client/ClientRecordset.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

ColumnRows::ColumnRows(std::shared_ptr<RowSet> rows, std::shared_ptr<View> view)
    : rows_(std::move(rows)), view_(std::move(view)) {}

std::optional<ColumnRows> ColumnRows::of(const Recordset& recordset) {
    const auto* const client = dynamic_cast<const ClientRecordset*>(&recordset);
    if (!client || !client->rowSet()) return std::nullopt;
    return ColumnRows(client->rowSet(), client->view());
}

RowCount ColumnRows::count() const {
    return view_->rows();
}

void ColumnRows::numbers(RowCount first, RowCount places, RowList& numbers) const {
    const RowCount end = std::min(first + places, count());
    numbers.clear();
    for (RowCount place = first; place < end; ++place)
        numbers.push_back(static_cast<RowNumber>(view_->rowAt(place)));
}

bool ColumnRows::inStoreOrder() const {
    return view_->rules().plain() && rows_->deletedRows() == 0;
}

const ColumnStore& ColumnRows::store() const {
    return rows_->store();
}

} // namespace norvel::adodb
