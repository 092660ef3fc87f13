// The connections of one session.
#pragma once

#include "platform/adodb/odbc/OdbcConnection.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace norvel::adodb {

// The use of a connection by one statement; ends with the object.
class OdbcUse {
  public:
    virtual ~OdbcUse();
    const std::shared_ptr<OdbcConnection>& connection() const { return connection_; }
    // A statement failed or was ended: what its end left on the way shall not meet the next one.
    virtual void spoil() {}
    // It took the place of one that was lost: what statements had left on that one is gone.
    bool replaced() const { return replaced_; }

  protected:
    std::shared_ptr<OdbcConnection> connection_;
    bool replaced_ = false;
};

// One connection is the session's own: transactions and whatever a statement leaves behind are its.
// A connection serves one statement's rows at a time, so queries that depend on nothing of that
// one's run on readers, connections that come as they are needed; a few are kept for the next
// query. A connection that was lost is replaced at its next use.
class OdbcLinks : public std::enable_shared_from_this<OdbcLinks> {
  public:
    // Opens the session's own.
    explicit OdbcLinks(const OdbcTarget& target);

    // Waits for the one before, at most a quarter of a minute (then 0x80040E31); cancelled (may be
    // null) ends the wait, and the use where it was given up before it began. check: whether the
    // server still answers on it, so that what must not be sent twice is not sent into the void.
    std::shared_ptr<OdbcUse> own(const std::atomic<bool>* cancelled, bool check);
    // Whoever uses the session's own is left alone with it, since the server does not answer him;
    // the next use opens a new one.
    void giveUpOwn();
    // One that waits since an earlier query, where the server still answers on it, or a new one.
    std::shared_ptr<OdbcUse> reader();
    ServerKind kind() const { return kind_; }
    const OdbcTarget& target() const { return target_; }

  private:
    class OwnUse;
    class ReaderUse;
    std::shared_ptr<OdbcConnection> opened() const;
    std::pair<std::uint64_t, std::shared_ptr<OdbcConnection>>
    beginOwn(const std::atomic<bool>* cancelled);
    void endOwn(std::uint64_t number);
    std::shared_ptr<OdbcConnection> takeIdle();

    OdbcTarget target_;
    ServerKind kind_;
    std::mutex mutex_; // guards what follows
    std::condition_variable free_;
    std::shared_ptr<OdbcConnection> own_; // null: given up
    bool inUse_ = false;
    std::uint64_t use_ = 0; // the number of the last use of the session's own
    std::vector<std::shared_ptr<OdbcConnection>> idle_;
};

} // namespace norvel::adodb
