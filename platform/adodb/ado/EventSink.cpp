#include "platform/adodb/ado/EventSink.h"

#include "platform/adodb/ado/Dispatch.h"
#include "platform/adodb/ado/Failures.h"

#include <array>
#include <optional>

namespace norvel::adodb {

using com::ComPtr;
using com::DispatchObject;
using com::fromVariant;

const IID recordsetEventsClassic = {
    0x00000266, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
const IID recordsetEventsNew = {
    0x00001266, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};

namespace {

// The members of RecordsetEvents.
enum EventId : DISPID {
    willChangeField = 9,
    fieldChangeComplete = 10,
    willChangeRecord = 11,
    recordChangeComplete = 12,
    willChangeRecordset = 13,
    recordsetChangeComplete = 14,
    willMove = 15,
    moveComplete = 16,
    endOfRecordset = 17,
    fetchProgress = 18,
    fetchComplete = 19
};

// The arguments of an event in the order of its declaration.
class EventArguments {
  public:
    explicit EventArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

    const VARIANT& operator[](UINT index) const {
        if (index >= parameters_.cArgs) throw Errore(450, "Evento con argomenti mancanti");
        return parameters_.rgvarg[parameters_.cArgs - 1 - index];
    }
    RowCount number(UINT index) const { return fromVariant((*this)[index]).toI8(); }
    EventReasonEnum reason(UINT index) const { return static_cast<EventReasonEnum>(number(index)); }
    EventStatusEnum status(UINT index) const { return static_cast<EventStatusEnum>(number(index)); }
    // Writes to an argument that came by reference.
    void answer(UINT index, EventStatusEnum status) const {
        const VARIANT& place = (*this)[index];
        if (V_VT(&place) == (VT_BYREF | VT_I4)) *V_I4REF(&place) = status;
        if (V_VT(&place) == (VT_BYREF | VT_VARIANT)) {
            VariantClear(V_VARIANTREF(&place));
            *V_VARIANTREF(&place) = com::numberArgument(status).detach();
        }
    }
    void answer(UINT index, bool value) const {
        const VARIANT& place = (*this)[index];
        if (V_VT(&place) == (VT_BYREF | VT_BOOL))
            *V_BOOLREF(&place) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    // What ADO's Error object says, when the status says that there is one.
    std::optional<Errore> error(UINT index, UINT statusIndex) const {
        if (status(statusIndex) != adStatusErrorsOccurred) return std::nullopt;
        const DispatchObject error = DispatchObject::in((*this)[index]);
        if (!error) return Errore(E_FAIL, "Errore senza descrizione");
        return Errore(com::numberOf(static_cast<HRESULT>(error.number(L"Number"))),
                      error.text(L"Description"));
    }

  private:
    const DISPPARAMS& parameters_;
};

// The adapter's columns for an event's array of ADO's; the event names them by object.
std::vector<Field*> fieldsOf(const VARIANT& array, Recordset& owner) {
    std::vector<Field*> fields;
    const Variant held = fromVariant(array);
    if (held.type() != VarType::Array) return fields;
    for (const Variant& one : held.array()) {
        const auto* object =
            one.isObject() ? dynamic_cast<const com::ComObject*>(one.object().get()) : nullptr;
        if (!object) continue;
        auto face = ComPtr<IUnknown>::keep(object->get()).as<IDispatch>(IID_IDispatch);
        fields.push_back(&owner.Fields().Item(DispatchObject(std::move(face)).text(L"Name")));
    }
    return fields;
}

// Good for the length of the call that it is an argument of.
const Errore* pointer(const std::optional<Errore>& error) {
    return error ? &*error : nullptr;
}

} // namespace

ComPtr<EventSink> EventSink::make(std::weak_ptr<Recordset> owner, RecordsetEvents& target) {
    return ComPtr<EventSink>::adopt(new EventSink(std::move(owner), target));
}

HRESULT EventSink::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    const std::array known{IID_IUnknown, IID_IDispatch, recordsetEventsClassic, recordsetEventsNew};
    *out = nullptr;
    for (const IID& one : known)
        if (IsEqualIID(iid, one)) *out = static_cast<IDispatch*>(this);
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG EventSink::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
}
ULONG EventSink::Release() {
    const long left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}
HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}
HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}
HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME; // events come by identifier
}

// Nothing may be thrown into the object that fires.
HRESULT EventSink::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                          EXCEPINFO* exception, UINT*) {
    const auto self = ComPtr<EventSink>::keep(this);
    const std::shared_ptr<Recordset> owner = owner_.lock();
    if (!owner || !parameters) return S_OK;
    try {
        hand(member, *parameters, *owner);
        return S_OK;
    } catch (const Errore& error) {
        return com::raise(error, exception, "NorvelRicerca");
    } catch (const std::exception&) {
        return E_OUTOFMEMORY;
    }
}

void EventSink::hand(DISPID member, const DISPPARAMS& parameters, Recordset& owner) {
    const EventArguments a(parameters);
    EventStatusEnum status = adStatusOK;
    switch (member) {
    case willChangeField:
        status = a.status(2);
        target_.WillChangeField(static_cast<int>(a.number(0)), fieldsOf(a[1], owner), status,
                                owner);
        return a.answer(2, status);
    case fieldChangeComplete:
        return target_.FieldChangeComplete(static_cast<int>(a.number(0)), fieldsOf(a[1], owner),
                                           pointer(a.error(2, 3)), a.status(3), owner);
    case willChangeRecord:
        status = a.status(2);
        target_.WillChangeRecord(a.reason(0), static_cast<int>(a.number(1)), status, owner);
        return a.answer(2, status);
    case recordChangeComplete:
        return target_.RecordChangeComplete(a.reason(0), static_cast<int>(a.number(1)),
                                            pointer(a.error(2, 3)), a.status(3), owner);
    case willChangeRecordset:
        status = a.status(1);
        target_.WillChangeRecordset(a.reason(0), status, owner);
        return a.answer(1, status);
    case recordsetChangeComplete:
        return target_.RecordsetChangeComplete(a.reason(0), pointer(a.error(1, 2)), a.status(2),
                                               owner);
    case willMove:
        status = a.status(1);
        target_.WillMove(a.reason(0), status, owner);
        return a.answer(1, status);
    case moveComplete:
        return target_.MoveComplete(a.reason(0), pointer(a.error(1, 2)), a.status(2), owner);
    case endOfRecordset: {
        bool more = fromVariant(a[0]).toBoolean();
        status = a.status(1);
        target_.EndOfRecordset(more, status, owner);
        a.answer(0, more);
        return a.answer(1, status);
    }
    case fetchProgress:
        return target_.FetchProgress(a.number(0), a.number(1), a.status(2), owner);
    case fetchComplete:
        return target_.FetchComplete(pointer(a.error(0, 1)), a.status(1), owner);
    default:
        return;
    }
}

bool EventConnection::Connect(IDispatch* source, const std::weak_ptr<Recordset>& owner,
                              RecordsetEvents& target) {
    Disconnect();
    const auto container = ComPtr<IDispatch>::keep(source).as<IConnectionPointContainer>(
        IID_IConnectionPointContainer);
    if (!container) return false;
    for (const IID& iid : {recordsetEventsNew, recordsetEventsClassic}) {
        if (FAILED(container->FindConnectionPoint(iid, point_.put())) || !point_) continue;
        const auto sink = EventSink::make(owner, target);
        if (SUCCEEDED(point_->Advise(sink.get(), &cookie_))) return true;
    }
    point_ = {};
    return false;
}

void EventConnection::Disconnect() {
    const ComPtr<IConnectionPoint> point = std::exchange(point_, {});
    if (point) point->Unadvise(cookie_);
}

} // namespace norvel::adodb
