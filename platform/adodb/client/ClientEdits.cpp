// Edits of a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/store/FindRow.h"

#include <limits>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr int waitForEver = std::numeric_limits<int>::max(); // milliseconds
constexpr const char* readOnlyText = "I record di questo recordset non si possono modificare.";

// CursorOptionEnum's bits of what this cursor offers; the updates, where it is updatable.
constexpr int offeredAlways = adBookmark | adApproxPosition | adMovePrevious | adNotify;
constexpr int offeredForEdits = adAddNew | adUpdate | adDelete;

// A value of the column's type, as a field of it is read.
Variant asRead(const ColumnInfo& column, const Variant& value) {
    if (value.isNull()) return value;
    if (storageClass(column.type) == StorageClass::Integer)
        return integerVariant(value.toI8(), column.type);
    return column.type == adSingle ? Variant(static_cast<float>(value.toDouble())) : value;
}

} // namespace

// Rows without a source, or of one table whose key is known.
bool ClientRecordset::updatable() const {
    if (explicitReadOnly_) return false;
    if (appender_) return true;
    return lockType_ != adLockReadOnly && !rows_->identity().table.empty();
}

void ClientRecordset::requireUpdatable() const {
    requireOpen();
    if (!updatable()) throw adoError(adErrFeatureNotAvailable, readOnlyText);
    if (awaited_) throw adoError(adErrStillExecuting);
}

bool ClientRecordset::pending() const {
    return newRow_ || !edits_.empty();
}

void ClientRecordset::refusePending() const {
    if (pending())
        throw adoError(adErrIllegalOperation, "C'è un record modificato non ancora registrato.");
}

bool ClientRecordset::Supports(int cursorOptions) const {
    requireOpen();
    const int offered = offeredAlways | (updatable() ? offeredForEdits : 0);
    return (cursorOptions & ~offered) == 0;
}

EditModeEnum ClientRecordset::EditMode() const {
    requireRow();
    if (onNewRow()) return adEditAdd;
    return edits_.empty() ? adEditNone : adEditInProgress;
}

// The first change of a row is asked for, too.
void ClientRecordset::setCurrentValue(int column, const Variant& value) {
    refuseInEvent();
    requireRow();
    requireUpdatable();
    const ColumnInfo& info = rows_->store().columns()[static_cast<std::size_t>(column)];
    if (!appender_ && info.origin.empty())
        throw adoError(adErrFeatureNotAvailable,
                       "Il campo «" + info.name + "» è calcolato: non si può modificare.");
    const auto self = shared_from_this();
    const Variant coerced = asRead(info, coerceForColumn(info, value));
    const std::vector<Field*> changed{&fields_.Item(column)};
    const bool first = !pending();
    returning_.reset(); // whoever edits this row wants to stay on it
    bool allowed = askSharers([&](auto& sink, auto& status, auto& own) {
        sink.WillChangeField(1, changed, status, own);
    });
    allowed = allowed && (!first || askSharers([&](auto& sink, auto& status, auto& own) {
                  sink.WillChangeRecord(adRsnFirstChange, 1, status, own);
              }));
    if (allowed && onNewRow())
        (*newRow_)[static_cast<std::size_t>(column)] = coerced;
    else if (allowed)
        edits_.insert_or_assign(column, coerced);
    const Errore cancelled = adoError(adErrOperationCancelled);
    const auto status = allowed ? adStatusOK : adStatusErrorsOccurred;
    tellSharers([&](auto& sink, auto& own) {
        sink.FieldChangeComplete(1, changed, allowed ? nullptr : &cancelled, status, own);
    });
    if (!allowed) throw cancelled;
    if (first)
        tellSharers([&](auto& sink, auto& own) {
            sink.RecordChangeComplete(adRsnFirstChange, 1, nullptr, adStatusOK, own);
        });
}

// Asks for a change of the current record, makes it, tells of it, or of why it came to nothing.
void ClientRecordset::changeRecord(EventReasonEnum reason, const std::function<void()>& change) {
    const auto self = shared_from_this();
    returning_.reset(); // whoever changes this record wants to stay on it
    const auto tellEnd = [&](const Errore* error) {
        const auto status = error ? adStatusErrorsOccurred : adStatusOK;
        tellSharers([&](auto& sink, auto& own) {
            sink.RecordChangeComplete(reason, 1, error, status, own);
        });
    };
    try {
        if (!askSharers([&](auto& sink, auto& status, auto& own) {
                sink.WillChangeRecord(reason, 1, status, own);
            }))
            throw adoError(adErrOperationCancelled);
        change();
    } catch (const Errore& error) {
        tellEnd(&error);
        throw;
    }
    tellEnd(nullptr);
}

// The new record becomes the current one, behind all others; until Update its fields read Empty.
// With fields and values (as many of each) it is posted at once.
void ClientRecordset::AddNew(const std::vector<Variant>& fields,
                             const std::vector<Variant>& values) {
    refuseInEvent();
    requireUpdatable();
    if (fields.size() != values.size()) throw adoError(adErrInvalidArgument);
    const auto self = shared_from_this();
    std::vector<Variant> row(static_cast<std::size_t>(fields_.Count()));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t column = fields_.indexOf(fields[i]);
        const ColumnInfo& info = rows_->store().columns()[column];
        row[column] = asRead(info, coerceForColumn(info, values[i]));
    }
    moveTo(adRsnMove, [&] {
        const Cursor before = cursor_;
        changeRecord(adRsnAddNew, [&] {
            newRow_ = std::move(row);
            beforeNew_ = before;
            cursor_ = {view_->rows(), false, false, Cursor::On::NewRow};
        });
    });
    if (!fields.empty()) Update();
}

void ClientRecordset::Update() {
    refuseInEvent();
    requireUpdatable();
    commitPending();
}

// Where it fails the edit stays, and whoever wanted to move stays, too.
void ClientRecordset::commitPending() {
    if (newRow_)
        changeRecord(adRsnUpdate, [this] { postNewRow(); });
    else if (!edits_.empty())
        changeRecord(adRsnUpdate, [this] { postEdits(); });
}

// Rows are added behind all others, so those that a fetch still brings are waited for.
void ClientRecordset::postNewRow() {
    std::vector<Variant> row = *newRow_;
    if (!appender_) {
        rows_->waitForEnd(waitForEver);
        RowChange change = changeOf(RowChange::Kind::Insert);
        for (std::size_t i = 0; i < row.size(); ++i)
            if (!row[i].isEmpty()) change.cells.push_back({static_cast<int>(i), row[i]});
        row = openedSession()->change(change);
    }
    rows_->append(row);
    newRow_.reset();
    if (const auto position = view_->positionOf(rows_->rows() - 1))
        setCursor(*position, false, false);
    else
        setCursor(view_->rows(), view_->rows() == 0, true);
}

void ClientRecordset::postEdits() {
    const RowCount row = cursor().row;
    std::vector<std::pair<int, Variant>> cells(edits_.begin(), edits_.end());
    if (!appender_) {
        rows_->waitForEnd(waitForEver);
        RowChange change = changeOf(RowChange::Kind::Update);
        change.before = rowAsRead(row);
        for (const auto& [column, value] : cells)
            change.cells.push_back({column, value});
        const auto now = openedSession()->change(change);
        cells.clear();
        for (std::size_t i = 0; i < now.size(); ++i)
            if (!sameValue(now[i], change.before[i]))
                cells.emplace_back(static_cast<int>(i), now[i]);
    }
    edits_.clear();
    rows_->edit(row, cells);
}

RowChange ClientRecordset::changeOf(RowChange::Kind kind) const {
    RowChange change;
    change.kind = kind;
    change.identity = rows_->identity();
    change.columns = rows_->store().columns();
    if (kind != RowChange::Kind::Insert && change.identity.key.empty())
        throw adoError(oleFail, "Le colonne chiave non bastano per modificare il record.");
    return change;
}

std::vector<Variant> ClientRecordset::rowAsRead(RowCount row) const {
    std::vector<Variant> values;
    values.reserve(static_cast<std::size_t>(rows_->store().columnCount()));
    for (int column = 0; column < rows_->store().columnCount(); ++column)
        values.push_back(rows_->store().value(column, row));
    return values;
}

void ClientRecordset::CancelUpdate() {
    refuseInEvent();
    requireOpen();
    if (!pending()) throw adoError(adErrIllegalOperation);
    const auto self = shared_from_this();
    if (!newRow_) {
        changeRecord(adRsnUndoUpdate, [this] { edits_.clear(); });
        return;
    }
    changeRecord(adRsnUndoAddNew, [&] {
        newRow_.reset();
        cursor_ = beforeNew_;
    });
    tellMoved(adRsnMove, nullptr);
}

// The deleted row stays the current one, unreadable, until the next move. A group is the rows that
// a filter by bookmarks shows.
void ClientRecordset::Delete(AffectEnum affect) {
    refuseInEvent();
    if (affect == adAffectCurrent) {
        requireRow();
        requireUpdatable();
        if (onNewRow()) return CancelUpdate();
        const RowCount row = cursor().row;
        changeRecord(adRsnDelete, [&] {
            deleteRow(row);
            edits_.clear();
        });
        return;
    }
    requireUpdatable();
    if (affect != adAffectGroup) throw adoError(adErrInvalidArgument);
    if (filter_.type() != VarType::Array) throw adoError(adErrIllegalOperation);
    const auto self = shared_from_this();
    commitPending();
    std::vector<RowCount> rows;
    for (RowCount i = 0; i < view_->rows(); ++i)
        rows.push_back(view_->rowAt(i));
    for (const RowCount row : rows)
        changeRecord(adRsnDelete, [&] { deleteRow(row); });
}

void ClientRecordset::deleteRow(RowCount row) {
    if (!appender_) {
        rows_->waitForEnd(waitForEver);
        RowChange change = changeOf(RowChange::Kind::Delete);
        change.before = rowAsRead(row);
        openedSession()->change(change);
    }
    rows_->remove(row);
}

// --- the recordsets that share the rows ---

// Whoever of them is told, this one must not move, close or change another record meanwhile.

bool ClientRecordset::askSharers(const Asked& ask) {
    const EventSinks::Telling mark(sinks_);
    bool allowed = true;
    for (const auto& each : rows_->sharers())
        allowed = each->sinks_.ask([&](auto& sink, auto& status) { ask(sink, status, *each); }) &&
                  allowed;
    return allowed;
}

void ClientRecordset::tellSharers(const Told& tell) {
    const EventSinks::Telling mark(sinks_);
    for (const auto& each : rows_->sharers())
        each->sinks_.tell([&](auto& sink) { tell(sink, *each); });
}

} // namespace norvel::adodb
