// Positions, moves and blocks of rows of the adapter.
#include "platform/adodb/Errors.h"
#include "platform/adodb/ado/RecordsetAdapter.h"

namespace norvel::adodb {

using com::fromVariant;
using com::numberArgument;
using com::optionalArgument;
using com::OwnedVariant;
using com::toVariant;

namespace {

// Whether a cursor said that it knows no positions, rather than that this one is wrong or that the
// time is.
bool knowsNoPositions(const Errore& error) {
    switch (error.numero()) {
    case adErrInvalidArgument:
    case adErrNoCurrentRecord:
    case adErrObjectClosed:
    case adErrNotReentrant:
    case adErrStillExecuting:
    case adErrOperationCancelled:
    case adErrStillConnecting:
        return false;
    default:
        return true;
    }
}

} // namespace

bool AdoRecordset::BOF() const {
    return object_.flag(L"BOF");
}
bool AdoRecordset::EOF_() const {
    return object_.flag(L"EOF");
}

bool AdoRecordset::Supports(int cursorOptions) const {
    return fromVariant(object_.call(L"Supports", {numberArgument(cursorOptions)}).get())
        .toBoolean();
}

bool AdoRecordset::hasBookmarks() const {
    return Supports(adBookmark);
}

RowCount AdoRecordset::RecordCount() const {
    const RowCount known = object_.number(L"RecordCount");
    return known >= 0 || !hasBookmarks() ? known : mirror_.Count();
}

RowCount AdoRecordset::AbsolutePosition() const {
    try {
        const RowCount known = object_.number(L"AbsolutePosition");
        if (known != adPosUnknown) return known;
    } catch (const Errore& error) {
        if (!knowsNoPositions(error)) throw;
    }
    const bool before = BOF();
    const bool behind = EOF_();
    if (before != behind) return before ? adPosBOF : adPosEOF;
    if (before || !hasBookmarks()) return adPosUnknown;
    return mirror_.PositionOf(Bookmark());
}

// By the bookmark of the row; false where there are no bookmarks.
bool AdoRecordset::seek(RowCount position) {
    if (!hasBookmarks()) return false;
    const auto bookmark = mirror_.BookmarkAt(position);
    if (!bookmark) throw adoError(adErrInvalidArgument);
    object_.put(L"Bookmark", toVariant(*bookmark));
    return true;
}

void AdoRecordset::SetAbsolutePosition(RowCount position) {
    relay_.Move(adRsnMove, [&] {
        try {
            object_.putNumber(L"AbsolutePosition", position);
        } catch (const Errore& error) {
            if (!knowsNoPositions(error) || !seek(position)) throw;
        }
    });
}

Variant AdoRecordset::Bookmark() const {
    return fromVariant(object_.get(L"Bookmark").get());
}
void AdoRecordset::SetBookmark(const Variant& bookmark) {
    relay_.Move(adRsnMove, [&] { object_.put(L"Bookmark", toVariant(bookmark)); });
}
CompareEnum AdoRecordset::CompareBookmarks(const Variant& a, const Variant& b) const {
    const auto answer = object_.call(L"CompareBookmarks", {toVariant(a), toVariant(b)});
    return static_cast<CompareEnum>(fromVariant(answer.get()).toI4());
}

void AdoRecordset::Move(RowCount rows, const Variant& start) {
    relay_.Move(adRsnMove, [&] {
        object_.call(L"Move", {numberArgument(rows), optionalArgument(start)});
    });
}
void AdoRecordset::MoveFirst() {
    relay_.Move(adRsnMoveFirst, [&] { object_.call(L"MoveFirst"); });
}
void AdoRecordset::MoveLast() {
    relay_.Move(adRsnMoveLast, [&] { object_.call(L"MoveLast"); });
}
void AdoRecordset::MoveNext() {
    relay_.Move(adRsnMoveNext, [&] { object_.call(L"MoveNext"); });
}
void AdoRecordset::MovePrevious() {
    relay_.Move(adRsnMovePrevious, [&] { object_.call(L"MovePrevious"); });
}

// ADO's block has no bookmarks; a second pass brings them. An own clone walks itself; a host's
// recordset is not moved a second time: its mirror walks.
std::vector<Variant> AdoRecordset::blockBookmarks(const Variant& first, RowCount rows) {
    if (rows == 0) return {};
    if (!own_) return mirror_.BookmarksFrom(first, rows);
    object_.put(L"Bookmark", toVariant(first));
    return walkBookmarks(object_, rows);
}

RowBlock AdoRecordset::GetRows(RowCount rows, const Variant& start,
                               const std::vector<Variant>& fields) {
    if (!start.isEmpty()) Move(0, start);
    const bool marked = hasBookmarks() && !BOF() && !EOF_();
    const Variant first = marked ? Bookmark() : Variant();
    RowBlock block;
    relay_.Move(adRsnMove, [&] {
        const OwnedVariant values = object_.call(
            L"GetRows", {numberArgument(rows), OwnedVariant::missing(),
                         fields.empty() ? OwnedVariant::missing() : toVariant(fields)});
        block.values = com::columnsOf(values.get());
        if (!block.values.empty()) block.rows = std::ssize(block.values.front());
        if (marked && own_) block.bookmarks = blockBookmarks(first, block.rows);
    });
    if (marked && !own_) block.bookmarks = blockBookmarks(first, block.rows);
    return block;
}

} // namespace norvel::adodb
