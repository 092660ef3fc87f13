#include "component/com/Oggetto.h"

#include "component/com/Aspetto.h"
#include "component/com/Bordo.h"
#include "component/com/Identificatori.h"
#include "component/com/LibreriaTipi.h"
#include "component/com/Modulo.h"
#include "component/com/Valori.h"
#include "platform/adodb/ado/Failures.h"
#include "platform/runtime/WideText.h"

#include <algorithm>
#include <vector>

namespace norvel::com {

Oggetto::Oggetto() {
    aggiungiUso();
}
Oggetto::~Oggetto() {
    togliUso();
}

// --- IUnknown ---

STDMETHODIMP Oggetto::QueryInterface(REFIID iid, void** faccia) {
    if (faccia == nullptr) return E_POINTER;
    *faccia = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == idInterfaccia)
        *faccia = static_cast<_Ricerca*>(this);
    else if (iid == IID_IProvideClassInfo)
        *faccia = static_cast<IProvideClassInfo*>(this);
    else if (iid == IID_ISupportErrorInfo)
        *faccia = static_cast<ISupportErrorInfo*>(this);
    if (*faccia == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) Oggetto::AddRef() {
    return ++riferimenti_;
}

STDMETHODIMP_(ULONG) Oggetto::Release() {
    const ULONG rimasti = --riferimenti_;
    if (rimasti == 0) delete this;
    return rimasti;
}

// --- IDispatch ---

STDMETHODIMP Oggetto::GetTypeInfoCount(UINT* numero) {
    if (numero == nullptr) return E_POINTER;
    *numero = 1;
    return S_OK;
}

STDMETHODIMP Oggetto::GetTypeInfo(UINT indice, LCID, ITypeInfo** tipo) {
    if (tipo == nullptr) return E_POINTER;
    *tipo = nullptr;
    return indice == 0 ? tipoDellaLibreria(idInterfaccia, tipo) : DISP_E_BADINDEX;
}

// Names behind the first are those of arguments, and no member's arguments have names to call them
// by.
STDMETHODIMP Oggetto::GetIDsOfNames(REFIID, LPOLESTR* nomi, UINT numero, LCID,
                                    DISPID* identificatori) {
    if (nomi == nullptr || identificatori == nullptr || numero == 0 || nomi[0] == nullptr)
        return E_POINTER;
    std::fill_n(identificatori, numero, DISPID_UNKNOWN);
    const Membro* membro = nullptr;
    const HRESULT esito = alBordo([&] { membro = trovaMembro(narrowText(nomi[0])); });
    if (FAILED(esito)) return esito;
    if (membro == nullptr) return DISP_E_UNKNOWNNAME;
    identificatori[0] = membro->id;
    return numero == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

namespace {

constexpr unsigned modiNoti = modoMetodo | modoGet | modoLet | modoSet;
constexpr unsigned modiDiScrittura = modoLet | modoSet;

// The codes by which a host's language tells its own mistakes from the component's failures.
HRESULT controllaChiamata(const Membro* membro, unsigned modo, const DISPPARAMS* argomenti) {
    if (membro == nullptr || (membro->modi & modo) == 0) return DISP_E_MEMBERNOTFOUND;
    if (argomenti == nullptr || (argomenti->cArgs != 0 && argomenti->rgvarg == nullptr) ||
        (argomenti->cNamedArgs != 0 && argomenti->rgdispidNamedArgs == nullptr))
        return E_INVALIDARG;
    const bool scrive = (modo & modiDiScrittura) != 0;
    if (argomenti->cArgs != (scrive ? 1U : 0U)) return DISP_E_BADPARAMCOUNT;
    if (argomenti->cNamedArgs > argomenti->cArgs ||
        (argomenti->cNamedArgs == 1 && argomenti->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
        return DISP_E_NONAMEDARGS;
    return S_OK;
}

} // namespace

STDMETHODIMP Oggetto::Invoke(DISPID id, REFIID, LCID, WORD modo, DISPPARAMS* argomenti,
                             VARIANT* risultato, EXCEPINFO* eccezione, UINT* argomentoErrato) {
    if (argomentoErrato != nullptr) *argomentoErrato = 0;
    const Membro* const membro = trovaMembro(static_cast<DispId>(id));
    const unsigned modi = modo & modiNoti;
    const HRESULT esito = controllaChiamata(membro, modi, argomenti);
    if (FAILED(esito)) return esito;
    const auto presente = ComPtr<IDispatch>::keep(this); // the host may let go meanwhile
    try {
        std::vector<Variant> valori;
        if (argomenti->cArgs == 1)
            valori.push_back(valoreDelHost(argomenti->rgvarg[0], membro->tipo));
        OwnedVariant reso = toVariant(usa(*membro, modi, valori));
        if (risultato != nullptr) *risultato = reso.detach();
        return S_OK;
    } catch (...) {
        const Errore errore = erroreInCorso();
        return alBordo([&] { raise(errore, eccezione, narrowText(progId)); }) == S_OK
                   ? DISP_E_EXCEPTION
                   : E_OUTOFMEMORY;
    }
}

// What is stored, and what a method does, must outlive the object.
Variant Oggetto::usa(const Membro& membro, unsigned modo, std::span<const Variant> argomenti) {
    if (membro.chiama != nullptr || (modo & modiDiScrittura) != 0) trattieniModulo();
    const Aspetto aspetto;
    return norvel::Invoke(ricerca_, membro.id, modo, argomenti);
}

// --- the dual interface ---

HRESULT Oggetto::leggi(std::string_view nome, BSTR* valore) noexcept {
    if (valore == nullptr) return E_POINTER;
    *valore = nullptr;
    return alBordo([&] { *valore = newBstr(usa(*trovaMembro(nome), modoGet, {}).toText()); });
}

HRESULT Oggetto::leggi(std::string_view nome, VARIANT_BOOL* valore) noexcept {
    if (valore == nullptr) return E_POINTER;
    *valore = VARIANT_FALSE;
    return alBordo([&] {
        *valore = usa(*trovaMembro(nome), modoGet, {}).toBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
    });
}

HRESULT Oggetto::scriviValore(std::string_view nome, unsigned modo,
                              const VARIANT& valore) noexcept {
    const auto presente = ComPtr<IDispatch>::keep(this);
    return alBordo([&] {
        const Membro& membro = *trovaMembro(nome);
        const std::vector<Variant> valori = {valoreDelHost(valore, membro.tipo)};
        usa(membro, modo, valori);
    });
}

HRESULT Oggetto::scrivi(std::string_view nome, BSTR valore) noexcept {
    VARIANT prestato; // the host's own text, freed by the host
    V_VT(&prestato) = VT_BSTR;
    V_BSTR(&prestato) = valore;
    return scriviValore(nome, modoLet, prestato);
}

HRESULT Oggetto::scrivi(std::string_view nome, VARIANT_BOOL valore) noexcept {
    VARIANT prestato;
    V_VT(&prestato) = VT_BOOL;
    V_BOOL(&prestato) = valore;
    return scriviValore(nome, modoLet, prestato);
}

HRESULT Oggetto::scrivi(std::string_view nome, IDispatch* valore) noexcept {
    VARIANT prestato;
    V_VT(&prestato) = VT_DISPATCH;
    V_DISPATCH(&prestato) = valore;
    return scriviValore(nome, modoSet, prestato);
}

HRESULT Oggetto::chiama(std::string_view nome, VARIANT* risultato) noexcept {
    if (risultato != nullptr) VariantInit(risultato);
    const auto presente = ComPtr<IDispatch>::keep(this);
    return alBordo([&] {
        OwnedVariant reso = toVariant(usa(*trovaMembro(nome), modoMetodo, {}));
        if (risultato != nullptr) *risultato = reso.detach();
    });
}

// --- IProvideClassInfo, ISupportErrorInfo ---

STDMETHODIMP Oggetto::GetClassInfo(ITypeInfo** tipo) {
    if (tipo == nullptr) return E_POINTER;
    *tipo = nullptr;
    return tipoDellaLibreria(idClasse, tipo);
}

STDMETHODIMP Oggetto::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == idInterfaccia ? S_OK : S_FALSE;
}

} // namespace norvel::com
