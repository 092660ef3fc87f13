#include "platform/adodb/ado/ConnectionAdapter.h"

#include "platform/adodb/ado/Failures.h"
#include "platform/adodb/ado/RecordsetAdapter.h"
#include "platform/runtime/WideText.h"

#include <objbase.h>

namespace norvel::adodb {

using com::ComPtr;
using com::DispatchObject;
using com::fromVariant;
using com::numberArgument;
using com::OwnedVariant;
using com::textArgument;
using com::toVariant;

void putActiveConnection(const DispatchObject& owner, const Variant& connectionOrText) {
    if (connectionOrText.isObject())
        return owner.putRef(L"ActiveConnection", toVariant(connectionOrText));
    if (connectionOrText.isEmpty() || connectionOrText.isNull())
        return owner.putRef(L"ActiveConnection", toVariant(ObjectRef()));
    owner.put(L"ActiveConnection", toVariant(connectionOrText));
}

Variant activeConnectionOf(const DispatchObject& owner) {
    const OwnedVariant held = owner.get(L"ActiveConnection");
    if (V_VT(&held.get()) == VT_BSTR) return fromVariant(held.get()); // set, but not open yet
    const DispatchObject connection = DispatchObject::in(held.get());
    return ObjectRef(connection ? wrapAdoConnection(connection.get()) : nullptr);
}

DispatchObject createObject(const std::string& progId) {
    CLSID clsid{};
    HRESULT result = CLSIDFromProgID(wideText(progId).c_str(), &clsid);
    void* made = nullptr;
    if (SUCCEEDED(result))
        result = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &made);
    if (FAILED(result))
        throw Errore(429, "Impossibile creare l'oggetto " + progId + ": " +
                              com::failure(result, L"").descrizione());
    return DispatchObject(ComPtr<IDispatch>::adopt(static_cast<IDispatch*>(made)));
}

// --- connection ---

std::string AdoConnection::ConnectionString() const {
    return object_.text(L"ConnectionString");
}
void AdoConnection::SetConnectionString(const std::string& text) {
    object_.putText(L"ConnectionString", text);
}
void AdoConnection::Open(const std::string& connectionString) {
    if (connectionString.empty()) {
        object_.call(L"Open");
    } else {
        object_.call(L"Open", {textArgument(connectionString)});
    }
}
void AdoConnection::Close() {
    object_.call(L"Close");
}
int AdoConnection::State() const {
    return static_cast<int>(object_.number(L"State"));
}

RecordsetRef AdoConnection::Execute(const std::string& commandText, RowCount* recordsAffected,
                                    int options) {
    // ADO's RecordsAffected is a VARIANT by reference.
    OwnedVariant affected = numberArgument(0);
    OwnedVariant place;
    V_VT(&place.ref()) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&place.ref()) = &affected.ref();
    const DispatchObject rows = object_.object(
        L"Execute", {textArgument(commandText), std::move(place), numberArgument(options)});
    if (recordsAffected) *recordsAffected = fromVariant(affected.get()).toI8();
    return wrapAdoRecordset(rows.get());
}

void AdoConnection::BeginTrans() {
    object_.call(L"BeginTrans");
}
void AdoConnection::CommitTrans() {
    object_.call(L"CommitTrans");
}
void AdoConnection::RollbackTrans() {
    object_.call(L"RollbackTrans");
}
int AdoConnection::CommandTimeout() const {
    return static_cast<int>(object_.number(L"CommandTimeout"));
}
void AdoConnection::SetCommandTimeout(int seconds) {
    object_.putNumber(L"CommandTimeout", seconds);
}

// --- command ---

std::string AdoCommand::CommandText() const {
    return object_.text(L"CommandText");
}
void AdoCommand::SetCommandText(const std::string& text) {
    object_.putText(L"CommandText", text);
}
CommandTypeEnum AdoCommand::CommandType() const {
    return static_cast<CommandTypeEnum>(object_.number(L"CommandType"));
}
void AdoCommand::SetCommandType(CommandTypeEnum type) {
    object_.putNumber(L"CommandType", type);
}
Variant AdoCommand::ActiveConnection() const {
    return activeConnectionOf(object_);
}
void AdoCommand::SetActiveConnection(const Variant& connectionOrText) {
    putActiveConnection(object_, connectionOrText);
}

// --- making ---

ConnectionRef wrapAdoConnection(IDispatch* connection) {
    if (!connection) return nullptr;
    return std::make_shared<AdoConnection>(DispatchObject(ComPtr<IDispatch>::keep(connection)));
}
CommandRef wrapAdoCommand(IDispatch* command) {
    if (!command) return nullptr;
    return std::make_shared<AdoCommand>(DispatchObject(ComPtr<IDispatch>::keep(command)));
}
ConnectionRef createAdoConnection(const std::string& progId) {
    return std::make_shared<AdoConnection>(createObject(progId));
}
CommandRef createAdoCommand(const std::string& progId) {
    return std::make_shared<AdoCommand>(createObject(progId));
}

} // namespace norvel::adodb
