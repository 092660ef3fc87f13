#include "platform/grid/export/ExportRows.h"

#include "platform/grid/model/CellText.h"
#include "platform/grid/model/RowReader.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

int fieldNumber(Fields& fields, const std::string& name) {
    for (int i = 0; i < fields.Count(); ++i)
        if (equalsText(fields(i).Name(), name)) return i;
    return -1;
}

RecordsetRef completeClone(Recordset& host, const std::string& sort) {
    if (const std::optional<Errore> broken = host.FetchError()) throw *broken;
    return cloneOfView(host, sort);
}

} // namespace

ExportRows::ExportRows(Recordset& host, ExportTable table)
    : table_(std::move(table)), clone_(completeClone(host, table_.sort)) {
    Fields& fields = clone_->Fields();
    for (const ExportColumn& column : table_.columns) {
        fields_.push_back(fieldNumber(fields, column.field));
        if (fields_.back() >= 0) asked_.emplace_back(fields_.back());
    }
    count_ = std::max<RowCount>(0, clone_->RecordCount());
    columns_ = ColumnRows::of(*clone_);
}

RowBlock ExportRows::Values(RowCount first, RowCount count) {
    RowBlock block;
    count = std::min(count, count_ - first);
    if (count <= 0) {
        block.values.resize(fields_.size());
        return block;
    }
    clone_->SetAbsolutePosition(first + 1);
    // No field asked would be all of them.
    block = clone_->GetRows(count, {}, asked_.empty() ? std::vector<Variant>{0} : asked_);
    std::vector<std::vector<Variant>> values;
    std::size_t next = 0;
    for (const int field : fields_)
        if (field >= 0)
            values.push_back(std::move(block.values[next++]));
        else
            values.emplace_back(static_cast<std::size_t>(block.rows), Variant::null());
    block.values = std::move(values);
    return block;
}

std::vector<std::vector<std::string>> ExportRows::Texts(RowCount first, RowCount count) {
    const RowBlock block = Values(first, count);
    std::vector<std::vector<std::string>> texts(block.values.size());
    for (std::size_t c = 0; c < texts.size(); ++c)
        for (const Variant& value : block.values[c])
            texts[c].push_back(wholeCellText(value));
    return texts;
}

} // namespace norvel::grid
