#include "platform/adodb/sqlite/SqliteHandle.h"

#include "platform/adodb/sqlite/AccessFunctions.h"
#include "platform/adodb/sqlite/SqliteErrors.h"
#include "platform/adodb/store/RawConversion.h"
#include "platform/runtime/HostPath.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto longestBusyWait = 1s; // for another program's lock
constexpr auto busyPause = 5ms;
constexpr int operationsBetweenLooks = 1000; // of SQLite's machine: a fraction of a millisecond

std::string systemPath(const std::string& path) {
    const auto utf8 = percorsoSistema(path).u8string();
    return {reinterpret_cast<const char*>(utf8.c_str()), utf8.size()};
}

void checkFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(percorsoSistema(path), error);
    if (!std::filesystem::exists(status))
        throw Errore(oleFail, "Il database «" + path + "» non esiste.");
    if (std::filesystem::is_directory(status))
        throw Errore(oleFail, "«" + path + "» è una cartella, non un database.");
}

int bindValue(sqlite3_stmt* statement, int parameter, const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
        return sqlite3_bind_null(statement, parameter);
    case VarType::Boolean:
        return sqlite3_bind_int(statement, parameter, value.toBoolean() ? 1 : 0);
    case VarType::R4:
    case VarType::R8:
        return sqlite3_bind_double(statement, parameter, value.toDouble());
    case VarType::Bytes:
        return sqlite3_bind_blob64(statement, parameter, value.bytes().data(), value.bytes().size(),
                                   SQLITE_TRANSIENT);
    default:
        break;
    }
    if (isWholeNumber(value.type())) return sqlite3_bind_int64(statement, parameter, value.toI8());
    const std::string text = value.isText() ? value.text() : value.toDecimal().toText();
    return sqlite3_bind_text64(statement, parameter, text.data(), text.size(), SQLITE_TRANSIENT,
                               SQLITE_UTF8);
}

} // namespace

void FinalizeStatement::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

bool Stop::asked() const {
    return cancelled.load(std::memory_order_relaxed) ||
           (outside && outside->load(std::memory_order_relaxed));
}

bool Stop::due() const {
    if (asked()) return true;
    return deadline != std::chrono::steady_clock::time_point{} &&
           std::chrono::steady_clock::now() >= deadline;
}

SqliteHandle::SqliteHandle(std::string path, bool readOnly)
    : path_(std::move(path)), readOnly_(readOnly) {}

SqliteHandle::~SqliteHandle() {
    sqlite3_close_v2(db_);
}

std::shared_ptr<SqliteHandle> SqliteHandle::open(const std::string& path, bool readOnly) {
    const bool inMemory = path == ":memory:";
    if (!inMemory) checkFile(path);
    std::shared_ptr<SqliteHandle> handle(new SqliteHandle(path, readOnly));
    const int access = inMemory   ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                       : readOnly ? SQLITE_OPEN_READONLY
                                  : SQLITE_OPEN_READWRITE;
    const int result = sqlite3_open_v2(inMemory ? path.c_str() : systemPath(path).c_str(),
                                       &handle->db_, access | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result != SQLITE_OK) throw handle->error(result);
    sqlite3_extended_result_codes(handle->db_, 1);
    sqlite3_busy_handler(handle->db_, onBusy, handle.get());
    sqlite3_progress_handler(handle->db_, operationsBetweenLooks, onProgress, handle.get());
    addAccessFunctions(handle->db_);
    const Turn turn(*handle, nullptr);
    handle->run("PRAGMA mmap_size=0");                 // mapped pages would count as resident
    handle->run("SELECT count(*) FROM sqlite_schema"); // reads the file: says what is wrong with it
    return handle;
}

StatementHandle SqliteHandle::compile(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int result =
        sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()) + 1, &statement, &rest);
    StatementHandle handle(statement);
    if (result != SQLITE_OK) throw error(result);
    if (!handle) throw adoError(dbNoCommand);
    sqlite3_stmt* second = nullptr;
    const bool clean = sqlite3_prepare_v2(db_, rest, -1, &second, nullptr) == SQLITE_OK && !second;
    sqlite3_finalize(second);
    if (!clean) throw adoError(dbErrorsInCommand, "Il testo contiene più di un'istruzione.");
    return handle;
}

StatementHandle SqliteHandle::prepare(const std::string& sql) {
    StatementHandle handle = compile(sql);
    if (sqlite3_bind_parameter_count(handle.get()) > 0) throw adoError(dbParamNotOptional);
    return handle;
}

StatementHandle SqliteHandle::prepareBound(const std::string& sql,
                                           const std::vector<Variant>& values) {
    StatementHandle handle = compile(sql);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int result = bindValue(handle.get(), static_cast<int>(i) + 1, values[i]);
        if (result != SQLITE_OK) throw error(result);
    }
    return handle;
}

void SqliteHandle::run(const char* sql) {
    const int result = sqlite3_exec(db_, sql, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) throw error(result);
}

Errore SqliteHandle::error(int result) const {
    if ((result & 0xFF) == SQLITE_INTERRUPT && stop_)
        return adoError(stop_->asked() ? adErrOperationCancelled : dbCommandTimeout);
    return sqliteError(db_, result, path_);
}

bool SqliteHandle::canBeDoubled() {
    const char* file = sqlite3_db_filename(db_, "main");
    if (!file || !*file || sqlite3_get_autocommit(db_) == 0) return false;
    const auto alone = prepare("SELECT (SELECT count(*) FROM sqlite_temp_schema) = 0 AND "
                               "(SELECT count(*) FROM pragma_database_list WHERE seq > 1) = 0");
    return sqlite3_step(alone.get()) == SQLITE_ROW && sqlite3_column_int(alone.get(), 0) != 0;
}

bool SqliteHandle::stopDue() const {
    return stop_ && stop_->due();
}

int SqliteHandle::onProgress(void* self) {
    return static_cast<const SqliteHandle*>(self)->stopDue() ? 1 : 0;
}

int SqliteHandle::onBusy(void* self, int attempts) {
    if (attempts * busyPause >= longestBusyWait) return 0;
    if (static_cast<const SqliteHandle*>(self)->stopDue()) return 0;
    std::this_thread::sleep_for(busyPause);
    return 1;
}

SqliteHandle::Turn::Turn(SqliteHandle& handle, const Stop* stop) : handle_(handle) {
    std::unique_lock lock(handle_.mutex_);
    const std::uint64_t own = handle_.nextTurn_++;
    handle_.turnEnded_.wait(lock, [&] { return handle_.currentTurn_ == own; });
    handle_.stop_ = stop;
}

SqliteHandle::Turn::~Turn() {
    {
        const std::scoped_lock lock(handle_.mutex_);
        handle_.stop_ = nullptr;
        ++handle_.currentTurn_;
    }
    handle_.turnEnded_.notify_all();
}

} // namespace norvel::adodb
