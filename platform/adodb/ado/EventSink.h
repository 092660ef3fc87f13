// Receives the events of a host's recordset.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/ado/Com.h"

#include <memory>

namespace norvel::adodb {

// RecordsetEvents' dispatch interfaces: the classic one and that of the generation of ADO that
// came with Windows 7 SP1 (mingw-w64's adogpool_backcompat.h and adogpool.h). Same identifiers of
// members, 9 to 19.
extern const IID recordsetEventsClassic;
extern const IID recordsetEventsNew;

// Answers to both and hands each event to a target. It holds the recordset weakly: an object that
// keeps the sink longer than it should does no harm.
class EventSink : public IDispatch {
  public:
    // target must live as long as owner.
    static com::ComPtr<EventSink> make(std::weak_ptr<Recordset> owner, RecordsetEvents& target);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO* exception, UINT*) override;

  private:
    EventSink(std::weak_ptr<Recordset> owner, RecordsetEvents& target)
        : owner_(std::move(owner)), target_(target) {}
    virtual ~EventSink() = default;
    void hand(DISPID member, const DISPPARAMS& parameters, Recordset& owner);

    std::weak_ptr<Recordset> owner_;
    RecordsetEvents& target_;
    long references_ = 1;
};

// Keeps a sink connected to an object; disconnects when it goes.
class EventConnection {
  public:
    EventConnection() = default;
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;
    ~EventConnection() { Disconnect(); }

    // False where the object offers no such events.
    bool Connect(IDispatch* source, const std::weak_ptr<Recordset>& owner, RecordsetEvents& target);
    void Disconnect();

  private:
    com::ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

} // namespace norvel::adodb
