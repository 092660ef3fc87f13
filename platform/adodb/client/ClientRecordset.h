// A recordset over columns in memory: ADO's client cursor, always static.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/client/ClientFields.h"
#include "platform/adodb/client/CommandObject.h"
#include "platform/adodb/client/ConnectionObject.h"
#include "platform/adodb/client/EventSinks.h"
#include "platform/adodb/client/RowSet.h"
#include "platform/adodb/client/View.h"
#include "platform/adodb/fetch/Retire.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Decisions where ADO leaves a choice:
// - Open and Requery run the statement and read the first block on the calling thread; the options
//   adAsyncFetch and adAsyncFetchNonBlocking bring the rest in the background and always end with a
//   FetchComplete event, also where the first block was all. Without them every row is there on
//   return, no fetch event comes, and a failure half way raises: an Open then leaves the recordset
//   closed, a Requery leaves it open on what came.
// - With adAsyncExecute the first block comes in the background, too, and so it does for a Requery
//   with adAsyncFetchNonBlocking: until then an Open leaves the recordset neither open nor closed
//   (State adStateExecuting; its members raise 3711, Cancel and Close end it), a Requery leaves the
//   old rows on show, which may be read but not edited. A failure comes with FetchComplete. A newer
//   Requery takes the place of one that still runs.
// - Requery without options waits for every row. One that fails before its first block leaves rows
//   and position as they were. The cursor returns to the row it was on where the rows' key tells
//   it, as soon as that row comes, unless somebody moves first; else to the first row.
// - While a fetch runs, a move to a row still to come waits for it under adAsyncFetch; under
//   adAsyncFetchNonBlocking MoveLast goes to the last known row and other moves beyond it to EOF.
//   A fetch that broke off makes every move, and GetRows, beyond the rows that came raise its
//   error.
// - Handlers of move and change events must not navigate (3710); those of FetchProgress and
//   FetchComplete may.
// - Clones share the rows: the fetch goes on while one of them is open. Its events go to the
//   recordset that was opened only; those of changed fields and records go to all of them.
// - A filter shows the rows that match among those that came, without waiting; a row that comes
//   later shows when it matches. It stays in force over a Requery, bookmarks and groups apart. A
//   bookmark of a row that does not show is a bad one. On a closed recordset a filter is kept
//   unread; an Open whose rows it does not fit goes on without it.
// - A sort leaves the cursor on its row, wherever that stands by then; so do rows that a fetch
//   brings into a sorted recordset. It tells ViewChanged and no move. It stays in force over a
//   Requery, and like a filter it may be set while the recordset is closed.
// - Rows of one table whose whole primary key is among the columns can be changed, with a lock type
//   other than adLockReadOnly; so can those of a recordset without a source. A change is sent to
//   the database by Update (adLockBatchOptimistic included), a move or a Delete; fields of a new
//   row that were not set are left to the database, or become NULL. Of the columns to be changed,
//   and of every one of a row to be deleted, the database must still hold what was read. A fetch
//   that runs is waited for. What the database made of the row is read back.
// - A new row that the filter does not show leaves the cursor at the end; a row changed so that it
//   no longer shows leaves it on the one that follows.
// - Closing a Connection closes the recordsets open on it; one whose ActiveConnection was set to
//   Nothing stays.
class ClientRecordset final : public Recordset,
                              public std::enable_shared_from_this<ClientRecordset> {
  public:
    ClientRecordset();
    ~ClientRecordset() override;

    void Open(const Variant& source, const Variant& connection, CursorTypeEnum cursorType,
              LockTypeEnum lockType, int options) override;
    void Close() override;
    void Requery(int options) override;
    void Cancel() override;
    int State() const override;
    RecordsetRef Clone(LockTypeEnum lockType) override;

    Variant ActiveConnection() const override;
    void SetActiveConnection(const Variant& connectionOrText) override;
    Variant ActiveCommand() const override;
    std::string Source() const override { return source_; }
    void SetSource(const Variant& textOrCommand) override;
    CursorTypeEnum CursorType() const override { return adOpenStatic; }
    void SetCursorType(CursorTypeEnum type) override;
    LockTypeEnum LockType() const override { return lockType_; }
    void SetLockType(LockTypeEnum type) override;
    CursorLocationEnum CursorLocation() const override { return adUseClient; }
    void SetCursorLocation(CursorLocationEnum location) override;

    adodb::Fields& Fields() override { return fields_; }
    RowCount RecordCount() const override;
    bool BOF() const override;
    bool EOF_() const override;
    RowCount AbsolutePosition() const override;
    void SetAbsolutePosition(RowCount position) override;
    Variant Bookmark() const override;
    void SetBookmark(const Variant& bookmark) override;
    CompareEnum CompareBookmarks(const Variant& a, const Variant& b) const override;

    void Move(RowCount rows, const Variant& start) override;
    void MoveFirst() override;
    void MoveLast() override;
    void MoveNext() override;
    void MovePrevious() override;
    RowBlock GetRows(RowCount rows, const Variant& start,
                     const std::vector<Variant>& fields) override;

    Variant Filter() const override;
    void SetFilter(const Variant& criteria) override;
    std::string Sort() const override;
    void SetSort(const std::string& criteria) override;
    Grouping GroupBy(const std::vector<std::string>& fields) override;

    EditModeEnum EditMode() const override;
    void AddNew(const std::vector<Variant>& fields, const std::vector<Variant>& values) override;
    void Update() override;
    void CancelUpdate() override;
    void Delete(AffectEnum affect) override;
    bool Supports(int cursorOptions) const override;

    std::optional<Errore> FetchError() const override;
    bool WaitFetch(int milliseconds) override;

    void Subscribe(RecordsetEvents* sink) override { sinks_.add(sink); }
    void Unsubscribe(RecordsetEvents* sink) override { sinks_.remove(sink); }

    // --- for this folder ---
    // What an Open or Requery without options does.
    void setUnspecifiedOptions(int options) { unspecifiedOptions_ = options; }
    Variant currentValue(int column) const;
    Variant originalValue(int column) const;
    void setCurrentValue(int column, const Variant& value);
    // Rows that the statement of the last Open inserted, changed or deleted.
    RowCount affected() const { return affected_; }
    // What Close does once no one may object any more; nothing where it is closed.
    void closeNow();
    const ConnectionRef& connection() const { return connection_; }
    bool shows(const RowSet& rows) const { return rows_.get() == &rows; }
    const std::shared_ptr<RowSet>& rowSet() const { return rows_; } // null: closed
    const std::shared_ptr<View>& view() const { return view_; }     // null: closed
    void refuseInEvent() const;                                     // 3710

  private:
    // Where the cursor stands: on a row, or before the first, or behind the last, or (no rows)
    // both.
    struct Cursor {
        RowCount position = 0;
        bool bof = true;
        bool eof = true;
        enum class On : std::uint8_t { Row, NewRow, DeletedRow };
        On on = On::Row;  // a deleted row's position is that of the row that follows it
        RowCount row = 0; // its number, and the view's version that position is of
        std::uint32_t version = 0;
        bool onRow() const { return !bof && !eof; }
    };
    // The bits of an options argument.
    struct Options {
        CommandTypeEnum command = adCmdUnknown;
        bool background = false;
        bool waits = true;
        bool executes = false; // in the background, too
    };
    // A statement whose first block is awaited.
    struct Awaited {
        std::unique_ptr<Execution, Retire> execution;
        Options options;
        bool opening = false; // else a Requery
        std::uint64_t number = 0;
    };

    // Opening (ClientOpen.cpp)
    Options readOptions(int options) const;
    void takeLockType(LockTypeEnum type);
    void takeSource(const Variant& source);
    void takeConnection(const Variant& connection);
    void openOn(const Options& options);
    void openWithoutSource();
    std::shared_ptr<Session> openedSession();
    void releaseOwnConnection();
    void makeCommand(const Session& session, CommandTypeEnum type);
    std::shared_ptr<RowSet> run(Session& session, const Options& options);
    void present(const std::shared_ptr<RowSet>& rows, const Options& options);
    void show(std::shared_ptr<RowSet> rows);
    void clear();
    void toStart();
    Fetch::Listener fetchListener(std::uint32_t generation);
    void deliverFetchEvents(std::uint32_t generation);

    // Running the statement again (ClientRequery.cpp)
    // The row to return to, by the values of its key, and how many rows were looked at.
    struct Return {
        std::vector<std::pair<int, Variant>> cells;
        RowCount searched = 0;
    };
    void requery(const Options& options);
    void tellRequeried(const Errore* error);
    std::optional<Return> rowToReturnTo() const;
    void showAgain(const std::shared_ptr<RowSet>& rows);
    bool returnToRow();

    // Opening in the background (ClientAsync.cpp)
    StatementRequest requestFor(const Options& options) const;
    void await(const std::shared_ptr<Session>& session, const Options& options, bool opening);
    void awaitedEnded(bool givenUp = false);
    void openingEnded(Execution::Outcome outcome, const Options& options);
    void requeryEnded(Execution::Outcome outcome, const Options& options);
    void tellFetchFailed(const Errore& error);

    // Checks
    void requireOpen() const;   // 3704, 3711
    void requireClosed() const; // 3705
    void requireRow() const;    // 3704, 3021

    // Moving (ClientMoves.cpp)
    const Cursor& cursor() const;
    void setCursor(RowCount position, bool bof, bool eof);
    void moveTo(EventReasonEnum reason, const std::function<void()>& step);
    void tellMoved(EventReasonEnum reason, const Errore* error);
    // Where a move leads, by the rows that there are when it is asked.
    using Target = std::function<RowCount()>;
    RowCount settleAt(const Target& target);
    void settleForward(const Target& target);
    void settleBehind(RowCount first, const RowBlock& block, bool lost);
    void checkEdges(RowCount rows) const;
    RowCount base(RowCount rows) const;
    RowCount startPosition(const Variant& start) const;
    RowCount positionOfBookmark(const Variant& bookmark) const;
    RowCount shownRows() const;
    bool empty() const;

    // Filtering and sorting (ClientView.cpp)
    using Order = std::shared_ptr<const SortOrder>;
    View::Rules rulesOf(const Variant& criteria) const;
    Order orderOf(const std::string& criteria) const;
    std::shared_ptr<View> viewOf(const Variant& criteria, const std::string& sort,
                                 const Order& order) const;
    void useView(std::shared_ptr<View> view);
    void reorder(std::shared_ptr<View> view, const std::string& sort);
    void showThroughFilter();

    // Reading (ClientRows.cpp)
    RowBlock readBlock(RowCount first, RowCount count,
                       const std::vector<std::size_t>& columns) const;
    std::vector<std::size_t> columnsOf(const std::vector<Variant>& fields) const;
    bool onNewRow() const;

    // Editing (ClientEdits.cpp)
    using Asked = std::function<void(RecordsetEvents&, EventStatusEnum&, Recordset&)>;
    using Told = std::function<void(RecordsetEvents&, Recordset&)>;
    bool updatable() const;
    void requireUpdatable() const;
    bool pending() const;
    void refusePending() const;
    void commitPending();
    void postNewRow();
    void postEdits();
    void deleteRow(RowCount row);
    RowChange changeOf(RowChange::Kind kind) const;
    std::vector<Variant> rowAsRead(RowCount row) const;
    void changeRecord(EventReasonEnum reason, const std::function<void()>& change);
    bool askSharers(const Asked& ask);
    void tellSharers(const Told& tell);

    ClientFields fields_;
    EventSinks sinks_;
    std::string source_;
    bool sourceIsCommand_ = false;
    std::string statement_;                  // what runs; empty: closed, or no source
    std::shared_ptr<CommandObject> command_; // null: no source
    ConnectionRef connection_;
    bool ownsConnection_ = false; // made from a connection string
    LockTypeEnum lockType_ = adLockReadOnly;
    bool explicitReadOnly_ = false;
    RowCount affected_ = 0;

    std::shared_ptr<RowSet> rows_; // null: closed
    std::shared_ptr<View> view_;   // of them; null: closed
    Variant filter_ = std::int32_t{adFilterNone};
    std::string sort_;
    Order order_;           // by sort_; null: none
    mutable Cursor cursor_; // read through cursor(), which follows its row
    std::optional<Return> returning_;
    std::optional<Awaited> awaited_;
    std::uint64_t lastAwaited_ = 0;
    std::optional<Errore> openError_; // why the last opening in the background came to nothing
    int unspecifiedOptions_ = adOptionUnspecified;
    bool completeTold_ = true;                   // FetchComplete went out
    RowCount expectedRows_ = 0;                  // a guess: what the last fetch brought
    bool appender_ = false;                      // a recordset without a source
    std::optional<std::vector<Variant>> newRow_; // AddNew's, until Update
    std::map<int, Variant> edits_;               // of the current row, by column, until Update
    Cursor beforeNew_;
};

} // namespace norvel::adodb
