#include "platform/adodb/odbc/OdbcSession.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/access/AccessSession.h"
#include "platform/adodb/odbc/ComparedBooleans.h"
#include "platform/adodb/odbc/OdbcBlock.h"
#include "platform/adodb/odbc/OdbcChange.h"
#include "platform/adodb/odbc/OdbcIdentity.h"
#include "platform/adodb/odbc/OdbcLinks.h"
#include "platform/adodb/odbc/OdbcRowSource.h"
#include "platform/adodb/odbc/RowBound.h"
#include "platform/adodb/odbc/ServerNotation.h"
#include "platform/adodb/odbc/StatementShape.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <utility>

namespace norvel::adodb {

namespace {

// How long an operator's window waits for a change. Longer than a change waits for others' locks.
constexpr auto longestChange = std::chrono::seconds(20);

class OdbcSession : public Session, public std::enable_shared_from_this<OdbcSession> {
  public:
    explicit OdbcSession(const OdbcTarget& target) : links_(std::make_shared<OdbcLinks>(target)) {}
    ~OdbcSession() override;
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    StatementResult execute(const StatementRequest& request) override;
    std::vector<Variant> change(const RowChange& change) override;
    void begin() override;
    void commit() override { end(true); }
    void rollback() override { end(false); }
    std::string tableQuery(const std::string& table) const override;

  private:
    using Use = std::shared_ptr<OdbcUse>;

    Use own(const std::atomic<bool>* cancelled);
    std::vector<Variant> changeNow(const RowChange& change, const std::atomic<bool>& givenUp);
    Errore transactionLost() const {
        return {oleFail, "La connessione con «" + links_->target().place +
                             "» si è interrotta, e con essa la transazione."};
    }
    void end(bool commit);
    StatementResult run(const Use& use, const StatementRequest& request, const std::string& sql);
    StatementResult runNeutral(const Use& use, const StatementRequest& request);
    StatementResult runReading(const StatementRequest& request);

    std::shared_ptr<OdbcLinks> links_;
    std::atomic<bool> transaction_{false};
    std::atomic<bool> particular_{false}; // statements left something on the own connection
};

OdbcSession::~OdbcSession() {
    if (!transaction_) return;
    try {
        end(false);
    } catch (const Errore&) {
        return; // the server ends with the connection what was not committed
    }
}

OdbcSession::Use OdbcSession::own(const std::atomic<bool>* cancelled) {
    // A question in between would change what statements left on the connection.
    Use use = links_->own(cancelled, !transaction_ && !particular_);
    if (!use->replaced()) return use;
    particular_ = false;
    if (transaction_.exchange(false)) throw transactionLost();
    return use;
}

StatementResult OdbcSession::execute(const StatementRequest& request) {
    const StatementKind kind = kindOfStatement(request.text);
    if (kind == StatementKind::Reads && !transaction_ && !particular_) return runReading(request);
    const Use use = own(request.cancelled);
    StatementResult result = runNeutral(use, request);
    if (kind == StatementKind::Own) particular_ = true;
    return result;
}

// A query that was cut is not sent again: whoever ended it on the server would have to do so twice.
StatementResult OdbcSession::runReading(const StatementRequest& request) {
    const Use use = links_->reader();
    try {
        return runNeutral(use, request);
    } catch (const Errore&) {
        use->spoil();
        throw;
    }
}

StatementResult OdbcSession::runNeutral(const Use& use, const StatementRequest& request) {
    const OdbcTarget& target = use->connection()->target();
    if (!target.neutral) return run(use, request, request.text);
    const std::string sql = serverNotation(request.text, target.kind);
    try {
        return run(use, request, sql);
    } catch (const Errore& error) {
        const auto booleans = comparedBooleans(use->connection(), error, request.text);
        if (booleans.empty()) throw;
        return run(use, request, serverNotation(request.text, target.kind, booleans));
    }
}

StatementResult OdbcSession::run(const Use& use, const StatementRequest& request,
                                 const std::string& sql) {
    auto statement = std::make_unique<OdbcStatement>(use->connection(), request.cancelled,
                                                     request.timeoutSeconds);
    const std::int64_t limit = boundRows(use->connection(), request, sql);
    OdbcBlock::prepare(*statement);
    statement->execute(sql);
    statement->forgetOutside();
    if (statement->columns() == 0) return {nullptr, statement->affected()};
    const auto identify = [&](std::vector<OdbcColumn>& columns) {
        return identifyRows(use->connection(), sql, columns);
    };
    return {std::make_unique<OdbcRowSource>(std::move(statement), identify, use, limit), 0};
}

// On a thread of its own, since a driver may wait for ever for a server that does not answer.
std::vector<Variant> OdbcSession::change(const RowChange& change) {
    const auto givenUp = std::make_shared<std::atomic<bool>>(false);
    std::packaged_task<std::vector<Variant>()> task(
        [self = shared_from_this(), change, givenUp] { return self->changeNow(change, *givenUp); });
    auto result = task.get_future();
    std::thread thread(std::move(task));
    if (result.wait_for(longestChange) == std::future_status::ready) {
        thread.join();
        return result.get();
    }
    *givenUp = true;
    thread.detach();
    links_->giveUpOwn();
    throw Errore(oleFail, "Il database «" + links_->target().place +
                              "» non risponde: la modifica potrebbe non essere registrata.");
}

// A connection that was lost before the change was sent is replaced, and the change sent once more.
std::vector<Variant> OdbcSession::changeNow(const RowChange& change,
                                            const std::atomic<bool>& givenUp) {
    bool sent = false;
    const auto make = [&] {
        const Use use = own(&givenUp);
        try {
            return changeRow(use->connection(), change, transaction_, givenUp, sent);
        } catch (const Errore&) {
            if (sent || transaction_ || !use->connection()->broken()) throw;
            return std::vector<Variant>();
        }
    };
    auto after = make();
    return !after.empty() || sent ? after : make();
}

void OdbcSession::begin() {
    own(nullptr)->connection()->beginTransaction();
    transaction_ = true;
}

void OdbcSession::end(bool commit) {
    const Use use = own(nullptr);
    try {
        use->connection()->endTransaction(commit);
    } catch (const Errore&) {
        if (!use->connection()->broken()) throw;
        transaction_ = false; // told now, not once more by the next statement
        if (!commit) throw transactionLost();
        throw Errore(oleFail, "La connessione con «" + links_->target().place +
                                  "» si è interrotta: la transazione potrebbe non essere "
                                  "registrata.");
    }
    transaction_ = false;
}

// A name that a host has quoted or bracketed itself stays, brackets apart; of others the parts that
// are no plain words are quoted.
std::string OdbcSession::tableQuery(const std::string& table) const {
    const std::string name = trimText(table);
    const std::string query = "SELECT * FROM ";
    if (name.find_first_of("[\"`") != std::string::npos)
        return query + serverNames(name, links_->kind());
    std::string quoted;
    for (const std::string& part : splitText(name, "."))
        quoted.append(quoted.empty() ? "" : ".")
            .append(isPlainName(part) ? part : quotedName(links_->kind(), part));
    return query + quoted;
}

// The file that an Access target names: of a data source, the one in its definition.
std::string accessFile(const OdbcTarget& target) {
    if (target.pairs.front().first != "DSN") return target.place;
    const std::string file = odbcSourceSetting(target.place, "Database");
    return file.empty() ? odbcSourceSetting(target.place, "DBQ") : file;
}

} // namespace

std::shared_ptr<Session> openOdbcSession(const ConnectionString& connection) {
    auto target = odbcTarget(connection, odbcDrivers(), odbcSources());
    if (!target) return nullptr;
    if (target->kind == ServerKind::Access) return openAccessSession(accessFile(*target));
    return std::make_shared<OdbcSession>(*target);
}

} // namespace norvel::adodb
