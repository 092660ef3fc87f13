// A statement on a connection, whose calls can be ended from outside.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>

namespace norvel::adodb {

// Calls to the driver block for as long as the server takes. A thread of the statement's own looks
// at what may end them (cancel(), a time limit, a flag of whoever asked) and ends them with
// SQLCancel; a server that does not answer even to that keeps its caller waiting.
class OdbcStatement {
  public:
    // outside may be null. timeoutSeconds: until settle(); 0: no limit. Raises Errore.
    OdbcStatement(std::shared_ptr<OdbcConnection> connection, const std::atomic<bool>* outside,
                  int timeoutSeconds);
    ~OdbcStatement();
    OdbcStatement(const OdbcStatement&) = delete;
    OdbcStatement& operator=(const OdbcStatement&) = delete;

    SQLHSTMT get() const { return statement_; }
    OdbcConnection& connection() const { return *connection_; }
    const std::shared_ptr<OdbcConnection>& sharedConnection() const { return connection_; }

    // Runs a statement to where its rows begin, or to its end where it has none; of a text with
    // several, to the first that has rows.
    void execute(const std::string& sql);
    // Has the server read a statement without running it: its columns are known then.
    void prepare(const std::string& sql);
    int columns() const { return columns_; }            // of the rows; 0: none
    std::int64_t affected() const { return affected_; } // rows inserted, changed or deleted
    // A call that may block; raises where it failed or was ended. SQL_NO_DATA is no failure.
    template <class Function>
    SQLRETURN call(Function function) {
        enter();
        const SQLRETURN result = function();
        leave();
        if (!succeeded(result) && result != SQL_NO_DATA) throw error();
        return result;
    }
    // What was asked from outside until now no longer counts; cancel() does.
    void forgetOutside();
    // The first row is there: no time limit any more.
    void settle();
    void cancel() noexcept; // any thread
    // The failure of the last call: cancelled, late, or what the driver says.
    Errore error();

  private:
    int resultColumns();
    void watch();
    bool due() const; // mutex_ held
    void enter();
    void leave();

    std::shared_ptr<OdbcConnection> connection_;
    SQLHSTMT statement_ = SQL_NULL_HSTMT;
    int columns_ = 0;
    std::int64_t affected_ = 0;

    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    const std::atomic<bool>* outside_;
    std::chrono::steady_clock::time_point deadline_; // the epoch: none
    bool cancelled_ = false;
    bool late_ = false;
    bool calling_ = false;
    bool over_ = false;
    std::thread watcher_;
};

} // namespace norvel::adodb
