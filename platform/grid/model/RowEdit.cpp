#include "platform/grid/model/RowEdit.h"

#include "platform/grid/model/CellText.h"

namespace norvel::grid {

using adodb::Recordset;

void RowEdit::Begin(int field) {
    field_ = field;
    const auto found = values_.find(field);
    before_ = found == values_.end() ? std::nullopt : std::optional(found->second.value);
}

void RowEdit::Set(Recordset& recordset, const Variant& value) {
    recordset.Fields()(field_).SetValue(value);
    values_.insert_or_assign(field_, Changed{value, cellText(value)});
}

// A recordset takes back all changes of a row or none: the others are made again.
void RowEdit::UndoCell(Recordset& recordset) {
    if (!values_.contains(field_)) return;
    auto kept = values_;
    if (before_)
        kept[field_] = {*before_, cellText(*before_)};
    else
        kept.erase(field_);
    recordset.CancelUpdate();
    values_ = std::move(kept);
    for (const auto& [field, changed] : values_)
        recordset.Fields()(field).SetValue(changed.value);
}

void RowEdit::Save(Recordset& recordset) {
    if (!Pending()) return;
    recordset.Update();
    values_.clear();
}

void RowEdit::Undo(Recordset& recordset) {
    if (!Pending()) return;
    recordset.CancelUpdate();
    values_.clear();
}

const std::string* RowEdit::Text(int field) const {
    const auto found = values_.find(field);
    return found == values_.end() ? nullptr : &found->second.text;
}

} // namespace norvel::grid
