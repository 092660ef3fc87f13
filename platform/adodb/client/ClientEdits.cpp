// Edits of a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"

namespace norvel::adodb {

namespace {

constexpr const char* readOnlyText = "I record di questo recordset non si possono modificare.";

// CursorOptionEnum's bits of what this cursor offers; the updates, where it is updatable.
constexpr int offeredAlways = adBookmark | adApproxPosition | adMovePrevious | adNotify;
constexpr int offeredForEdits = adAddNew | adUpdate;

} // namespace

bool ClientRecordset::updatable() const {
    return appender_ && !explicitReadOnly_;
}

void ClientRecordset::requireUpdatable() const {
    requireOpen();
    if (!updatable()) throw adoError(adErrFeatureNotAvailable, readOnlyText);
}

void ClientRecordset::refusePending() const {
    if (newRow_)
        throw adoError(adErrIllegalOperation, "C'è un record nuovo non ancora registrato.");
}

bool ClientRecordset::Supports(int cursorOptions) const {
    requireOpen();
    const int offered = offeredAlways | (updatable() ? offeredForEdits : 0);
    return (cursorOptions & ~offered) == 0;
}

EditModeEnum ClientRecordset::EditMode() const {
    requireRow();
    return onNewRow() ? adEditAdd : adEditNone;
}

void ClientRecordset::setCurrentValue(int column, const Variant& value) {
    refuseInEvent();
    requireRow();
    requireUpdatable();
    if (!onNewRow()) throw adoError(adErrFeatureNotAvailable, readOnlyText);
    const auto self = shared_from_this();
    const Variant coerced =
        coerceForColumn(rows_->store().columns()[static_cast<std::size_t>(column)], value);
    const std::vector<Field*> changed{&fields_.Item(column)};
    const bool allowed = sinks_.ask(
        [&](auto& sink, auto& status) { sink.WillChangeField(1, changed, status, *this); });
    if (allowed) (*newRow_)[static_cast<std::size_t>(column)] = coerced;
    const Errore cancelled = adoError(adErrOperationCancelled);
    sinks_.tell([&](auto& sink) {
        sink.FieldChangeComplete(1, changed, allowed ? nullptr : &cancelled,
                                 allowed ? adStatusOK : adStatusErrorsOccurred, *this);
    });
    if (!allowed) throw cancelled;
}

// Asks for a change of the current record, makes it, tells of it.
template <class Change>
void ClientRecordset::changeRecord(EventReasonEnum reason, Change change) {
    const auto self = shared_from_this();
    const bool allowed = sinks_.ask(
        [&](auto& sink, auto& status) { sink.WillChangeRecord(reason, 1, status, *this); });
    if (allowed) change();
    const Errore cancelled = adoError(adErrOperationCancelled);
    sinks_.tell([&](auto& sink) {
        sink.RecordChangeComplete(reason, 1, allowed ? nullptr : &cancelled,
                                  allowed ? adStatusOK : adStatusErrorsOccurred, *this);
    });
    if (!allowed) throw cancelled;
}

// The new record becomes the current one, behind all others; until Update its fields read Empty.
// With fields and values (as many of each) it is posted at once.
void ClientRecordset::AddNew(const std::vector<Variant>& fields,
                             const std::vector<Variant>& values) {
    refuseInEvent();
    requireUpdatable();
    if (fields.size() != values.size()) throw adoError(adErrInvalidArgument);
    std::vector<Variant> row(static_cast<std::size_t>(fields_.Count()));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t column = fields_.indexOf(fields[i]);
        row[column] = coerceForColumn(rows_->store().columns()[column], values[i]);
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

void ClientRecordset::commitPending() {
    if (!newRow_) return;
    changeRecord(adRsnUpdate, [&] {
        appender_->append(*newRow_);
        newRow_.reset();
        if (const auto position = view_->positionOf(rows_->rows() - 1))
            setCursor(*position, false, false);
        else
            setCursor(view_->rows(), view_->rows() == 0, true);
    });
}

void ClientRecordset::CancelUpdate() {
    refuseInEvent();
    requireOpen();
    if (!newRow_) throw adoError(adErrIllegalOperation);
    changeRecord(adRsnUndoAddNew, [&] {
        newRow_.reset();
        cursor_ = beforeNew_;
    });
    tellMoved(adRsnMove, nullptr);
}

void ClientRecordset::Delete(AffectEnum /*affect*/) {
    refuseInEvent();
    requireRow();
    throw adoError(adErrFeatureNotAvailable, readOnlyText);
}

} // namespace norvel::adodb
