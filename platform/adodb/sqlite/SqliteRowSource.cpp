#include "platform/adodb/sqlite/SqliteRowSource.h"

#include "platform/adodb/sqlite/SqliteIdentity.h"
#include "platform/adodb/sqlite/SqliteTypes.h"

#include <sqlite3.h>

#include <utility>

namespace norvel::adodb {

SqliteRowSource::SqliteRowSource(std::shared_ptr<SqliteHandle> handle, StatementHandle statement,
                                 int timeoutSeconds)
    : handle_(std::move(handle)), statement_(std::move(statement)) {
    if (timeoutSeconds > 0)
        stop_.deadline = std::chrono::steady_clock::now() + std::chrono::seconds(timeoutSeconds);
    sqlite3_stmt* s = statement_.get();
    const int count = sqlite3_column_count(s);
    columns_.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const char* name = sqlite3_column_name(s, i);
        const char* declared = sqlite3_column_decltype(s, i);
        columns_.push_back(columnOfDeclaredType(name ? name : "", declared ? declared : ""));
    }
    identity_ = identifyRows(*handle_, s, columns_);
}

SqliteRowSource::~SqliteRowSource() {
    const SqliteHandle::Turn turn(*handle_, nullptr);
    statement_.reset();
}

void SqliteRowSource::cancel() noexcept {
    stop_.cancelled.store(true, std::memory_order_relaxed);
}

bool SqliteRowSource::step() {
    const int result = sqlite3_step(statement_.get());
    if (result == SQLITE_ROW) {
        stop_.deadline = {};
        return true;
    }
    if (result != SQLITE_DONE) throw handle_->error(result);
    return false;
}

bool SqliteRowSource::read(Batch& batch) {
    const SqliteHandle::Turn turn(*handle_, &stop_);
    if (stop_.cancelled.load(std::memory_order_relaxed)) throw adoError(adErrOperationCancelled);
    do {
        if (!std::exchange(pending_, false) && !step()) return false;
        if (!store(batch)) {
            pending_ = true;
            return true;
        }
    } while (batch.endRow());
    return true;
}

// sqlite3_column_value hands out the value without the checks that every sqlite3_column_ call
// makes; the Turn is what makes reading it safe.
bool SqliteRowSource::store(Batch& batch) {
    sqlite3_stmt* s = statement_.get();
    const int count = batch.columns();
    for (int i = 0; i < count; ++i) {
        sqlite3_value* value = sqlite3_column_value(s, i);
        switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            batch.setInteger(i, sqlite3_value_int64(value));
            break;
        case SQLITE_FLOAT:
            batch.setReal(i, sqlite3_value_double(value));
            break;
        case SQLITE_TEXT: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            if (!text) throw handle_->error(SQLITE_NOMEM);
            if (!batch.setText(i, text, static_cast<std::size_t>(sqlite3_value_bytes(value))))
                return false;
            break;
        }
        case SQLITE_BLOB:
            if (!batch.setBytes(i, sqlite3_value_blob(value),
                                static_cast<std::size_t>(sqlite3_value_bytes(value))))
                return false;
            break;
        default:
            batch.setNull(i);
        }
    }
    return true;
}

} // namespace norvel::adodb
