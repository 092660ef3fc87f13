#include "platform/adodb/odbc/OdbcStatement.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/odbc/OdbcText.h"

#include <utility>

namespace norvel::adodb {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto lookInterval = 20ms;    // at a flag that tells of no change
constexpr auto cancelInterval = 200ms; // a cancel may come before the server has the statement
constexpr auto besideInterval = 5s;    // each takes a connection

} // namespace

OdbcStatement::OdbcStatement(std::shared_ptr<OdbcConnection> connection,
                             const std::atomic<bool>* outside, int timeoutSeconds)
    : connection_(std::move(connection)), outside_(outside) {
    if (timeoutSeconds > 0) deadline_ = Clock::now() + std::chrono::seconds(timeoutSeconds);
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_STMT, connection_->get(), &statement_)))
        throw connection_->error(SQL_HANDLE_DBC, connection_->get());
    watcher_ = std::thread([this] { watch(); });
}

OdbcStatement::~OdbcStatement() {
    {
        const std::scoped_lock lock(mutex_);
        over_ = true;
    }
    changed_.notify_all();
    watcher_.join();
    SQLFreeHandle(SQL_HANDLE_STMT, statement_);
}

bool OdbcStatement::due() const {
    return cancelled_ || late_;
}

void OdbcStatement::watch() {
    Clock::time_point besideAgain;
    std::unique_lock lock(mutex_);
    while (!over_) {
        if (outside_ && outside_->load(std::memory_order_relaxed)) cancelled_ = true;
        const bool timed = deadline_ != Clock::time_point{};
        if (timed && Clock::now() >= deadline_) late_ = true;
        if (due() && calling_) {
            lock.unlock();
            SQLCancel(statement_); // may take a connection of the driver's own
            lock.lock();
            const auto returned = [&] { return over_ || !calling_; };
            if (changed_.wait_for(lock, cancelInterval, returned)) continue;
            if (Clock::now() < besideAgain) continue;
            besideAgain = Clock::now() + besideInterval;
            lock.unlock();
            connection_->cancelBeside();
            lock.lock();
            changed_.wait_for(lock, cancelInterval, returned);
        } else if (outside_) {
            changed_.wait_for(lock, lookInterval);
        } else if (timed && !late_) {
            changed_.wait_until(lock, deadline_);
        } else {
            changed_.wait(lock);
        }
    }
}

void OdbcStatement::enter() {
    {
        const std::scoped_lock lock(mutex_);
        if (cancelled_) throw adoError(adErrOperationCancelled);
        if (late_) throw adoError(dbCommandTimeout);
        calling_ = true;
        if (!outside_ && deadline_ == Clock::time_point{}) return; // nothing new for the watcher
    }
    changed_.notify_all();
}

void OdbcStatement::leave() {
    bool ending = false;
    {
        const std::scoped_lock lock(mutex_);
        calling_ = false;
        ending = due();
    }
    if (ending) changed_.notify_all();
}

Errore OdbcStatement::error() {
    Errore told = connection_->error(SQL_HANDLE_STMT, statement_);
    const std::scoped_lock lock(mutex_);
    if (cancelled_) return adoError(adErrOperationCancelled);
    return late_ ? adoError(dbCommandTimeout) : told;
}

void OdbcStatement::forgetOutside() {
    {
        const std::scoped_lock lock(mutex_);
        outside_ = nullptr;
    }
    changed_.notify_all();
}

void OdbcStatement::settle() {
    const std::scoped_lock lock(mutex_);
    if (!late_) deadline_ = {};
}

void OdbcStatement::cancel() noexcept {
    {
        const std::scoped_lock lock(mutex_);
        cancelled_ = true;
    }
    changed_.notify_all();
}

int OdbcStatement::resultColumns() {
    SQLSMALLINT count = 0;
    if (!succeeded(SQLNumResultCols(statement_, &count))) throw error();
    return count;
}

void OdbcStatement::prepare(const std::string& sql) {
    call([&] {
        if (connection_->target().narrow) {
            std::string text = sql;
            return SQLPrepare(statement_, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
        }
        return SQLPrepareW(statement_, odbcWide(sql).data(), SQL_NTS);
    });
    columns_ = resultColumns();
}

void OdbcStatement::execute(const std::string& sql) {
    std::string text = sql;
    // PostgreSQL's driver goes on behind the text: no comment may take that in.
    if (connection_->kind() == ServerKind::PostgreSql) text += "\n";
    call([&] {
        if (connection_->target().narrow)
            return SQLExecDirect(statement_, reinterpret_cast<SQLCHAR*>(text.data()),
                                 static_cast<SQLINTEGER>(text.size()));
        std::vector<SQLWCHAR> wide = odbcWide(text);
        return SQLExecDirectW(statement_, wide.data(), static_cast<SQLINTEGER>(wide.size()) - 1);
    });
    affected_ = 0;
    for (;;) {
        columns_ = resultColumns();
        if (columns_ > 0) return;
        SQLLEN affected = 0;
        if (succeeded(SQLRowCount(statement_, &affected)) && affected > 0) affected_ += affected;
        if (call([&] { return SQLMoreResults(statement_); }) == SQL_NO_DATA) return;
    }
}

} // namespace norvel::adodb
