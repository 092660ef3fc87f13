// The cursor of a ClientRecordset: moves, positions, bookmarks.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"

#include <algorithm>
#include <limits>

namespace norvel::adodb {

namespace {

constexpr RowCount everyRow = std::numeric_limits<RowCount>::max();

// base + rows, held within what a RowCount can be.
RowCount moved(RowCount base, RowCount rows) {
    if (rows > 0 && base > everyRow - rows - 1) return everyRow - 1;
    if (rows < 0 && base < std::numeric_limits<RowCount>::min() - rows) return -1;
    return base + rows;
}

} // namespace

// The frame of every move: the pending row is posted, the sinks are asked, the step is taken, the
// sinks are told.
void ClientRecordset::moveTo(EventReasonEnum reason, const std::function<void()>& step) {
    const auto self = shared_from_this(); // a sink may drop the last reference of the host
    commitPending();
    returning_.reset(); // whoever moves wants to be elsewhere
    try {
        if (!sinks_.ask([&](auto& sink, auto& status) { sink.WillMove(reason, status, *this); }))
            throw adoError(adErrOperationCancelled);
        step();
    } catch (const Errore& error) {
        tellMoved(reason, &error);
        throw;
    }
    tellMoved(reason, nullptr);
}

void ClientRecordset::tellMoved(EventReasonEnum reason, const Errore* error) {
    const auto status = error ? adStatusErrorsOccurred : adStatusOK;
    sinks_.tell([&](auto& sink) { sink.MoveComplete(reason, error, status, *this); });
}

void ClientRecordset::setCursor(RowCount position, bool bof, bool eof) {
    cursor_ = {position, bof, eof};
    if (!cursor_.onRow()) return;
    cursor_.row = view_->rowAt(position);
    cursor_.version = view_->version();
}

// The cursor where its row stands by now. A row that was changed so that it does not show any more
// leaves the cursor on the one that follows, but not while it is being edited here.
const ClientRecordset::Cursor& ClientRecordset::cursor() const {
    using enum Cursor::On;
    if (!cursor_.onRow() || cursor_.on == NewRow) return cursor_;
    const RowCount have = view_->rows();
    if (cursor_.version == view_->version() || (!edits_.empty() && !view_->positionOf(cursor_.row)))
        return cursor_;
    cursor_.version = view_->version();
    if (const auto position = view_->positionOf(cursor_.row)) {
        cursor_.position = *position;
        cursor_.on = Row;
    } else if (rows_->isDeleted(cursor_.row)) {
        cursor_.position = view_->placeOf(static_cast<RowNumber>(cursor_.row));
        cursor_.on = DeletedRow;
    } else if (have > 0) {
        cursor_.position = std::min(cursor_.position, have - 1);
        cursor_.row = view_->rowAt(cursor_.position);
    } else {
        cursor_ = {};
    }
    return cursor_;
}

// Puts the cursor on the target row, or beyond the edge that lies before it. Rows that a fetch
// brings meanwhile may come before the target in a sorted recordset: it is looked for again then.
RowCount ClientRecordset::settleAt(const Target& target) {
    for (;;) {
        const RowCount position = target();
        if (position < 0) {
            setCursor(0, true, false);
            return position;
        }
        const std::uint32_t version = view_->version();
        const RowCount have = view_->reach(position + 1);
        if (view_->version() != version) continue;
        if (position < have)
            setCursor(position, false, false);
        else
            setCursor(have, false, true);
        return position;
    }
}

// As settleAt, of a move forward: a sink that learns of the end may have added rows.
void ClientRecordset::settleForward(const Target& target) {
    const RowCount position = settleAt(target);
    if (!cursor_.eof) return;
    bool more = false;
    sinks_.tellFreely([&](auto& sink) {
        EventStatusEnum status = adStatusOK;
        bool added = false;
        sink.EndOfRecordset(added, status, *this);
        more = more || added;
    });
    if (more && rows_) settleAt([&] { return position; });
}

// Where a move by so many rows starts from.
RowCount ClientRecordset::base(RowCount rows) const {
    const Cursor& at = cursor();
    if (at.bof) return -1;
    if (at.eof) return shownRows();
    if (at.on == Cursor::On::NewRow) return view_->rows();
    return at.on == Cursor::On::DeletedRow && rows > 0 ? at.position - 1 : at.position;
}

// ADO's table of moves at the edges: forward is a move by 1 or more, back by -1 or less.
void ClientRecordset::checkEdges(RowCount rows) const {
    const Cursor& at = cursor();
    if (at.eof && rows >= 0)
        if (const auto broken = rows_->error()) throw *broken;
    const bool nowhere = (at.bof && rows <= 0) || (at.eof && rows >= 0) || (at.bof && at.eof);
    if (nowhere || (at.on == Cursor::On::DeletedRow && rows == 0))
        throw adoError(adErrNoCurrentRecord);
}

void ClientRecordset::Move(RowCount rows, const Variant& start) {
    refuseInEvent();
    requireOpen();
    if (start.isEmpty()) checkEdges(rows);
    if (!start.isEmpty()) startPosition(start); // a bad one is refused before anything happens
    const auto target = [&] {
        return moved(start.isEmpty() ? base(rows) : startPosition(start), rows);
    };
    moveTo(adRsnMove, [&] {
        if (rows > 0)
            settleForward(target);
        else
            settleAt(target);
    });
}

void ClientRecordset::MoveNext() {
    refuseInEvent();
    requireOpen();
    checkEdges(1);
    moveTo(adRsnMoveNext, [&] { settleForward([this] { return base(1) + 1; }); });
}

void ClientRecordset::MovePrevious() {
    refuseInEvent();
    requireOpen();
    checkEdges(-1);
    moveTo(adRsnMovePrevious, [&] { settleAt([this] { return base(-1) - 1; }); });
}

// While rows are still to come, the first that the filter shows is waited for.
bool ClientRecordset::empty() const {
    return shownRows() == 0 && view_->reach(1) == 0;
}

void ClientRecordset::MoveFirst() {
    refuseInEvent();
    requireOpen();
    if (empty()) throw adoError(adErrNoCurrentRecord);
    moveTo(adRsnMoveFirst, [&] { settleAt([] { return RowCount{0}; }); });
}

void ClientRecordset::MoveLast() {
    refuseInEvent();
    requireOpen();
    if (empty()) throw adoError(adErrNoCurrentRecord);
    moveTo(adRsnMoveLast, [&] { settleAt([this] { return view_->reach(everyRow) - 1; }); });
}

RowCount ClientRecordset::RecordCount() const {
    requireOpen();
    return shownRows();
}

bool ClientRecordset::BOF() const {
    requireOpen();
    return cursor().bof;
}

bool ClientRecordset::EOF_() const {
    requireOpen();
    return cursor().eof;
}

RowCount ClientRecordset::AbsolutePosition() const {
    requireOpen();
    if (shownRows() == 0) return adPosUnknown;
    const Cursor& at = cursor();
    if (at.bof) return adPosBOF;
    if (at.eof) return adPosEOF;
    if (at.on == Cursor::On::DeletedRow) return adPosUnknown;
    return onNewRow() ? shownRows() : at.position + 1;
}

void ClientRecordset::SetAbsolutePosition(RowCount position) {
    refuseInEvent();
    requireOpen();
    if (position < 1) throw adoError(adErrInvalidArgument);
    moveTo(adRsnMove, [&] {
        const bool mayCome = rows_->fetching() && !rows_->waits();
        if (view_->reach(position) < position && !mayCome) throw adoError(adErrInvalidArgument);
        settleAt([&] { return position - 1; });
    });
}

Variant ClientRecordset::Bookmark() const {
    requireRow();
    return makeBookmark(rows_->generation(), onNewRow() ? rows_->rows() : cursor().row);
}

void ClientRecordset::SetBookmark(const Variant& bookmark) {
    refuseInEvent();
    requireOpen();
    positionOfBookmark(bookmark); // a bad one is refused before anything happens
    moveTo(adRsnMove, [&] { settleAt([&] { return positionOfBookmark(bookmark); }); });
}

RowCount ClientRecordset::positionOfBookmark(const Variant& bookmark) const {
    const BookmarkParts parts = readBookmark(bookmark);
    if (parts.generation != rows_->generation()) throw adoError(dbBadBookmark);
    if (newRow_ && parts.row == rows_->rows()) return view_->rows();
    const auto position =
        parts.row < rows_->rows() ? view_->positionOf(parts.row) : std::optional<RowCount>();
    if (!position) throw adoError(dbBadBookmark);
    return *position;
}

// Start of Move and GetRows: a BookmarkEnum number or a bookmark.
RowCount ClientRecordset::startPosition(const Variant& start) const {
    if (start.type() == VarType::R8) return positionOfBookmark(start);
    if (!start.isNumeric()) throw adoError(adErrInvalidArgument);
    switch (start.toI8()) {
    case adBookmarkCurrent:
        requireRow();
        return base(0);
    case adBookmarkFirst:
    case adBookmarkLast:
        if (shownRows() == 0) throw adoError(adErrNoCurrentRecord);
        return start.toI8() == adBookmarkFirst ? 0 : view_->reach(everyRow) - 1;
    default:
        throw adoError(adErrInvalidArgument);
    }
}

// By the order in which the rows show. A bookmark of another recordset is not comparable.
CompareEnum ClientRecordset::CompareBookmarks(const Variant& a, const Variant& b) const {
    requireOpen();
    const BookmarkParts left = readBookmark(a);
    const BookmarkParts right = readBookmark(b);
    if (left.generation != rows_->generation() || right.generation != rows_->generation())
        return adCompareNotComparable;
    const RowCount l = positionOfBookmark(a);
    const RowCount r = positionOfBookmark(b);
    if (l == r) return adCompareEqual;
    return l < r ? adCompareLessThan : adCompareGreaterThan;
}

// On the row behind the block that starts there, or, at the end that never came, on its last one.
void ClientRecordset::settleBehind(RowCount first, const RowBlock& block, bool lost) {
    if (block.rows == 0) {
        settleAt([&] { return first; });
        return;
    }
    const RowCount last = view_->rowAt(first + block.rows - 1);
    settleAt([&] { return view_->positionOf(last).value_or(first) + (lost ? 0 : 1); });
}

// Leaves the cursor on the row behind the block. Where fewer rows than asked remain because the
// fetch broke off, it raises the fetch's error and reads nothing.
RowBlock ClientRecordset::GetRows(RowCount rows, const Variant& start,
                                  const std::vector<Variant>& fields) {
    refuseInEvent();
    requireOpen();
    if (rows < -1) throw adoError(adErrInvalidArgument);
    if (start.isEmpty()) requireRow();
    if (!start.isEmpty()) startPosition(start); // a bad one is refused before anything happens
    const auto columns = columnsOf(fields);
    RowBlock block;
    moveTo(adRsnMove, [&] {
        RowCount first = 0;
        RowCount have = 0;
        std::uint32_t version = 0;
        do { // rows that come meanwhile may come before the first
            first = start.isEmpty() ? base(0) : startPosition(start);
            version = view_->version();
            have = view_->reach(rows < 0 ? everyRow : moved(first, rows));
        } while (view_->version() != version);
        const RowCount count = rows < 0 ? have - first : std::min(rows, have - first);
        block = readBlock(first, std::max(count, RowCount{0}), columns);
        // Every row asked for is there, but what comes behind them never came: that is not the end,
        // so the cursor stays on the last one, and whoever goes on gets the error.
        const bool lost = block.rows == rows && first + block.rows >= have && rows_->error();
        settleBehind(first, block, lost);
    });
    return block;
}

} // namespace norvel::adodb
