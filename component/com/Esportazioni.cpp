// What the DLL offers to COM: the class factory and the four entry points.
#include "component/com/Bordo.h"
#include "component/com/Identificatori.h"
#include "component/com/Modulo.h"
#include "component/com/Oggetto.h"
#include "component/com/Registrazione.h"

namespace norvel::com {

namespace {

// The one factory, which lives as long as the DLL; only its locks count.
class Fabbrica final : public IClassFactory {
  public:
    STDMETHODIMP QueryInterface(REFIID iid, void** faccia) override {
        if (faccia == nullptr) return E_POINTER;
        const bool nota = iid == IID_IUnknown || iid == IID_IClassFactory;
        *faccia = nota ? this : nullptr;
        if (!nota) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override {
        aggiungiUso();
        return 2;
    }
    STDMETHODIMP_(ULONG) Release() override {
        togliUso();
        return 1;
    }

    STDMETHODIMP CreateInstance(IUnknown* esterno, REFIID iid, void** faccia) override {
        if (faccia == nullptr) return E_POINTER;
        *faccia = nullptr;
        if (esterno != nullptr) return CLASS_E_NOAGGREGATION;
        ComPtr<IDispatch> nuovo;
        const HRESULT esito = alBordo([&] { nuovo = ComPtr<IDispatch>::adopt(new Oggetto); });
        return FAILED(esito) ? esito : nuovo->QueryInterface(iid, faccia);
    }

    STDMETHODIMP LockServer(BOOL blocca) override {
        blocca != 0 ? aggiungiUso() : togliUso();
        return S_OK;
    }
};

Fabbrica& fabbrica() {
    static Fabbrica unica;
    return unica;
}

} // namespace

} // namespace norvel::com

STDAPI DllGetClassObject(REFCLSID classe, REFIID iid, LPVOID* faccia) {
    if (faccia == nullptr) return E_POINTER;
    *faccia = nullptr;
    if (classe != norvel::com::idClasse) return CLASS_E_CLASSNOTAVAILABLE;
    return norvel::com::fabbrica().QueryInterface(iid, faccia);
}

STDAPI DllCanUnloadNow() {
    return norvel::com::moduloLibero() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    HRESULT esito = S_OK;
    const HRESULT bordo = norvel::com::alBordo([&] { esito = norvel::com::registra(); });
    return FAILED(bordo) ? bordo : esito;
}

STDAPI DllUnregisterServer() {
    HRESULT esito = S_OK;
    const HRESULT bordo =
        norvel::com::alBordo([&] { esito = norvel::com::annullaRegistrazione(); });
    return FAILED(bordo) ? bordo : esito;
}
