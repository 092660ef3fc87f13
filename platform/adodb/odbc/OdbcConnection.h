// One connection to a server through the driver manager, and the statements that run on it.
#pragma once

#include "platform/adodb/odbc/OdbcErrors.h"
#include "platform/adodb/odbc/OdbcTarget.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// Has an environment of its own, so that nothing of one connection waits for another in the driver
// manager. One thread at a time makes calls, SQLCancel apart.
class OdbcConnection {
  public:
    // Raises Errore: no such driver, server that does not answer, user refused.
    static std::shared_ptr<OdbcConnection> open(const OdbcTarget& target);
    ~OdbcConnection();
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    SQLHDBC get() const { return dbc_; }
    const OdbcTarget& target() const { return target_; }
    ServerKind kind() const { return target_.kind; } // told by the server itself, once connected
    // Several statements may have rows to read at once.
    bool severalStatements() const { return kind() != ServerKind::SqlServer; }
    // An INSERT can give back the row that it made.
    bool returnsInserted() const { return returnsInserted_; }
    // A failure told that the connection is lost.
    bool broken() const { return broken_; }
    // It counts as lost: what stood on it is gone.
    void giveUp() { broken_ = true; }

    // The diagnostics of the last call on a handle; what they tell as an Errore.
    std::vector<OdbcDiagnostic> diagnostics(SQLSMALLINT type, SQLHANDLE handle) const;
    Errore error(SQLSMALLINT type, SQLHANDLE handle);
    // A text about the connection (SQL_DBMS_NAME…).
    std::string info(SQLUSMALLINT what) const;
    // The server sends no more than a number of rows, see RowBound.
    bool rowsBound() const { return rowsBound_; }
    void setRowsBound(bool bound) { rowsBound_ = bound; }
    // Of statements from now on, each by itself otherwise.
    void beginTransaction();
    // A rollback that fails leaves a connection that counts as lost.
    void endTransaction(bool commit);
    // Ends from a connection of its own what the server runs on this one, where SQLCancel does not
    // reach it: PostgreSQL's driver sends nothing while it fetches the next portion of a cursor's
    // rows. Nothing on others. May wait for the server. Any thread.
    void cancelBeside() const noexcept;

  private:
    explicit OdbcConnection(const OdbcTarget& target) : target_(target) {}
    void connect();
    void setAutocommit(bool on);
    void rollBackByWord();
    std::int64_t number(const char* query) const;

    OdbcTarget target_;
    SQLHENV env_ = SQL_NULL_HENV;
    SQLHDBC dbc_ = SQL_NULL_HDBC;
    bool connected_ = false;
    bool returnsInserted_ = false;
    bool rowsBound_ = false;
    std::int64_t backend_ = 0; // PostgreSQL's process for this connection; 0: unknown
    std::atomic<bool> broken_{false};
};

// The drivers and the data sources that the driver manager knows.
std::vector<OdbcEntry> odbcDrivers();
std::vector<OdbcEntry> odbcSources();
// What a data source's definition says under a keyword; "" where it says nothing.
std::string odbcSourceSetting(const std::string& source, const std::string& keyword);

inline bool succeeded(SQLRETURN result) {
    return SQL_SUCCEEDED(result);
}

} // namespace norvel::adodb
