// What a database offers the engine: sessions that run statements, and the rows of a statement in
// batches.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/provider/ConnectionString.h"
#include "platform/adodb/store/Batch.h"
#include "platform/adodb/store/ColumnInfo.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvel::adodb {

// The rows of one statement. One thread reads at a time, not always the same; cancel() may come
// from any other.
class RowSource {
  public:
    virtual ~RowSource();
    // A type adEmpty is settled by the engine from the first rows.
    virtual const std::vector<ColumnInfo>& columns() const = 0;
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
};

struct StatementResult {
    std::unique_ptr<RowSource> rows; // null where the statement has none
    RowCount affected = 0;           // rows inserted, changed or deleted
};

// An open connection to a database. The owner thread calls; sources it gave may be read elsewhere
// meanwhile and keep alive what they need.
class Session {
  public:
    virtual ~Session();
    virtual StatementResult execute(const StatementRequest& request) = 0;
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
