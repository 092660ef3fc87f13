// Opening, requerying and closing a ClientRecordset.
#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"
#include "platform/adodb/client/CommandKind.h"
#include "platform/runtime/OwnerQueue.h"

#include <algorithm>
#include <atomic>
#include <limits>

namespace norvel::adodb {

namespace {

constexpr RowCount everyRow = std::numeric_limits<RowCount>::max();
constexpr int commandBits =
    adCmdText | adCmdTable | adCmdStoredProc | adCmdUnknown | adCmdFile | adCmdTableDirect;
constexpr int fetchBits = adAsyncExecute | adAsyncFetch | adAsyncFetchNonBlocking;
constexpr int longestCancel = 1000; // milliseconds that Cancel waits for the fetch to stop

} // namespace

ClientRecordset::Options ClientRecordset::readOptions(int options) const {
    Options read;
    if (options == adOptionUnspecified) options = unspecifiedOptions_;
    if (options == adOptionUnspecified) return read;
    if ((options & ~(commandBits | fetchBits)) != 0) throw adoError(adErrInvalidArgument);
    const int command = options & commandBits;
    if ((command & (command - 1)) != 0) throw adoError(adErrInvalidArgument);
    if (command != 0) read.command = static_cast<CommandTypeEnum>(command);
    read.background = (options & fetchBits) != 0;
    read.waits = (options & adAsyncFetchNonBlocking) == 0;
    read.executes = (options & adAsyncExecute) != 0;
    return read;
}

void ClientRecordset::takeLockType(LockTypeEnum type) {
    if (type == adLockUnspecified) return;
    if (type < adLockReadOnly || type > adLockBatchOptimistic) throw adoError(adErrInvalidArgument);
    explicitReadOnly_ = type == adLockReadOnly;
    lockType_ = type == adLockPessimistic ? adLockOptimistic : type; // a client cursor has none
}

void ClientRecordset::takeSource(const Variant& source) {
    if (source.isEmpty()) return;
    if (source.isText()) {
        source_ = source.text();
        sourceIsCommand_ = false;
        return;
    }
    auto command =
        source.isObject() ? std::dynamic_pointer_cast<CommandObject>(source.object()) : nullptr;
    if (!command) throw adoError(adErrInvalidArgument);
    command_ = std::move(command);
    source_ = command_->CommandText();
    connection_ = command_->connection();
    ownsConnection_ = false;
    sourceIsCommand_ = true;
}

void ClientRecordset::takeConnection(const Variant& connection) {
    if (connection.isEmpty()) return;
    if (sourceIsCommand_) throw adoError(adErrInvalidArgument);
    ownsConnection_ = connection.isText();
    if (ownsConnection_) {
        connection_ = makeConnection();
        connection_->SetConnectionString(connection.text());
    } else {
        connection_ = connectionOf(connection);
    }
}

void ClientRecordset::Open(const Variant& source, const Variant& connection,
                           CursorTypeEnum cursorType, LockTypeEnum lockType, int options) {
    refuseInEvent();
    requireClosed();
    if (cursorType < adOpenUnspecified || cursorType > adOpenStatic)
        throw adoError(adErrInvalidArgument);
    const Options read = readOptions(options);
    const auto self = shared_from_this();
    openError_.reset();
    takeLockType(lockType);
    takeSource(source);
    takeConnection(connection);
    if (source_.empty() && !sourceIsCommand_) {
        openWithoutSource();
        return;
    }
    try {
        openOn(read);
    } catch (...) {
        releaseOwnConnection();
        throw;
    }
}

void ClientRecordset::openOn(const Options& options) {
    const auto session = openedSession();
    makeCommand(*session, options.command);
    if (options.executes) {
        await(session, options, true);
        std::dynamic_pointer_cast<ConnectionObject>(connection_)->attach(shared_from_this());
        return;
    }
    const auto rows = run(*session, options);
    if (!rows) return;
    if (!options.background) {
        rows->start({});
        rows->reach(everyRow);
    }
    present(rows, options);
    std::dynamic_pointer_cast<ConnectionObject>(connection_)->attach(shared_from_this());
}

// Of an opening: asks, shows, tells.
void ClientRecordset::present(const std::shared_ptr<RowSet>& rows, const Options& options) {
    if (!sinks_.ask([&](auto& sink, auto& status) { sink.WillMove(adRsnMove, status, *this); })) {
        const Errore cancelled = adoError(adErrOperationCancelled);
        tellMoved(adRsnMove, &cancelled);
        throw cancelled;
    }
    show(rows);
    if (options.background) rows->start(fetchListener(rows->generation()));
    sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
    tellMoved(adRsnMove, nullptr);
}

// Nothing to read from: the columns appended, no rows.
void ClientRecordset::openWithoutSource() {
    if (fields_.Count() == 0) throw adoError(connection_ ? dbNoCommand : adErrInvalidConnection);
    auto store = std::make_shared<ColumnStore>(fields_.infos());
    appender_ = true;
    command_.reset();
    show(std::make_shared<RowSet>(std::move(store)));
    sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
    tellMoved(adRsnMove, nullptr);
}

// The session of the connection; one of the recordset's own is opened on first use.
std::shared_ptr<Session> ClientRecordset::openedSession() {
    const auto connection = std::dynamic_pointer_cast<ConnectionObject>(connection_);
    if (!connection) throw adoError(adErrInvalidConnection);
    if (ownsConnection_ && connection->State() == adStateClosed) connection->Open({});
    if (!connection->session()) throw adoError(adErrInvalidConnection);
    return connection->session();
}

// A closed connection with the same string takes the place of the recordset's own, which closes
// unless a clone still holds it.
void ClientRecordset::releaseOwnConnection() {
    if (!ownsConnection_ || !connection_) return;
    auto fresh = makeConnection();
    fresh->SetConnectionString(connection_->ConnectionString());
    connection_ = std::move(fresh);
}

void ClientRecordset::makeCommand(const Session& session, CommandTypeEnum type) {
    if (sourceIsCommand_) {
        const CommandTypeEnum own = command_->CommandType();
        statement_ =
            statementFor(session, command_->CommandText(), own == adCmdUnknown ? type : own);
        return;
    }
    statement_ = statementFor(session, source_, type);
    command_ = std::make_shared<CommandObject>();
    command_->SetCommandText(statement_);
    command_->SetCommandType(adCmdText);
    command_->attach(connection_);
}

// Runs the statement and reads the first block; null where the statement has no rows.
std::shared_ptr<RowSet> ClientRecordset::run(Session& session, const Options& options) {
    StatementResult result = session.execute(requestFor(options));
    affected_ = result.affected;
    if (!result.rows) return nullptr;
    auto fetch = std::make_unique<Fetch>(std::move(result.rows));
    fetch->readFirstBlock();
    return std::make_shared<RowSet>(std::move(fetch), options.waits);
}

void ClientRecordset::show(std::shared_ptr<RowSet> rows) {
    rows_ = std::move(rows);
    rows_->share(weak_from_this());
    fields_.bind(rows_->store().columns());
    newRow_.reset();
    edits_.clear();
    returning_.reset();
    showThroughFilter();
    completeTold_ = true;
    toStart();
}

void ClientRecordset::toStart() {
    const bool none = view_->rows() == 0;
    setCursor(0, none, none);
}

// Called on the fetch's threads; at most one delivery waits in the owner's queue at a time. The
// exchange before each look makes sure that the look after the fetch's end is not left out.
Fetch::Listener ClientRecordset::fetchListener(std::uint32_t generation) {
    completeTold_ = false;
    auto waiting = std::make_shared<std::atomic<bool>>(false);
    return [weak = weak_from_this(), generation, waiting] {
        if (waiting->exchange(true)) return;
        postToOwner([weak, generation, waiting] {
            waiting->exchange(false);
            if (const auto recordset = weak.lock()) recordset->deliverFetchEvents(generation);
        });
    };
}

void ClientRecordset::deliverFetchEvents(std::uint32_t generation) {
    const auto current = [&] {
        return rows_ && rows_->generation() == generation && !completeTold_;
    };
    if (!current()) return;
    if (cursor_.bof && cursor_.eof && shownRows() > 0) { // the first row that the filter shows
        toStart();
        tellMoved(adRsnMove, nullptr);
        if (!current()) return;
    }
    if (returning_ && returnToRow()) {
        tellMoved(adRsnMove, nullptr);
        if (!current()) return;
    }
    const bool fetching = rows_->fetching();
    const RowCount rows = rows_->rows();
    const RowCount most = fetching ? std::max(rows, expectedRows_) : rows;
    sinks_.tellFreely([&](auto& sink) { sink.FetchProgress(rows, most, adStatusOK, *this); });
    if (fetching || !current()) return;
    completeTold_ = true;
    expectedRows_ = rows;
    const auto error = rows_->error();
    sinks_.tellFreely([&](auto& sink) {
        sink.FetchComplete(error ? &*error : nullptr, error ? adStatusErrorsOccurred : adStatusOK,
                           *this);
    });
}

void ClientRecordset::Close() {
    refuseInEvent();
    if (awaited_ && awaited_->opening) {
        clear();
        return;
    }
    requireOpen();
    refusePending();
    const auto self = shared_from_this();
    if (!sinks_.ask([&](auto& sink, auto& status) {
            sink.WillChangeRecordset(adRsnClose, status, *this);
        })) {
        const Errore cancelled = adoError(adErrOperationCancelled);
        sinks_.tell([&](auto& sink) {
            sink.RecordsetChangeComplete(adRsnClose, &cancelled, adStatusErrorsOccurred, *this);
        });
        throw cancelled;
    }
    closeNow();
}

void ClientRecordset::closeNow() {
    const bool wasOpen = rows_ != nullptr;
    if (!wasOpen && !awaited_) return;
    const auto self = shared_from_this();
    clear();
    if (!wasOpen) return;
    sinks_.tell(
        [&](auto& sink) { sink.RecordsetChangeComplete(adRsnClose, nullptr, adStatusOK, *this); });
    sinks_.tell([&](auto& sink) { sink.ViewChanged(*this); });
}

// Closed, without a word.
void ClientRecordset::clear() {
    awaited_.reset(); // ends what runs
    view_.reset();
    rows_.reset(); // the last holder ends a running fetch
    filter_ = std::int32_t{adFilterNone};
    sort_.clear();
    order_.reset();
    appender_ = false;
    newRow_.reset();
    edits_.clear();
    cursor_ = {};
    fields_.unbind();
    completeTold_ = true;
    statement_.clear();
    if (!sourceIsCommand_) command_.reset();
    releaseOwnConnection();
}

void ClientRecordset::Cancel() {
    if (awaited_) {
        awaited_->execution->cancel();
        const bool ended = awaited_->execution->wait(std::chrono::milliseconds(longestCancel));
        awaitedEnded(!ended); // a server that does not answer is not waited for
        return;
    }
    requireOpen();
    rows_->cancel();
    rows_->waitForEnd(longestCancel);
}

RecordsetRef ClientRecordset::Clone(LockTypeEnum lockType) {
    requireOpen();
    if (lockType != adLockUnspecified && lockType != adLockReadOnly)
        throw adoError(adErrInvalidArgument);
    auto clone = std::make_shared<ClientRecordset>();
    clone->source_ = source_;
    clone->sourceIsCommand_ = sourceIsCommand_;
    clone->statement_ = statement_;
    clone->command_ = command_;
    clone->connection_ = connection_;
    clone->lockType_ = lockType == adLockReadOnly ? adLockReadOnly : lockType_;
    clone->explicitReadOnly_ = explicitReadOnly_ || lockType == adLockReadOnly;
    clone->appender_ = appender_;
    clone->show(rows_);
    if (const auto connection = std::dynamic_pointer_cast<ConnectionObject>(connection_))
        connection->attach(clone);
    return clone;
}

} // namespace norvel::adodb
