#include "platform/adodb/sqlite/SqliteSession.h"

#include "platform/adodb/sqlite/AccessNotation.h"
#include "platform/adodb/sqlite/SqliteChange.h"
#include "platform/adodb/sqlite/SqliteHandle.h"
#include "platform/adodb/sqlite/SqliteIdentity.h"
#include "platform/adodb/sqlite/SqliteRowSource.h"
#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <chrono>
#include <utility>

namespace norvel::adodb {

namespace {

class SqliteSession : public Session {
  public:
    explicit SqliteSession(std::shared_ptr<SqliteHandle> handle) : handle_(std::move(handle)) {}

    StatementResult execute(const StatementRequest& request) override;
    std::vector<Variant> change(const RowChange& change) override {
        return changeRow(handle_, change);
    }
    void begin() override { run("BEGIN"); }
    void commit() override { run("COMMIT"); }
    void rollback() override { run("ROLLBACK"); }
    std::string tableQuery(const std::string& table) const override;

  private:
    void run(const char* sql) {
        const SqliteHandle::Turn turn(*handle_, nullptr);
        handle_->run(sql);
    }
    RowCount runToEnd(sqlite3_stmt* statement);
    std::unique_ptr<RowSource> readerFor(const std::string& sql, int timeoutSeconds) const;

    std::shared_ptr<SqliteHandle> handle_;
};

StatementResult SqliteSession::execute(const StatementRequest& request) {
    const std::string sql = translateAccessNotation(request.text);
    Stop stop;
    stop.outside = request.cancelled;
    if (request.timeoutSeconds > 0)
        stop.deadline =
            std::chrono::steady_clock::now() + std::chrono::seconds(request.timeoutSeconds);
    const SqliteHandle::Turn turn(*handle_, &stop);
    StatementHandle statement = handle_->prepare(sql);
    if (sqlite3_column_count(statement.get()) == 0) return {nullptr, runToEnd(statement.get())};
    const bool reads = sqlite3_stmt_readonly(statement.get()) != 0;
    if (request.background && reads && handle_->canBeDoubled())
        if (auto reader = readerFor(sql, request.timeoutSeconds)) return {std::move(reader), 0};
    return {
        std::make_unique<SqliteRowSource>(handle_, std::move(statement), request.timeoutSeconds),
        0};
}

RowCount SqliteSession::runToEnd(sqlite3_stmt* statement) {
    const int before = sqlite3_total_changes(handle_->get());
    int result = sqlite3_step(statement);
    while (result == SQLITE_ROW)
        result = sqlite3_step(statement);
    if (result != SQLITE_DONE) throw handle_->error(result);
    return sqlite3_total_changes(handle_->get()) - before;
}

// Null where a second handle cannot have the file (the session keeps it locked, say): the session's
// own then serves.
std::unique_ptr<RowSource> SqliteSession::readerFor(const std::string& sql,
                                                    int timeoutSeconds) const {
    try {
        auto reader = SqliteHandle::open(handle_->path(), true);
        const SqliteHandle::Turn turn(*reader, nullptr);
        StatementHandle statement = reader->prepare(sql);
        return std::make_unique<SqliteRowSource>(reader, std::move(statement), timeoutSeconds);
    } catch (const Errore&) {
        return nullptr;
    }
}

// A name that a host has quoted or bracketed itself stays; others are quoted, part by part.
std::string SqliteSession::tableQuery(const std::string& table) const {
    const std::string name = trimText(table);
    const bool quoted = name.find_first_of("[\"`") != std::string::npos;
    std::string sql = "SELECT * FROM ";
    if (quoted) return sql + name;
    const auto parts = splitText(name, ".");
    for (std::size_t i = 0; i < parts.size(); ++i)
        sql.append(i ? "." : "").append(quotedName(parts[i]));
    return sql;
}

} // namespace

std::shared_ptr<Session> openSqliteSession(const ConnectionString& connection) {
    const auto path = connection.value("Data Source");
    if (!path)
        throw Errore(oleFail, "La stringa di connessione non dice quale database aprire: manca "
                              "«Data Source=percorso del file».");
    const auto mode = connection.value("Mode");
    const bool readOnly = mode && equalsText(*mode, "Read");
    return std::make_shared<SqliteSession>(SqliteHandle::open(*path, readOnly));
}

} // namespace norvel::adodb
