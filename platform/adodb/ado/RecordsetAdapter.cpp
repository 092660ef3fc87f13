// Life of the adapter, what it is open on, and the background fetch.
#include "platform/adodb/ado/RecordsetAdapter.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/ado/ConnectionAdapter.h"

#include <algorithm>
#include <utility>

namespace norvel::adodb {

using com::DispatchObject;
using com::fromVariant;
using com::numberArgument;
using com::optionalArgument;
using com::toVariant;

namespace {

constexpr int busyBits = adStateConnecting | adStateExecuting | adStateFetching;

// Delivers what is waiting for this thread. False when the program is asked to end: the request is
// put back for the loop that it is meant for.
bool deliverMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace

AdoRecordset::AdoRecordset(DispatchObject object, bool own)
    : object_(std::move(object)), own_(own), relay_(*this), fields_(object_, relay_),
      mirror_(object_), hostTold_(*this) {}

AdoRecordset::~AdoRecordset() = default;

void AdoRecordset::Open(const Variant& source, const Variant& connection, CursorTypeEnum cursorType,
                        LockTypeEnum lockType, int options) {
    fetchError_.reset();
    relay_.Move(adRsnMove, [&] {
        object_.call(L"Open", {optionalArgument(source), optionalArgument(connection),
                               numberArgument(cursorType), numberArgument(lockType),
                               numberArgument(options)});
    });
    mirror_.Renew();
    fields_.Forget();
    tellViewChanged();
}

void AdoRecordset::Close() {
    changeView([&] {
        mirror_.Renew();
        relay_.ChangeRecordset(adRsnClose, [&] { object_.call(L"Close"); });
        fields_.Forget();
    });
}

void AdoRecordset::Requery(int options) {
    changeView([&] {
        fetchError_.reset();
        relay_.ChangeRecordset(adRsnRequery, [&] {
            relay_.Move(adRsnRequery, [&] { object_.call(L"Requery", {numberArgument(options)}); });
        });
        mirror_.Renew();
    });
}

void AdoRecordset::Cancel() {
    const bool running = (State() & busyBits) != 0;
    object_.call(L"Cancel");
    if (running && !fetchError_) fetchError_ = adoError(adErrOperationCancelled);
}

int AdoRecordset::State() const {
    const int state = static_cast<int>(object_.number(L"State"));
    return fetchError_ && (state & adStateOpen) ? state | adStateFetchBroken : state;
}

RecordsetRef AdoRecordset::Clone(LockTypeEnum lockType) {
    return std::make_shared<AdoRecordset>(cloneOf(object_, lockType), true);
}

// --- what it is open on ---

Variant AdoRecordset::ActiveConnection() const {
    return activeConnectionOf(object_);
}

void AdoRecordset::SetActiveConnection(const Variant& connectionOrText) {
    putActiveConnection(object_, connectionOrText);
}

Variant AdoRecordset::ActiveCommand() const {
    const DispatchObject command = object_.object(L"ActiveCommand");
    return ObjectRef(command ? wrapAdoCommand(command.get()) : nullptr);
}

std::string AdoRecordset::Source() const {
    return object_.text(L"Source");
}
void AdoRecordset::SetSource(const Variant& textOrCommand) {
    if (textOrCommand.isObject()) return object_.putRef(L"Source", toVariant(textOrCommand));
    object_.put(L"Source", toVariant(textOrCommand));
}
CursorTypeEnum AdoRecordset::CursorType() const {
    return static_cast<CursorTypeEnum>(object_.number(L"CursorType"));
}
void AdoRecordset::SetCursorType(CursorTypeEnum type) {
    object_.putNumber(L"CursorType", type);
}
LockTypeEnum AdoRecordset::LockType() const {
    return static_cast<LockTypeEnum>(object_.number(L"LockType"));
}
void AdoRecordset::SetLockType(LockTypeEnum type) {
    object_.putNumber(L"LockType", type);
}
CursorLocationEnum AdoRecordset::CursorLocation() const {
    return static_cast<CursorLocationEnum>(object_.number(L"CursorLocation"));
}
void AdoRecordset::SetCursorLocation(CursorLocationEnum location) {
    object_.putNumber(L"CursorLocation", location);
}

// --- fetch ---

bool AdoRecordset::WaitFetch(int milliseconds) {
    constexpr DWORD lookEvery = 10;       // milliseconds
    const auto self = shared_from_this(); // a message may let go of the last other reference
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(std::max(0, milliseconds));
    while ((State() & busyBits) != 0) {
        const ULONGLONG now = GetTickCount64();
        if (now >= end) return false;
        const DWORD pause = static_cast<DWORD>(std::min<ULONGLONG>(lookEvery, end - now));
        MsgWaitForMultipleObjects(0, nullptr, FALSE, pause, QS_ALLINPUT);
        if (!deliverMessages()) return (State() & busyBits) == 0;
    }
    return true;
}

// --- making ---

RecordsetRef wrapAdoRecordset(IDispatch* recordset) {
    if (!recordset) return nullptr;
    return std::make_shared<AdoRecordset>(DispatchObject(com::ComPtr<IDispatch>::keep(recordset)),
                                          false);
}

RecordsetRef createAdoRecordset(const std::string& progId) {
    return std::make_shared<AdoRecordset>(createObject(progId), false);
}

IDispatch* adoDispatch(const Object& object) {
    const auto* backed = dynamic_cast<const com::ComBacked*>(&object);
    return backed ? backed->dispatch() : nullptr;
}

} // namespace norvel::adodb
