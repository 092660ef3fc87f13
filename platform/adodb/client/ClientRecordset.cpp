#include "platform/adodb/client/ClientRecordset.h"

#include "platform/adodb/Errors.h"

#include <chrono>
#include <utility>

namespace norvel::adodb {

RecordsetEvents::~RecordsetEvents() = default;

RecordsetRef makeClientRecordset() {
    return std::make_shared<ClientRecordset>();
}

RecordsetRef makeStreamingRecordset() {
    auto recordset = std::make_shared<ClientRecordset>();
    recordset->setUnspecifiedOptions(adAsyncExecute | adAsyncFetchNonBlocking);
    return recordset;
}

std::string connectionText(const Recordset& recordset) {
    const Variant value = recordset.ActiveConnection();
    if (value.isText()) return value.text();
    if (!value.isObject()) return {};
    const auto connection = std::dynamic_pointer_cast<Connection>(value.object());
    return connection ? connection->ConnectionString() : std::string();
}

ClientRecordset::ClientRecordset() : fields_(*this) {}

ClientRecordset::~ClientRecordset() = default;

// --- checks ---

void ClientRecordset::requireOpen() const {
    if (!rows_) throw adoError(awaited_ ? adErrStillExecuting : adErrObjectClosed);
}

void ClientRecordset::requireClosed() const {
    if (rows_ || awaited_) throw adoError(adErrObjectOpen);
}

void ClientRecordset::refuseInEvent() const {
    if (sinks_.telling()) throw adoError(adErrNotReentrant);
}

void ClientRecordset::requireRow() const {
    requireOpen();
    const Cursor& at = cursor();
    if (!at.onRow() || at.on == Cursor::On::DeletedRow) throw adoError(adErrNoCurrentRecord);
}

// --- properties ---

int ClientRecordset::State() const {
    if (!rows_) return awaited_ ? adStateExecuting : adStateClosed;
    int state = adStateOpen;
    if (awaited_) return state | adStateExecuting;
    if (rows_->fetching()) return state | adStateFetching;
    if (rows_->error()) state |= adStateFetchBroken;
    return state;
}

std::optional<Errore> ClientRecordset::FetchError() const {
    return rows_ ? rows_->error() : openError_;
}

bool ClientRecordset::WaitFetch(int milliseconds) {
    const auto self = shared_from_this(); // a sink may drop the last reference of the host
    if (awaited_) {
        if (!awaited_->execution->wait(std::chrono::milliseconds(milliseconds))) return false;
        awaitedEnded();
    }
    return !rows_ || rows_->waitForEnd(milliseconds);
}

Variant ClientRecordset::ActiveConnection() const {
    return ObjectRef(connection_);
}

// On an open recordset Nothing (or Null) takes it off its connection, and an open Connection puts
// it on another, where Requery then goes.
void ClientRecordset::SetActiveConnection(const Variant& connectionOrText) {
    refuseInEvent();
    if (sourceIsCommand_) throw adoError(adErrBoundToCommand);
    if (connectionOrText.isEmpty()) throw adoError(adErrInvalidArgument);
    if (!rows_) {
        takeConnection(connectionOrText);
        return;
    }
    ConnectionRef next;
    if (connectionOrText.isText()) {
        next = makeConnection();
        next->Open(connectionOrText.text());
    } else {
        next = connectionOf(connectionOrText);
        if (next && next->State() == adStateClosed) throw adoError(adErrInvalidConnection);
    }
    connection_ = std::move(next);
    ownsConnection_ = connectionOrText.isText();
    if (command_) command_->attach(connection_);
    if (const auto connection = std::dynamic_pointer_cast<ConnectionObject>(connection_))
        connection->attach(shared_from_this());
}

Variant ClientRecordset::ActiveCommand() const {
    return ObjectRef(command_);
}

void ClientRecordset::SetSource(const Variant& textOrCommand) {
    requireClosed();
    if (textOrCommand.isEmpty()) throw adoError(adErrInvalidArgument);
    takeSource(textOrCommand);
}

void ClientRecordset::SetCursorType(CursorTypeEnum type) {
    requireClosed();
    if (type < adOpenForwardOnly || type > adOpenStatic) throw adoError(adErrInvalidArgument);
}

void ClientRecordset::SetLockType(LockTypeEnum type) {
    requireClosed();
    if (type == adLockUnspecified) throw adoError(adErrInvalidArgument);
    takeLockType(type);
}

// Both locations are accepted, as hosts set them; this is a client cursor always.
void ClientRecordset::SetCursorLocation(CursorLocationEnum location) {
    requireClosed();
    if (location != adUseServer && location != adUseClient) throw adoError(adErrInvalidArgument);
}

} // namespace norvel::adodb
