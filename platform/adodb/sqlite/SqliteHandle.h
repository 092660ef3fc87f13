// One handle on a SQLite database: its lock, its long statements' emergency stop, its errors.
#pragma once

#include "platform/adodb/Errors.h"
#include "platform/runtime/Variant.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace norvel::adodb {

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// When a running statement has to stop.
struct Stop {
    std::atomic<bool> cancelled{false};
    const std::atomic<bool>* outside = nullptr;     // a further flag, of whoever asked
    std::chrono::steady_clock::time_point deadline; // the epoch: none
    bool asked() const;
    bool due() const;
};

// The handle has no locks of its own (NOMUTEX): whoever uses it holds a Turn.
class SqliteHandle {
  public:
    // Opens an existing database; ":memory:" makes an empty one. Raises Errore with a text that
    // says what is wrong with the file. Never creates a file, never maps one into memory.
    static std::shared_ptr<SqliteHandle> open(const std::string& path, bool readOnly);
    ~SqliteHandle();
    SqliteHandle(const SqliteHandle&) = delete;
    SqliteHandle& operator=(const SqliteHandle&) = delete;

    // The use of the handle by one thread, ended early when stop says so (may be null). Turns are
    // had in the order asked: a fetch that takes one after the other leaves the next to who waits.
    class Turn {
      public:
        Turn(SqliteHandle& handle, const Stop* stop);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

      private:
        SqliteHandle& handle_;
    };

    // --- within a Turn ---
    sqlite3* get() const { return db_; }
    StatementHandle prepare(const std::string& sql);
    // The same with values for its parameters ?1, ?2…: Null, Booleans (1 or 0), whole and other
    // numbers, texts, bytes.
    StatementHandle prepareBound(const std::string& sql, const std::vector<Variant>& values);
    void run(const char* sql);
    // The failure of the last call, in Italian; result is SQLite's code.
    Errore error(int result) const;
    // True where a second handle on the file sees the same data: no open transaction, no temporary
    // table, no attached database, no database in memory.
    bool canBeDoubled();

    const std::string& path() const { return path_; }
    bool readOnly() const { return readOnly_; }

  private:
    explicit SqliteHandle(std::string path, bool readOnly);
    StatementHandle compile(const std::string& sql);
    static int onProgress(void* self);
    static int onBusy(void* self, int attempts);
    bool stopDue() const;

    std::string path_;
    bool readOnly_;
    sqlite3* db_ = nullptr;
    std::mutex mutex_;
    std::condition_variable turnEnded_;
    std::uint64_t nextTurn_ = 0;
    std::uint64_t currentTurn_ = 0;
    const Stop* stop_ = nullptr; // of the current Turn
};

} // namespace norvel::adodb
