#include "platform/adodb/access/AccessSession.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/access/AccessCopy.h"
#include "platform/adodb/odbc/NeutralTokens.h"
#include "platform/adodb/odbc/ServerNotation.h"
#include "platform/adodb/odbc/StatementShape.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <numeric>
#include <system_error>
#include <utility>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 20ms;

// The rows of a copy. Each can be told apart, so that a change comes to the session and hears there
// why it is refused.
class AccessRows : public RowSource {
  public:
    explicit AccessRows(std::unique_ptr<RowSource> rows) : rows_(std::move(rows)) {}
    const std::vector<ColumnInfo>& columns() const override { return rows_->columns(); }
    RowIdentity identity() override {
        RowIdentity identity = rows_->identity();
        identity.key.resize(columns().size());
        std::iota(identity.key.begin(), identity.key.end(), 0);
        return identity;
    }
    bool read(Batch& batch) override { return rows_->read(batch); }
    void cancel() noexcept override { rows_->cancel(); }

  private:
    std::unique_ptr<RowSource> rows_;
};

class AccessSession : public Session {
  public:
    explicit AccessSession(AccessFile file) : file_(std::move(file)) { file_.tables({}); }

    StatementResult execute(const StatementRequest& request) override;
    std::vector<Variant> change(const RowChange& /*change*/) override { throw readOnly(); }
    // Of what is only read there is nothing to commit.
    void begin() override {}
    void commit() override {}
    void rollback() override {}
    std::string tableQuery(const std::string& table) const override;

  private:
    Errore readOnly() const {
        return adoError(adErrFeatureNotAvailable,
                        "I file di Access qui si possono solo leggere: «" + file_.name() +
                            "» non viene modificato.");
    }
    std::shared_ptr<AccessCopy> copyFor(const std::string& statement, const Stop& stop);
    void settle(std::shared_ptr<AccessCopy> copy);

    AccessFile file_;
    std::mutex mutex_; // guards what follows
    std::condition_variable made_;
    bool making_ = false;
    std::shared_ptr<AccessCopy> copy_;
};

bool isQuery(const std::string& statement) {
    const auto words = statementTokens(statement);
    const auto first =
        std::ranges::find_if(words, [](std::string_view word) { return word != "("; });
    if (first == words.end()) return true; // for the database to complain of
    return std::ranges::any_of(std::initializer_list<std::string_view>{"select", "with", "values"},
                               [&](std::string_view word) { return equalsText(*first, word); });
}

// Words of Jet's that the embedded database has, too, with another meaning: refused rather than
// misread.
void refuseJetsOwn(const std::string& statement) {
    const auto refuse = [](const std::string& word) {
        throw adoError(dbErrorsInCommand, "«" + word + "» di Access qui non è disponibile.");
    };
    const auto tokens = neutralTokens(statement);
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind == NeutralToken::Kind::Sign && tokens[i].text == "&") refuse("&");
        if (!equalsText(tokens[i].text, "format")) continue;
        std::size_t next = i + 1;
        while (next < tokens.size() && tokens[next].kind == NeutralToken::Kind::Blank)
            ++next;
        if (next < tokens.size() && tokens[next].text == "(") refuse("Format");
    }
}

StatementResult AccessSession::execute(const StatementRequest& request) {
    if (!isQuery(request.text)) throw readOnly();
    refuseJetsOwn(request.text);
    Stop stop;
    stop.outside = request.cancelled;
    if (request.timeoutSeconds > 0)
        stop.deadline =
            std::chrono::steady_clock::now() + std::chrono::seconds(request.timeoutSeconds);
    const auto copy = copyFor(request.text, stop);
    StatementRequest asked = request;
    asked.text = serverNotation(request.text, ServerKind::Access, copy->booleans());
    StatementResult result = copy->session().execute(asked);
    if (result.rows) result.rows = std::make_unique<AccessRows>(std::move(result.rows));
    return result;
}

// A statement that another thread's copy may serve waits for it.
std::shared_ptr<AccessCopy> AccessSession::copyFor(const std::string& statement, const Stop& stop) {
    std::unique_lock lock(mutex_);
    while (making_) {
        if (stop.due()) throw adoError(stop.asked() ? adErrOperationCancelled : dbCommandTimeout);
        made_.wait_for(lock, lookInterval);
    }
    if (copy_ && copy_->serves(file_, statement)) return copy_;
    making_ = true;
    lock.unlock();
    try {
        auto copy = std::make_shared<AccessCopy>(file_, statement, stop);
        settle(copy);
        return copy;
    } catch (...) {
        settle(nullptr);
        throw;
    }
}

void AccessSession::settle(std::shared_ptr<AccessCopy> copy) {
    {
        const std::scoped_lock lock(mutex_);
        making_ = false;
        if (copy) copy_ = std::move(copy);
    }
    made_.notify_all();
}

// A name that a host has quoted or bracketed itself stays; others are one name, dots and all.
std::string AccessSession::tableQuery(const std::string& table) const {
    const std::string name = trimText(table);
    const bool quoted = name.find_first_of("[\"`") != std::string::npos;
    return "SELECT * FROM " + (quoted ? name : "[" + name + "]");
}

} // namespace

std::shared_ptr<Session> openAccessSession(const std::string& place) {
    const std::filesystem::path path = percorsoSistema(place);
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw Errore(oleFail, "«" + place + "» è una cartella, non un database.");
    return std::make_shared<AccessSession>(
        AccessFile(std::filesystem::absolute(path, error).string(), place));
}

} // namespace norvel::adodb
