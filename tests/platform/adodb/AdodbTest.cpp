#include "tests/platform/adodb/AdodbTest.h"

#include "platform/runtime/OwnerQueue.h"

#include <sqlite3.h>

#include <chrono>
#include <random>
#include <thread>
#include <utility>

namespace norvel::adodb {

namespace {

std::string caught(const std::function<void()>& call, std::int64_t& number) {
    try {
        call();
    } catch (const Errore& error) {
        number = error.numero();
        return error.descrizione();
    }
    number = 0;
    return {};
}

} // namespace

std::int64_t errorOf(const std::function<void()>& call) {
    std::int64_t number = 0;
    caught(call, number);
    return number;
}

std::string descriptionOf(const std::function<void()>& call) {
    std::int64_t number = 0;
    return caught(call, number);
}

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do // until nobody has one of that name
        path_ = std::filesystem::temp_directory_path() / ("nr_adodb_" + std::to_string(random()));
    while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::database(const std::string& name, const std::string& sql) const {
    sqlite3* db = nullptr;
    sqlite3_open(file(name).c_str(), &db);
    char* message = nullptr;
    sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
    const std::string failure = message ? message : "";
    sqlite3_free(message);
    sqlite3_close(db);
    if (!failure.empty()) throw std::runtime_error(failure);
    return "Provider=SQLite;Data Source=" + file(name);
}

RecordsetRef openOn(const std::string& connection, const std::string& sql, int options) {
    auto recordset = makeClientRecordset();
    recordset->Open(sql, connection, adOpenStatic, adLockReadOnly, options);
    return recordset;
}

RecordsetRef numbers(int rows) {
    return openOn("Provider=SQLite;Data Source=:memory:",
                  "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c LIMIT " +
                      std::to_string(rows) + ") SELECT n FROM c WHERE " + (rows > 0 ? "1" : "0"));
}

std::int64_t current(Recordset& recordset, const Variant& field) {
    return recordset.Fields().Item(field).Value().toI8();
}

// --- the log ---

void EventLog::note(const std::string& line, Recordset& rs, EventStatusEnum* status) {
    lines.push_back(line);
    if (status && line == cancel) *status = adStatusCancel;
    if (onEvent) onEvent(line, rs);
}

namespace {

std::string withError(std::string line, const Errore* error, EventStatusEnum status) {
    if (error) line += " error " + std::to_string(error->numero());
    EXPECT_EQ(status, error ? adStatusErrorsOccurred : adStatusOK) << line;
    return line;
}

std::string withReason(const char* name, EventReasonEnum reason) {
    return std::string(name) + " " + std::to_string(reason);
}

} // namespace

void EventLog::WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset& rs) {
    note(withReason("WillMove", reason), rs, &status);
}
void EventLog::MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                            Recordset& rs) {
    note(withError(withReason("MoveComplete", reason), error, status), rs);
}
void EventLog::WillChangeField(int count, const std::vector<Field*>& fields,
                               EventStatusEnum& status, Recordset& rs) {
    note("WillChangeField " + std::to_string(count) + " " + fields.at(0)->Name(), rs, &status);
}
void EventLog::FieldChangeComplete(int count, const std::vector<Field*>& fields,
                                   const Errore* error, EventStatusEnum status, Recordset& rs) {
    note(withError("FieldChangeComplete " + std::to_string(count) + " " + fields.at(0)->Name(),
                   error, status),
         rs);
}
void EventLog::WillChangeRecord(EventReasonEnum reason, int /*count*/, EventStatusEnum& status,
                                Recordset& rs) {
    note(withReason("WillChangeRecord", reason), rs, &status);
}
void EventLog::RecordChangeComplete(EventReasonEnum reason, int /*count*/, const Errore* error,
                                    EventStatusEnum status, Recordset& rs) {
    note(withError(withReason("RecordChangeComplete", reason), error, status), rs);
}
void EventLog::WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status, Recordset& rs) {
    note(withReason("WillChangeRecordset", reason), rs, &status);
}
void EventLog::RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                       EventStatusEnum status, Recordset& rs) {
    note(withError(withReason("RecordsetChangeComplete", reason), error, status), rs);
}
void EventLog::EndOfRecordset(bool& /*moreData*/, EventStatusEnum& /*status*/, Recordset& rs) {
    note("EndOfRecordset", rs);
}
void EventLog::FetchProgress(RowCount progress, RowCount most, EventStatusEnum /*status*/,
                             Recordset& rs) {
    EXPECT_GE(most, progress);
    note("FetchProgress " + std::to_string(progress), rs);
}
void EventLog::FetchComplete(const Errore* error, EventStatusEnum status, Recordset& rs) {
    note(withError("FetchComplete", error, status), rs);
}
void EventLog::ViewChanged(Recordset& rs) {
    note("ViewChanged", rs);
}

// --- the provider double ---

void Script::go() {
    {
        const std::scoped_lock lock(mutex_);
        released_ = true;
    }
    changed_.notify_all();
}

void Script::wait(const std::atomic<bool>& cancelled) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return released_ || cancelled; });
}

void Script::wake() {
    { const std::scoped_lock lock(mutex_); }
    changed_.notify_all();
}

namespace {

class DoubleSource : public RowSource {
  public:
    explicit DoubleSource(std::shared_ptr<Script> script) : script_(std::move(script)) {
        columns_.push_back(describeColumn("n", adBigInt));
        ++script_->live;
    }
    ~DoubleSource() override { --script_->live; }
    DoubleSource(const DoubleSource&) = delete;
    DoubleSource& operator=(const DoubleSource&) = delete;

    const std::vector<ColumnInfo>& columns() const override { return columns_; }
    void cancel() noexcept override {
        cancelled_ = true;
        script_->wake();
    }
    bool read(Batch& batch) override {
        ++script_->reading;
        const struct Leave {
            Script& script;
            ~Leave() { --script.reading; }
        } leave{*script_};
        do {
            if (!prepareRow()) return false;
            batch.setInteger(0, next_++);
        } while (batch.endRow());
        return true;
    }

  private:
    bool prepareRow() {
        if (next_ == script_->failAt) throw Errore(oleFail, "linea interrotta");
        if (next_ == script_->holdAt) script_->wait(cancelled_);
        if (cancelled_) throw adoError(adErrOperationCancelled);
        if (next_ >= script_->rows) return false;
        if (script_->millisecondsPerRow > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(script_->millisecondsPerRow));
        return true;
    }
    std::shared_ptr<Script> script_;
    std::vector<ColumnInfo> columns_;
    std::int64_t next_ = 0;
    std::atomic<bool> cancelled_{false};
};

class DoubleSession : public Session {
  public:
    explicit DoubleSession(std::shared_ptr<Script> script) : script_(std::move(script)) {}
    StatementResult execute(const StatementRequest& request) override {
        if (request.text == "errore") throw adoError(dbErrorsInCommand);
        return {std::make_unique<DoubleSource>(script_), 0};
    }
    void begin() override {}
    void commit() override {}
    void rollback() override {}
    std::string tableQuery(const std::string& table) const override { return table; }

  private:
    std::shared_ptr<Script> script_;
};

} // namespace

ProviderDouble::ProviderDouble(std::shared_ptr<Script> script) {
    registerProvider("Doppio", [script = std::move(script)](const ConnectionString&) {
        return std::make_shared<DoubleSession>(script);
    });
}

ProviderDouble::~ProviderDouble() {
    registerProvider("Doppio", nullptr);
}

RecordsetRef openDouble(int options) {
    auto recordset = makeClientRecordset();
    recordset->Open("righe", "Provider=Doppio", adOpenStatic, adLockReadOnly, options);
    return recordset;
}

bool deliverUntil(const std::function<bool()>& done, int milliseconds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!done()) {
        if (std::chrono::steady_clock::now() > until) return false;
        if (runOwnerQueue() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace norvel::adodb
