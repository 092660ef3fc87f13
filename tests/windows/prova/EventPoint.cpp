#include "tests/windows/prova/EventPoint.h"

#include "tests/windows/prova/ConnectionFace.h"
#include "tests/windows/prova/RecordsetFace.h"

#include <algorithm>
#include <olectl.h>

namespace norvel::prova {

using adodb::EventReasonEnum;
using adodb::EventStatusEnum;
using com::ComPtr;
using com::OwnedVariant;

namespace {

// The Error object of an event, or Nothing.
OwnedVariant errorArgument(const Errore* error) {
    return error ? outward(makeFace<ErrorFace>(*error).get()) : outward(ObjectRef());
}

// A status that goes out and may come back changed.
class Status {
  public:
    explicit Status(EventStatusEnum status) : value_(status) {}
    OwnedVariant argument() { return OwnedVariant::reference(value_); }
    EventStatusEnum value() const { return static_cast<EventStatusEnum>(value_); }

  private:
    long value_;
};

} // namespace

EventPoint::~EventPoint() {
    if (!sinks_.empty()) face_.recordset().Unsubscribe(this);
}

HRESULT EventPoint::QueryInterface(REFIID iid, void** out) {
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IConnectionPoint);
    *out = known ? static_cast<IConnectionPoint*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}
ULONG EventPoint::AddRef() {
    return face_.AddRef();
}
ULONG EventPoint::Release() {
    return face_.Release();
}

HRESULT EventPoint::GetConnectionInterface(IID* iid) {
    *iid = adodb::recordsetEventsClassic;
    return S_OK;
}
HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    void* found = nullptr;
    const HRESULT result = face_.QueryInterface(IID_IConnectionPointContainer, &found);
    *container = static_cast<IConnectionPointContainer*>(found);
    return result;
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
    const auto given = ComPtr<IUnknown>::keep(sink);
    auto face = given.as<IDispatch>(adodb::recordsetEventsClassic);
    if (!face) face = given.as<IDispatch>(IID_IDispatch);
    if (!face) return CONNECT_E_CANNOTCONNECT;
    if (sinks_.empty()) face_.recordset().Subscribe(this);
    sinks_.push_back({++lastCookie_, std::move(face)});
    *cookie = lastCookie_;
    return S_OK;
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
    const auto found = std::ranges::find(sinks_, cookie, &Sink::cookie);
    if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
    const Sink left = *found; // let go last: it may end this object
    sinks_.erase(found);
    if (sinks_.empty()) face_.recordset().Unsubscribe(this);
    return S_OK;
}

HRESULT EventPoint::EnumConnections(IEnumConnections** connections) {
    *connections = nullptr;
    return E_NOTIMPL;
}

void EventPoint::fire(DISPID event, std::initializer_list<OwnedVariant> arguments) {
    const auto alive = ComPtr<IDispatch>::keep(&face_);
    std::vector<VARIANTARG> lent; // last first
    for (const OwnedVariant* one = arguments.end(); one != arguments.begin();)
        lent.push_back((--one)->get());
    DISPPARAMS parameters{lent.data(), nullptr, static_cast<UINT>(lent.size()), 0};
    const auto told = sinks_;
    for (const Sink& sink : told)
        sink.sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                          nullptr, nullptr, nullptr);
}

OwnedVariant EventPoint::fieldArray(const std::vector<adodb::Field*>& fields) {
    std::vector<Variant> objects;
    objects.reserve(fields.size());
    for (adodb::Field* field : fields)
        objects.push_back(inward(outward(face_.fields().item(*field).get()).get()));
    return outward(objects);
}

void EventPoint::WillChangeField(int count, const std::vector<adodb::Field*>& fields,
                                 EventStatusEnum& status, adodb::Recordset&) {
    Status s(status);
    fire(9, {outward(count), fieldArray(fields), s.argument(), outward(&face_)});
    status = s.value();
}
void EventPoint::FieldChangeComplete(int count, const std::vector<adodb::Field*>& fields,
                                     const Errore* error, EventStatusEnum status,
                                     adodb::Recordset&) {
    Status s(status);
    fire(10,
         {outward(count), fieldArray(fields), errorArgument(error), s.argument(), outward(&face_)});
}
void EventPoint::WillChangeRecord(EventReasonEnum reason, int count, EventStatusEnum& status,
                                  adodb::Recordset&) {
    Status s(status);
    fire(11, {outward(std::int32_t{reason}), outward(count), s.argument(), outward(&face_)});
    status = s.value();
}
void EventPoint::RecordChangeComplete(EventReasonEnum reason, int count, const Errore* error,
                                      EventStatusEnum status, adodb::Recordset&) {
    Status s(status);
    fire(12, {outward(std::int32_t{reason}), outward(count), errorArgument(error), s.argument(),
              outward(&face_)});
}
void EventPoint::WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status,
                                     adodb::Recordset&) {
    Status s(status);
    fire(13, {outward(std::int32_t{reason}), s.argument(), outward(&face_)});
    status = s.value();
}
void EventPoint::RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                         EventStatusEnum status, adodb::Recordset&) {
    Status s(status);
    fire(14, {outward(std::int32_t{reason}), errorArgument(error), s.argument(), outward(&face_)});
}
void EventPoint::WillMove(EventReasonEnum reason, EventStatusEnum& status, adodb::Recordset&) {
    Status s(status);
    fire(15, {outward(std::int32_t{reason}), s.argument(), outward(&face_)});
    status = s.value();
}
void EventPoint::MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                              adodb::Recordset&) {
    Status s(status);
    fire(16, {outward(std::int32_t{reason}), errorArgument(error), s.argument(), outward(&face_)});
}
void EventPoint::EndOfRecordset(bool& moreData, EventStatusEnum& status, adodb::Recordset&) {
    Status s(status);
    VARIANT_BOOL more = moreData ? VARIANT_TRUE : VARIANT_FALSE;
    OwnedVariant place;
    V_VT(&place.ref()) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&place.ref()) = &more;
    fire(17, {std::move(place), s.argument(), outward(&face_)});
    moreData = more != VARIANT_FALSE;
    status = s.value();
}
void EventPoint::FetchProgress(adodb::RowCount progress, adodb::RowCount maxProgress,
                               EventStatusEnum status, adodb::Recordset&) {
    Status s(status);
    fire(18, {outward(static_cast<std::int32_t>(progress)),
              outward(static_cast<std::int32_t>(maxProgress)), s.argument(), outward(&face_)});
}
void EventPoint::FetchComplete(const Errore* error, EventStatusEnum status, adodb::Recordset&) {
    Status s(status);
    fire(19, {errorArgument(error), s.argument(), outward(&face_)});
}

} // namespace norvel::prova
