// Running a ClientRecordset's statement again.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/store/FindRow.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr RowCount everyRow = std::numeric_limits<RowCount>::max();

} // namespace

void ClientRecordset::Requery(int options) {
    refuseInEvent();
    requireOpen();
    refusePending();
    if (statement_.empty()) throw adoError(adErrIllegalOperation);
    Options read = readOptions(options);
    if (!read.waits) read.executes = true;
    const auto self = shared_from_this();
    awaited_.reset();
    const bool allowed = sinks_.ask([&](auto& sink, auto& status) {
        sink.WillChangeRecordset(adRsnRequery, status, *this);
    }) && sinks_.ask([&](auto& sink, auto& status) { sink.WillMove(adRsnRequery, status, *this); });
    try {
        if (!allowed) throw adoError(adErrOperationCancelled);
        requery(read);
    } catch (const Errore& error) {
        tellRequeried(&error);
        throw;
    }
    if (!awaited_) tellRequeried(nullptr);
}

void ClientRecordset::tellRequeried(const Errore* error) {
    const auto status = error ? adStatusErrorsOccurred : adStatusOK;
    sinks_.tell(
        [&](auto& sink) { sink.RecordsetChangeComplete(adRsnRequery, error, status, *this); });
    sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
    tellMoved(adRsnRequery, error);
}

void ClientRecordset::requery(const Options& options) {
    const auto session = openedSession();
    if (sourceIsCommand_) makeCommand(*session, options.command);
    if (options.executes) {
        await(session, options, false);
        return;
    }
    auto rows = run(*session, options);
    if (!rows) throw adoError(adErrIllegalOperation);
    showAgain(rows);
    if (options.background) {
        rows->start(fetchListener(rows->generation()));
        returnToRow();
        return;
    }
    rows->start({});
    try {
        rows->reach(everyRow);
    } catch (const Errore&) {
        returnToRow(); // among what came
        throw;
    }
    returnToRow();
}

// --- back to the row ---

// The values of the key's columns in the current row; nothing where there is no key or no row.
std::optional<ClientRecordset::Return> ClientRecordset::rowToReturnTo() const {
    const Cursor& at = cursor();
    const auto& key = rows_->identity().key;
    if (key.empty() || !at.onRow() || at.on != Cursor::On::Row) return std::nullopt;
    Return wanted;
    for (const int column : key)
        wanted.cells.emplace_back(column, rows_->store().value(column, at.row));
    return wanted;
}

void ClientRecordset::showAgain(const std::shared_ptr<RowSet>& rows) {
    auto wanted = rowToReturnTo();
    const auto before = rows_->store().columns();
    show(rows);
    const auto& now = rows_->store().columns();
    const bool sameColumns =
        std::equal(before.begin(), before.end(), now.begin(), now.end(),
                   [](const ColumnInfo& a, const ColumnInfo& b) { return a.name == b.name; });
    if (wanted && sameColumns) returning_ = std::move(wanted);
}

// Looks among the rows that came since the last look. True where the cursor moved.
bool ClientRecordset::returnToRow() {
    if (!returning_) return false;
    const bool ended = !rows_->fetching(); // looked at before the rows: they are final then
    const RowCount rows = rows_->rows();
    const auto found = findRow(rows_->store(), returning_->cells, returning_->searched, rows);
    returning_->searched = rows;
    if (!found) {
        if (ended) returning_.reset();
        return false;
    }
    returning_.reset();
    const auto position = view_->positionOf(*found);
    if (!position || (cursor_.onRow() && cursor_.position == *position)) return false;
    setCursor(*position, false, false);
    return true;
}

} // namespace norvel::adodb
