#include "platform/adodb/store/ColumnInfo.h"
#include "platform/grid/model/CheckBox.h"
#include "platform/grid/model/Model.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

Errore badIndex(int index) {
    return {3265, "Colonna " + std::to_string(index) + " non trovata nell'insieme delle colonne"};
}

} // namespace

Column& Columns::Item(int index) {
    if (index < 0 || index >= Count()) throw badIndex(index);
    return items_[static_cast<std::size_t>(index)];
}

const Column& Columns::Item(int index) const {
    if (index < 0 || index >= Count()) throw badIndex(index);
    return items_[static_cast<std::size_t>(index)];
}

int Columns::IndexOf(std::string_view dataField) const {
    const auto found = std::ranges::find_if(
        items_, [&](const Column& c) { return equalsText(c.DataField, dataField); });
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void Columns::Add(Column column) {
    items_.push_back(std::move(column));
}

std::vector<int> Columns::InOrder() const {
    std::vector<int> indexes(items_.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    std::ranges::stable_sort(indexes, {}, [this](int index) { return Item(index).Order; });
    return indexes;
}

std::vector<int> Columns::Ungrouped() const {
    std::vector<int> shown = InOrder();
    std::erase_if(shown, [this](int index) { return !Item(index).IsShown(); });
    return shown;
}

std::vector<int> Columns::Shown() const {
    std::vector<int> shown = InOrder();
    std::erase_if(shown, [this](int index) { return !Item(index).Visible; });
    return shown;
}

bool isIntegerType(DataTypeEnum type) {
    return storageClass(type) == StorageClass::Integer;
}

bool isNumberType(DataTypeEnum type) {
    const StorageClass kept = storageClass(type);
    return kept == StorageClass::Integer || kept == StorageClass::Double ||
           kept == StorageClass::Scaled;
}

bool isDateType(DataTypeEnum type) {
    return storageClass(type) == StorageClass::Date;
}

bool isBinaryType(DataTypeEnum type) {
    return storageClass(type) == StorageClass::Bytes;
}

Alignment alignmentOf(const Column& column) {
    if (column.Align != Alignment::General) return column.Align;
    if (showsCheckBoxes(column)) return Alignment::Center;
    if (isNumberType(column.DataType)) return Alignment::Right;
    if (isDateType(column.DataType) || column.DataType == adBoolean) return Alignment::Center;
    return Alignment::Left;
}

} // namespace norvel::grid
