// What a database offers the engine: sessions that run statements, and the rows of a statement in
// batches.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/provider/ConnectionString.h"
#include "platform/adodb/store/Batch.h"
#include "platform/adodb/store/ColumnInfo.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvel::adodb {

// What the rows of a statement stand for in the database.
struct RowIdentity {
    std::string table;    // the one table that they come from, as SQL names it; "": several, none
    std::vector<int> key; // the columns that tell the rows apart; empty: not known
    // The statement reads more than that table once (a union, a subquery, the table joined with
    // itself): a row may hold values of other rows, though they name the same table.
    bool mixed = false;
};

// The rows of one statement. One thread reads at a time, not always the same; cancel() may come
// from any other.
class RowSource {
  public:
    virtual ~RowSource();
    // A type adEmpty is settled by the engine from the first rows.
    virtual const std::vector<ColumnInfo>& columns() const = 0;
    // Asked once, before the first read().
    virtual RowIdentity identity() { return {}; }
    // Fills the batch as far as Batch::endRow() asks. False once the last row is in it (the batch
    // may be empty then). Raises Errore on a failure; the rows already in the batch hold.
    virtual bool read(Batch& batch) = 0;
    // Makes a running and every later read() raise promptly. Never raises, never waits.
    virtual void cancel() noexcept = 0;
};

struct StatementRequest {
    std::string text;        // in the host's notation
    bool background = false; // rows will be read from another thread while the session goes on
    int timeoutSeconds = 0;  // for the first row; 0: no limit
    const std::atomic<bool>* cancelled = nullptr; // execute() raises once it is true
};

struct StatementResult {
    std::unique_ptr<RowSource> rows; // null where the statement has none
    RowCount affected = 0;           // rows inserted, changed or deleted
};

// A change of one row of one table.
struct RowChange {
    enum class Kind { Insert, Update, Delete };
    struct Cell {
        int column = 0;
        Variant value;
    };
    Kind kind = Kind::Update;
    RowIdentity identity;
    std::vector<ColumnInfo> columns;
    std::vector<Variant> before; // the row as it was read, column by column; nothing of an Insert
    std::vector<Cell> cells;     // what is to be written; nothing of a Delete
};

// An open connection to a database. The owner thread calls, execute() any thread; sources it gave
// may be read elsewhere meanwhile and keep alive what they need.
class Session {
  public:
    virtual ~Session();
    virtual StatementResult execute(const StatementRequest& request) = 0;
    // Writes the change and gives the row as the database holds it then, column by column; nothing
    // of a Delete. All or nothing. Raises DB_E_CONCURRENCYVIOLATION where the row is gone or, in a
    // column to be written (any column of a Delete), no longer what it was; 3251 where the provider
    // cannot write.
    virtual std::vector<Variant> change(const RowChange& change);
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    // The query that reads a whole table, by the table's name as a host writes it.
    virtual std::string tableQuery(const std::string& table) const = 0;
};

using SessionFactory = std::function<std::shared_ptr<Session>(const ConnectionString&)>;

// Adds a provider under the name that connection strings give it (case-blind), or replaces it; an
// empty factory removes it. Owner thread.
void registerProvider(const std::string& name, SessionFactory factory);

// Opens a session on the provider that the string names. Raises 3706 where it names none or one
// that is not there; the message names the provider, never a password.
std::shared_ptr<Session> openSession(const std::string& connectionString);

} // namespace norvel::adodb
