#include "platform/adodb/client/ConnectionObject.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/client/ClientRecordset.h"

#include <utility>

namespace norvel::adodb {

Session& ConnectionObject::opened() const {
    if (!session_) throw adoError(adErrObjectClosed);
    return *session_;
}

void ConnectionObject::SetConnectionString(const std::string& text) {
    if (session_) throw adoError(adErrObjectOpen);
    text_ = text;
}

void ConnectionObject::Open(const std::string& connectionString) {
    if (session_) throw adoError(adErrObjectOpen);
    if (!connectionString.empty()) text_ = connectionString;
    session_ = openSession(text_);
}

void ConnectionObject::Close() {
    opened();
    const auto self = shared_from_this();
    for (const auto& weak : recordsets_)
        if (const auto recordset = weak.lock(); recordset && recordset->connection() == self)
            recordset->refuseInEvent();
    for (const auto& weak : std::exchange(recordsets_, {}))
        if (const auto recordset = weak.lock(); recordset && recordset->connection() == self)
            recordset->closeNow();
    session_.reset();
}

RecordsetRef ConnectionObject::Execute(const std::string& commandText, RowCount* recordsAffected,
                                       int options) {
    opened();
    const bool noRecords = options != adOptionUnspecified && (options & adExecuteNoRecords) != 0;
    auto recordset = std::make_shared<ClientRecordset>();
    recordset->Open(commandText, ObjectRef(shared_from_this()), adOpenUnspecified,
                    adLockUnspecified, noRecords ? options & ~adExecuteNoRecords : options);
    if (recordsAffected) *recordsAffected = recordset->affected();
    if (noRecords) recordset->closeNow();
    return recordset;
}

void ConnectionObject::SetCommandTimeout(int seconds) {
    if (seconds < 0) throw adoError(adErrInvalidArgument);
    timeout_ = seconds;
}

void ConnectionObject::attach(const std::shared_ptr<ClientRecordset>& recordset) {
    std::erase_if(recordsets_, [&](const auto& weak) {
        const auto other = weak.lock();
        return !other || other == recordset;
    });
    recordsets_.push_back(recordset);
}

ConnectionRef makeConnection() {
    return std::make_shared<ConnectionObject>();
}

} // namespace norvel::adodb
