#include "platform/adodb/provider/ChangedRow.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/store/FindRow.h"
#include "platform/adodb/store/GroupBuilder.h"

#include <algorithm>
#include <memory>

namespace norvel::adodb {

namespace {

bool ofATable(const RowChange& change, std::size_t column) {
    return !change.columns[column].origin.empty();
}

bool isWritten(const RowChange& change, std::size_t column) {
    if (!ofATable(change, column)) return false;
    if (change.kind == RowChange::Kind::Delete) return true;
    return givesValue(change, static_cast<int>(column));
}

} // namespace

bool givesValue(const RowChange& change, int column) {
    return std::ranges::any_of(change.cells,
                               [&](const RowChange::Cell& cell) { return cell.column == column; });
}

std::vector<Variant> rowToBe(const RowChange& change) {
    std::vector<Variant> row = change.before;
    row.resize(change.columns.size());
    for (const auto& cell : change.cells)
        row[static_cast<std::size_t>(cell.column)] = cell.value;
    return row;
}

bool givesKey(const RowChange& change, const std::vector<Variant>& row) {
    const auto& key = change.identity.key;
    return !key.empty() && std::ranges::all_of(key, [&](int column) {
        const Variant& value = row[static_cast<std::size_t>(column)];
        return !value.isNull() && !value.isEmpty();
    });
}

void checkUnchanged(const RowChange& change, const std::vector<Variant>& now) {
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (sameValue(now[i], change.before[i])) continue;
        if (isWritten(change, i)) throw adoError(dbConcurrency);
        if (change.identity.mixed)
            throw adoError(oleFail, "Il record non è quello della tabella, o altri lo hanno "
                                    "modificato dopo la lettura.");
    }
}

void checkOneRow(std::int64_t changed) {
    if (changed == 0) throw adoError(oleFail, "Il database non ha fatto la modifica.");
    if (changed > 1) throw adoError(oleFail, "La chiave non distingue il record da altri.");
}

std::string columnList(const RowChange& change,
                       const std::function<std::string(std::string_view column)>& quoted) {
    std::string list;
    for (std::size_t i = 0; i < change.columns.size(); ++i) {
        if (i) list += ", ";
        list += ofATable(change, i) ? quoted(change.columns[i].origin) : "NULL";
    }
    return list;
}

std::vector<Variant> readBack(const RowChange& change, const std::function<void(Batch&)>& read) {
    const auto store = std::make_shared<ColumnStore>(change.columns);
    GroupBuilder builder(store);
    Batch batch(static_cast<int>(change.columns.size()));
    batch.reset(1);
    read(batch);
    builder.take(batch);
    builder.publish();
    if (store->rows() == 0) throw adoError(dbConcurrency);
    std::vector<Variant> row;
    for (std::size_t i = 0; i < change.columns.size(); ++i) {
        const bool computed = !ofATable(change, i) && !change.before.empty();
        row.push_back(computed ? change.before[i] : store->value(static_cast<int>(i), 0));
    }
    return row;
}

} // namespace norvel::adodb
