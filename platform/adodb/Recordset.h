// A recordset with ADO's members and ADO's behaviour. Windows, queries, views and exports know only
// this interface; ClientRecordset (this folder) and the adapter to a host's own ADO object
// implement it.
//
// Members keep ADO's names; a property's setter is Set + name. Everything that fails throws Errore
// with ADO's number (the low word of 0x800A… codes) and an Italian description. One thread, the
// owner, calls; events reach it synchronously, those of a background fetch through the owner queue.
#pragma once

#include "platform/adodb/Constants.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

class Recordset;
class Connection;
class Command;
using RecordsetRef = std::shared_ptr<Recordset>;
using ConnectionRef = std::shared_ptr<Connection>;
using CommandRef = std::shared_ptr<Command>;

// A row position, a row count: rows.
using RowCount = std::int64_t;

// One column of a recordset. The object stays the same for the life of the open recordset; its
// Value follows the current row. After Close every member raises 3420.
class NR_API Field : public Object {
  public:
    virtual std::string Name() const = 0;
    virtual DataTypeEnum Type() const = 0;
    virtual std::int64_t DefinedSize() const = 0; // characters or bytes, as ADO
    virtual std::int64_t ActualSize() const = 0;  // of the current value
    virtual int Attributes() const = 0;           // FieldAttributeEnum bits
    virtual int Precision() const = 0;
    virtual int NumericScale() const = 0;
    virtual Variant Value() const = 0; // 3021 without a current row
    virtual void SetValue(const Variant& value) = 0;
    virtual Variant OriginalValue() const = 0;
    virtual Variant UnderlyingValue() const = 0;
};

// The columns. Indexes start at 0; names are case-blind; a miss raises 3265.
class NR_API Fields : public Object {
  public:
    virtual int Count() const = 0;
    virtual Field& Item(const Variant& nameOrIndex) = 0;
    Field& operator()(const Variant& nameOrIndex) { return Item(nameOrIndex); }
    // Adds a column to a closed recordset that will be opened without a source. size: characters.
    virtual void Append(const std::string& name, DataTypeEnum type, std::int64_t size = 0,
                        int attributes = 0) = 0;
    virtual void Delete(const Variant& nameOrIndex) = 0;
};

// What a recordset tells. Every method is optional. A Will… method may set status to
// adStatusCancel. error is null unless status is adStatusErrorsOccurred. Handlers must not move the
// recordset (3710).
class NR_API RecordsetEvents {
  public:
    virtual ~RecordsetEvents();
    virtual void WillMove(EventReasonEnum, EventStatusEnum& /*status*/, Recordset&) {}
    virtual void MoveComplete(EventReasonEnum, const Errore* /*error*/, EventStatusEnum,
                              Recordset&) {}
    virtual void WillChangeField(int /*count*/, const std::vector<Field*>&, EventStatusEnum&,
                                 Recordset&) {}
    virtual void FieldChangeComplete(int /*count*/, const std::vector<Field*>&, const Errore*,
                                     EventStatusEnum, Recordset&) {}
    virtual void WillChangeRecord(EventReasonEnum, int /*count*/, EventStatusEnum&, Recordset&) {}
    virtual void RecordChangeComplete(EventReasonEnum, int /*count*/, const Errore*,
                                      EventStatusEnum, Recordset&) {}
    virtual void WillChangeRecordset(EventReasonEnum, EventStatusEnum&, Recordset&) {}
    virtual void RecordsetChangeComplete(EventReasonEnum, const Errore*, EventStatusEnum,
                                         Recordset&) {}
    virtual void EndOfRecordset(bool& /*moreData*/, EventStatusEnum&, Recordset&) {}
    // progress: rows fetched so far; maxProgress: a guess at the total, at least progress.
    virtual void FetchProgress(RowCount /*progress*/, RowCount /*maxProgress*/, EventStatusEnum,
                               Recordset&) {}
    // error: why the fetch ended before the last row, null if it did not.
    virtual void FetchComplete(const Errore* /*error*/, EventStatusEnum, Recordset&) {}
    // This engine's own, beyond ADO's: the filter, sort or rows on show changed as a whole (Open,
    // Filter, Sort, Requery, Close), so that what was painted no longer holds. Sent after the
    // change, before the MoveComplete that follows it.
    virtual void ViewChanged(Recordset&) {}
};

// A block of values: values[column][row], columns in the order asked.
struct RowBlock {
    RowCount rows = 0;
    std::vector<std::vector<Variant>> values;
    std::vector<Variant> bookmarks; // one a row
};

// Rows in groups, groups within groups.
struct Grouping {
    // The first row of each group, from 0, ascending: outermost groups first. Each group of a level
    // begins with one of the next level.
    std::vector<std::vector<RowCount>> starts;
    RowCount rows = 0;
    bool operator==(const Grouping&) const = default;
};

class NR_API Recordset : public Object {
  public:
    // --- life ---
    // source: SQL text, table name or Command; connection: Connection object or connection string;
    // both may be Empty, then the properties set before apply. Options: CommandTypeEnum |
    // ExecuteOptionEnum. With adAsyncFetch or adAsyncFetchNonBlocking control returns after the
    // first block of rows.
    virtual void Open(const Variant& source = {}, const Variant& connection = {},
                      CursorTypeEnum cursorType = adOpenUnspecified,
                      LockTypeEnum lockType = adLockUnspecified, int options = -1) = 0;
    virtual void Close() = 0;
    virtual void Requery(int options = -1) = 0;
    virtual void
    Cancel() = 0; // ends a running fetch; what came stays, State gets adStateFetchBroken
    virtual int State() const = 0; // ObjectStateEnum bits
    virtual RecordsetRef Clone(LockTypeEnum lockType = adLockUnspecified) = 0;

    // --- what it is open on ---
    virtual Variant ActiveConnection() const = 0; // the Connection object, or Nothing
    virtual void SetActiveConnection(const Variant& connectionOrText) = 0;
    virtual Variant ActiveCommand() const = 0; // the Command object, or Nothing
    virtual std::string Source() const = 0;
    virtual void SetSource(const Variant& textOrCommand) = 0;
    virtual CursorTypeEnum CursorType() const = 0;
    virtual void SetCursorType(CursorTypeEnum type) = 0;
    virtual LockTypeEnum LockType() const = 0;
    virtual void SetLockType(LockTypeEnum type) = 0;
    virtual CursorLocationEnum CursorLocation() const = 0;
    virtual void SetCursorLocation(CursorLocationEnum location) = 0;

    // --- columns and rows ---
    virtual adodb::Fields& Fields() = 0;
    virtual RowCount
    RecordCount() const = 0; // of the rows on show; while fetching, those known so far
    virtual bool BOF() const = 0;
    virtual bool EOF_() const = 0; // EOF; the underscore because <cstdio> owns the bare word
    virtual RowCount AbsolutePosition() const = 0; // 1-based, or PositionEnum
    virtual void SetAbsolutePosition(RowCount position) = 0;
    virtual Variant Bookmark() const = 0;
    virtual void SetBookmark(const Variant& bookmark) = 0;
    virtual CompareEnum CompareBookmarks(const Variant& a, const Variant& b) const = 0;

    // --- moves ---
    virtual void Move(RowCount rows, const Variant& start = {}) = 0;
    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;

    // Reads up to rows rows (-1: all that remain) from start (Empty: the current row; a bookmark or
    // a BookmarkEnum number otherwise) and leaves the cursor behind the last one read. fields:
    // names or indexes; empty: all. Over a fetch that broke off it raises the fetch's error rather
    // than read fewer rows than asked: who wants what came asks for no more than RecordCount.
    virtual RowBlock GetRows(RowCount rows = -1, const Variant& start = {},
                             const std::vector<Variant>& fields = {}) = 0;

    // --- view ---
    virtual Variant Filter() const = 0; // 0 when there is none, else the text or array that was set
    virtual void SetFilter(const Variant& criteria) = 0;
    virtual std::string Sort() const = 0;
    virtual void SetSort(const std::string& criteria) = 0;
    // Puts the rows on show so that those with equal values in these fields stand together, and
    // tells where. Groups ascend by their values as under Sort, texts that differ in case alone are
    // one group and NULLs another; within a group the rows keep the order that Sort gave them, and
    // the order by all that is Sort from then on. Where rows are still coming, those that came are
    // all that shows until the next Filter, Sort or Requery. For a clone that nobody listens to: it
    // tells ViewChanged and nothing else. Raises 3265 for a field that is not there, what Sort
    // raises, and what reading raises.
    virtual Grouping GroupBy(const std::vector<std::string>& fields);

    // --- edits ---
    virtual EditModeEnum EditMode() const = 0;
    virtual void AddNew(const std::vector<Variant>& fields = {},
                        const std::vector<Variant>& values = {}) = 0;
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete(AffectEnum affect = adAffectCurrent) = 0;
    virtual bool Supports(int cursorOptions) const = 0; // CursorOptionEnum bits, as ADO

    // --- fetch ---
    // Why the last fetch ended early; nullopt while it runs and when it brought every row.
    virtual std::optional<Errore> FetchError() const = 0;
    // Waits at most milliseconds for the running fetch; true when none runs (any more).
    virtual bool WaitFetch(int milliseconds) = 0;

    // --- events ---
    virtual void Subscribe(RecordsetEvents* sink) = 0;
    virtual void Unsubscribe(RecordsetEvents* sink) = 0;
};

class NR_API Connection : public Object {
  public:
    virtual std::string ConnectionString() const = 0; // the passwords in it are the host's own
    virtual void SetConnectionString(const std::string& text) = 0;
    virtual void Open(const std::string& connectionString = {}) = 0;
    virtual void Close() = 0;
    virtual int State() const = 0;
    // Runs a statement; the answer is its recordset (closed where the statement has no rows).
    virtual RecordsetRef Execute(const std::string& commandText,
                                 RowCount* recordsAffected = nullptr, int options = -1) = 0;
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
    virtual int CommandTimeout() const = 0; // seconds
    virtual void SetCommandTimeout(int seconds) = 0;
};

class NR_API Command : public Object {
  public:
    virtual std::string CommandText() const = 0;
    virtual void SetCommandText(const std::string& text) = 0;
    virtual CommandTypeEnum CommandType() const = 0;
    virtual void SetCommandType(CommandTypeEnum type) = 0;
    virtual Variant ActiveConnection() const = 0;
    virtual void SetActiveConnection(const Variant& connectionOrText) = 0;
};

// This project's own engine: a client cursor over columns.
NR_API RecordsetRef makeClientRecordset();
// The same, but its Open and Requery without options are asynchronous from the start
// (adAsyncExecute, adAsyncFetchNonBlocking): for the rows of a query that nobody should wait for.
// FetchProgress tells of rows that came, FetchComplete of the end or the failure, a failed Open
// included.
NR_API RecordsetRef makeStreamingRecordset();
NR_API ConnectionRef makeConnection();
NR_API CommandRef makeCommand();

// The connection string of what a recordset is open on ("" when there is none), as a host reads
// ActiveConnection as a text.
NR_API std::string connectionText(const Recordset& recordset);

} // namespace norvel::adodb
