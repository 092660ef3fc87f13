// The connection point of RecordsetEvents: hands a recordset's events to the hosts' sinks.
#pragma once

#include "platform/adodb/ado/EventSink.h"
#include "tests/windows/prova/Face.h"

#include <initializer_list>

namespace norvel::prova {

class RecordsetFace;

// Lives in a RecordsetFace and counts its references there. It listens to the recordset only while
// somebody is connected.
class EventPoint : public IConnectionPoint, public adodb::RecordsetEvents {
  public:
    explicit EventPoint(RecordsetFace& face) : face_(face) {}
    EventPoint(const EventPoint&) = delete;
    EventPoint& operator=(const EventPoint&) = delete;
    ~EventPoint() override;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

    void WillMove(adodb::EventReasonEnum, adodb::EventStatusEnum&, adodb::Recordset&) override;
    void MoveComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                      adodb::Recordset&) override;
    void WillChangeField(int, const std::vector<adodb::Field*>&, adodb::EventStatusEnum&,
                         adodb::Recordset&) override;
    void FieldChangeComplete(int, const std::vector<adodb::Field*>&, const Errore*,
                             adodb::EventStatusEnum, adodb::Recordset&) override;
    void WillChangeRecord(adodb::EventReasonEnum, int, adodb::EventStatusEnum&,
                          adodb::Recordset&) override;
    void RecordChangeComplete(adodb::EventReasonEnum, int, const Errore*, adodb::EventStatusEnum,
                              adodb::Recordset&) override;
    void WillChangeRecordset(adodb::EventReasonEnum, adodb::EventStatusEnum&,
                             adodb::Recordset&) override;
    void RecordsetChangeComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                                 adodb::Recordset&) override;
    void EndOfRecordset(bool&, adodb::EventStatusEnum&, adodb::Recordset&) override;
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;

  private:
    void fire(DISPID event, std::initializer_list<com::OwnedVariant> arguments);
    com::OwnedVariant fieldArray(const std::vector<adodb::Field*>& fields);

    RecordsetFace& face_;
    struct Sink {
        DWORD cookie;
        com::ComPtr<IDispatch> sink;
    };
    std::vector<Sink> sinks_;
    DWORD lastCookie_ = 0;
};

} // namespace norvel::prova
