#include "tests/windows/ado/RecordsetHost.h"

#include "platform/adodb/ado/EventSink.h"
#include "platform/runtime/Errore.h"

#include <algorithm>
#include <iterator>

namespace norvel::test {

using com::ComPtr;
using com::OwnedVariant;
using com::toVariant;

namespace {

// A reference of its own to an object, as a call hands it out.
OwnedVariant handOut(DispatchDouble* object) {
    OwnedVariant value;
    V_VT(&value.ref()) = VT_DISPATCH;
    V_DISPATCH(&value.ref()) = ComPtr<DispatchDouble>::keep(object).detach();
    return value;
}

} // namespace

// The connection point and its container in one; it keeps the recordset.
class HostEvents : public IConnectionPointContainer, public IConnectionPoint {
  public:
    explicit HostEvents(RecordsetHost& host) : host_(ComPtr<RecordsetHost>::keep(&host)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (IsEqualIID(iid, IID_IConnectionPointContainer))
            *out = static_cast<IConnectionPointContainer*>(this);
        if (IsEqualIID(iid, IID_IConnectionPoint)) *out = static_cast<IConnectionPoint*>(this);
        if (!*out) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override {
        const long left = --references_;
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        *point = nullptr;
        if (!IsEqualIID(iid, adodb::recordsetEventsClassic)) return E_NOINTERFACE;
        AddRef();
        *point = this;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        host_->sink_ = ComPtr<IUnknown>::keep(sink).as<IDispatch>(adodb::recordsetEventsClassic);
        ++host_->connected;
        *cookie = 7;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        if (cookie != 7) return E_INVALIDARG;
        host_->sink_ = {};
        --host_->connected;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  private:
    virtual ~HostEvents() = default;
    ComPtr<RecordsetHost> host_;
    long references_ = 1;
};

HRESULT RecordsetHost::QueryInterface(REFIID iid, void** out) {
    if (!offersEvents || !IsEqualIID(iid, IID_IConnectionPointContainer))
        return DispatchDouble::QueryInterface(iid, out);
    *out = static_cast<IConnectionPointContainer*>(new HostEvents(*this));
    return S_OK;
}

HRESULT RecordsetHost::fire(DISPID event, std::initializer_list<OwnedVariant> arguments) {
    std::vector<VARIANTARG> lent;
    for (const OwnedVariant* one = arguments.end(); one != arguments.begin();)
        lent.push_back((--one)->get());
    DISPPARAMS parameters{lent.data(), nullptr, static_cast<UINT>(lent.size()), 0};
    EXCEPINFO exception{};
    const HRESULT code = sink_->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                       &parameters, nullptr, &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    return code;
}

RecordsetHost::RecordsetHost(std::shared_ptr<HostRows> shared)
    : shared_(std::move(shared)), generation_(shared_->generation) {
    cursorMembers();
    positionMembers();
    viewMembers();
    fieldMembers();
}

std::vector<int> RecordsetHost::shown() const {
    std::vector<int> rows;
    const int above = filter_.empty() ? 0 : std::stoi(filter_.substr(filter_.find('>') + 1));
    for (int i = 0; i < static_cast<int>(shared_->rows.size()); ++i)
        if (shared_->rows[static_cast<std::size_t>(i)].code > above) rows.push_back(i);
    if (sort_ == "codice DESC") std::ranges::reverse(rows);
    return rows;
}

void RecordsetHost::go(int to) {
    ++moved;
    position = std::clamp(to, -1, static_cast<int>(shown().size()));
}

int RecordsetHost::current() const {
    const auto rows = shown();
    if (position < 0 || position >= static_cast<int>(rows.size())) throw Errore(3021, "fuori");
    return rows[static_cast<std::size_t>(position)];
}

void RecordsetHost::cursorMembers() {
    on(L"State", [this](Call&, OwnedVariant& out) {
        out = toVariant(state);
        return S_OK;
    });
    on(L"Supports", [this](Call& call, OwnedVariant& out) {
        out = toVariant(call.argument(0).toI4() != adodb::adBookmark || shared_->bookmarks);
        return S_OK;
    });
    on(L"BOF", [this](Call&, OwnedVariant& out) {
        out = toVariant(position < 0 || shown().empty());
        return S_OK;
    });
    on(L"EOF", [this](Call&, OwnedVariant& out) {
        out = toVariant(position >= static_cast<int>(shown().size()));
        return S_OK;
    });
    const auto moving = [this](const wchar_t* name, auto target) {
        on(name, [this, target](Call&, OwnedVariant&) {
            go(target());
            return S_OK;
        });
    };
    moving(L"MoveFirst", [] { return 0; });
    moving(L"MoveLast", [this] { return static_cast<int>(shown().size()) - 1; });
    moving(L"MoveNext", [this] { return position + 1; });
    moving(L"MovePrevious", [this] { return position - 1; });
    on(L"Move", [this](Call& call, OwnedVariant&) {
        go(position + call.argument(0).toI4());
        return S_OK;
    });
    on(L"Close", [this](Call&, OwnedVariant&) {
        state = adodb::adStateClosed;
        return S_OK;
    });
    on(L"Cancel", [this](Call&, OwnedVariant&) {
        state = adodb::adStateOpen;
        return S_OK;
    });
    on(L"Requery", [this](Call&, OwnedVariant&) {
        generation_ = ++shared_->generation;
        go(0);
        return S_OK;
    });
    on(L"GetRows", [this](Call& call, OwnedVariant& out) {
        const int asked = call.argument(0).toI4();
        std::vector<std::vector<Variant>> columns(2);
        current();
        const auto rows = shown();
        for (int i = 0; asked < 0 || i < asked; ++i) {
            if (position >= static_cast<int>(rows.size())) break;
            const auto& row = shared_->rows[static_cast<std::size_t>(current())];
            columns[0].emplace_back(row.code);
            columns[1].emplace_back(row.name);
            ++position;
        }
        ++moved;
        out = com::rowsArray(columns);
        return S_OK;
    });
}

void RecordsetHost::positionMembers() {
    on(L"RecordCount", [this](Call&, OwnedVariant& out) {
        out = toVariant(shared_->positions ? static_cast<int>(shown().size()) : -1);
        return S_OK;
    });
    on(L"AbsolutePosition", [this](Call& call, OwnedVariant& out) {
        if (!shared_->positions) throw Errore(3251, "Il cursore non conta le posizioni");
        if (call.puts()) {
            go(call.argument(0).toI4() - 1);
        } else {
            out = toVariant(position + 1);
        }
        return S_OK;
    });
    // As a provider of eight bytes to a bookmark: a number that says nothing about positions.
    on(L"Bookmark", [this](Call& call, OwnedVariant& out) {
        if (!shared_->bookmarks) throw Errore(3251, "Senza segnalibri");
        if (generation_ != shared_->generation) throw Errore(-2147217906, "Segnalibro vecchio");
        if (!call.puts()) {
            out = toVariant(1000.0 * shared_->generation + 7.0 * current());
            return S_OK;
        }
        const double wanted = call.argument(0).toDouble() - 1000.0 * shared_->generation;
        const auto rows = shown();
        const auto found = std::ranges::find(rows, static_cast<int>(wanted / 7));
        if (found == rows.end()) throw Errore(-2147217906, "Segnalibro non valido");
        go(static_cast<int>(std::distance(rows.begin(), found)));
        return S_OK;
    });
}

void RecordsetHost::viewMembers() {
    on(L"Clone", [this](Call&, OwnedVariant& out) {
        const auto clone = RecordsetHost::make(shared_);
        shared_->clones.push_back(ComPtr<DispatchDouble>::keep(clone.get()));
        out = handOut(clone.get());
        return S_OK;
    });
    on(L"Filter", [this](Call& call, OwnedVariant& out) {
        if (!call.puts()) {
            out = filter_.empty() ? toVariant(0) : toVariant(filter_);
            return S_OK;
        }
        if (call.argument(0).isText() && call.argument(0).text() == "sbagliato")
            throw Errore(3001, "Filtro errato");
        filter_ = call.argument(0).isText() ? call.argument(0).text() : "";
        go(0);
        return S_OK;
    });
    on(L"Sort", [this](Call& call, OwnedVariant& out) {
        if (call.puts()) {
            sort_ = call.argument(0).toText();
        } else {
            out = toVariant(sort_);
        }
        return S_OK;
    });
}

// A Field object reads the recordset's current row; it does not keep the recordset alive.
ComPtr<DispatchDouble> RecordsetHost::field(int index) {
    auto made = DispatchDouble::make();
    const int born = generation_;
    const auto valid = [this, born] {
        if (born != generation_ || state == adodb::adStateClosed)
            throw Errore(3420, "Campo non valido");
    };
    made->on(L"Name", [index, valid](Call&, OwnedVariant& out) {
        valid();
        out = toVariant(index == 0 ? "codice" : "Nome");
        return S_OK;
    });
    made->on(L"Type", [index, valid](Call&, OwnedVariant& out) {
        valid();
        out = toVariant(index == 0 ? int(adodb::adInteger) : int(adodb::adVarWChar));
        return S_OK;
    });
    made->on(L"Value", [this, index, valid](Call& call, OwnedVariant& out) {
        valid();
        auto& row = shared_->rows[static_cast<std::size_t>(current())];
        if (call.puts()) {
            row.name = call.argument(0).toText();
        } else {
            out = index == 0 ? toVariant(row.code) : toVariant(row.name);
        }
        return S_OK;
    });
    return made;
}

void RecordsetHost::fieldMembers() {
    on(L"Fields", [this](Call&, OwnedVariant& out) {
        const auto made = DispatchDouble::make();
        made->on(L"Count", [this](Call&, OwnedVariant& count) {
            count = toVariant(state == adodb::adStateClosed ? 0 : 2);
            return S_OK;
        });
        made->on(L"Item", [this](Call& call, OwnedVariant& item) {
            const int index = call.argument(0).toI4();
            if (state == adodb::adStateClosed || index < 0 || index > 1)
                throw Errore(3265, "Campo inesistente");
            item = handOut(field(index).get());
            return S_OK;
        });
        out = handOut(made.get());
        return S_OK;
    });
}

} // namespace norvel::test
