#include "platform/adodb/odbc/OdbcLinks.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/OdbcStatement.h"

#include <chrono>
#include <utility>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 15s; // less than a change is waited for
constexpr auto lookInterval = 20ms;
constexpr std::size_t mostIdle = 2;

// How long a statement of a connection waits for others' locks: an operator waits with it.
constexpr const char* lockLimit(ServerKind kind) {
    switch (kind) {
    case ServerKind::MySql:
        return "SET SESSION lock_wait_timeout = 5, innodb_lock_wait_timeout = 5";
    case ServerKind::PostgreSql:
        return "SET lock_timeout = '5s'";
    case ServerKind::SqlServer:
        return "SET LOCK_TIMEOUT 5000";
    case ServerKind::Access:
    case ServerKind::Other:
        break;
    }
    return nullptr;
}

// A server that went away meanwhile shows only when it is asked.
bool answers(const std::shared_ptr<OdbcConnection>& connection) {
    if (!lockLimit(connection->kind())) return true; // no server
    try {
        OdbcStatement(connection, nullptr, 5).execute("SELECT 1");
    } catch (const Errore&) {
        return !connection->broken();
    }
    return true;
}

} // namespace

OdbcUse::~OdbcUse() = default;

class OdbcLinks::OwnUse : public OdbcUse {
  public:
    OwnUse(std::shared_ptr<OdbcLinks> links, std::uint64_t number)
        : links_(std::move(links)), number_(number) {}
    ~OwnUse() override { links_->endOwn(number_); }
    OwnUse(const OwnUse&) = delete;
    OwnUse& operator=(const OwnUse&) = delete;
    void give(std::shared_ptr<OdbcConnection> connection, bool replaced) {
        connection_ = std::move(connection);
        replaced_ = replaced;
    }

  private:
    std::shared_ptr<OdbcLinks> links_;
    std::uint64_t number_;
};

class OdbcLinks::ReaderUse : public OdbcUse {
  public:
    ReaderUse(std::weak_ptr<OdbcLinks> links, std::shared_ptr<OdbcConnection> connection)
        : links_(std::move(links)) {
        connection_ = std::move(connection);
    }
    ~ReaderUse() override {
        const auto links = links_.lock();
        if (!links || spoiled_ || connection_->broken()) return;
        const std::scoped_lock lock(links->mutex_);
        if (links->idle_.size() < mostIdle) links->idle_.push_back(std::move(connection_));
    }
    ReaderUse(const ReaderUse&) = delete;
    ReaderUse& operator=(const ReaderUse&) = delete;
    void spoil() override { spoiled_ = true; }

  private:
    bool spoiled_ = false;
    std::weak_ptr<OdbcLinks> links_; // rows may outlive the session
};

OdbcLinks::OdbcLinks(const OdbcTarget& target) : target_(target), kind_(target.kind) {
    own_ = opened();
    kind_ = own_->kind();
}

std::shared_ptr<OdbcConnection> OdbcLinks::opened() const {
    auto connection = OdbcConnection::open(target_);
    if (const char* limit = lockLimit(connection->kind()))
        OdbcStatement(connection, nullptr, 0).execute(limit);
    return connection;
}

// While the server is asked the lock is not held: it may not answer.
std::shared_ptr<OdbcUse> OdbcLinks::own(const std::atomic<bool>* cancelled, bool check) {
    auto [number, connection] = beginOwn(cancelled);
    const auto use = std::make_shared<OwnUse>(shared_from_this(), number);
    const bool lost = !connection || connection->broken() || (check && !answers(connection));
    if (lost) connection = opened();
    use->give(connection, lost);
    const std::scoped_lock lock(mutex_);
    if (number != use_) throw adoError(adErrOperationCancelled); // given up meanwhile
    own_ = std::move(connection);
    return use;
}

std::pair<std::uint64_t, std::shared_ptr<OdbcConnection>>
OdbcLinks::beginOwn(const std::atomic<bool>* cancelled) {
    const auto until = std::chrono::steady_clock::now() + longestWait;
    std::unique_lock lock(mutex_);
    while (inUse_) {
        if (cancelled && cancelled->load()) throw adoError(adErrOperationCancelled);
        if (std::chrono::steady_clock::now() >= until)
            throw adoError(dbCommandTimeout, "La connessione serve a un'altra lettura.");
        free_.wait_for(lock, lookInterval);
    }
    if (cancelled && cancelled->load()) throw adoError(adErrOperationCancelled);
    inUse_ = true;
    return {++use_, own_};
}

void OdbcLinks::endOwn(std::uint64_t number) {
    {
        const std::scoped_lock lock(mutex_);
        if (number != use_) return; // it was given up
        inUse_ = false;
    }
    free_.notify_all();
}

void OdbcLinks::giveUpOwn() {
    {
        const std::scoped_lock lock(mutex_);
        ++use_;
        inUse_ = false;
        own_.reset();
    }
    free_.notify_all();
}

std::shared_ptr<OdbcConnection> OdbcLinks::takeIdle() {
    const std::scoped_lock lock(mutex_);
    if (idle_.empty()) return nullptr;
    auto connection = std::move(idle_.back());
    idle_.pop_back();
    return connection;
}

std::shared_ptr<OdbcUse> OdbcLinks::reader() {
    auto connection = takeIdle();
    while (connection && !answers(connection))
        connection = takeIdle();
    if (!connection) connection = opened();
    return std::make_shared<ReaderUse>(weak_from_this(), std::move(connection));
}

} // namespace norvel::adodb
