#include "component/com/Valori.h"

#include "platform/adodb/ado/AdoRecordset.h"
#include "platform/adodb/ado/Dispatch.h"
#include "platform/adodb/ado/Failures.h"

namespace norvel::com {

namespace {

// A member that every generation of ADO has, and nothing that is no recordset.
ObjectRef recordsetDelHost(IDispatch* oggetto) {
    wchar_t nome[] = L"AbsolutePosition";
    wchar_t* nomi[] = {nome};
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(oggetto->GetIDsOfNames(IID_NULL, nomi, 1, LOCALE_USER_DEFAULT, &id))) return nullptr;
    return adodb::wrapAdoRecordset(oggetto);
}

OwnedVariant valorePredefinito(const DispatchObject& oggetto) {
    OwnedVariant valore;
    DISPPARAMS nessuno{};
    EXCEPINFO eccezione{};
    const HRESULT esito =
        oggetto.get()->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                              &nessuno, valore.put(), &eccezione, nullptr);
    if (FAILED(esito)) throw failure(esito, L"", &eccezione);
    return valore;
}

// Also one in a variable of the host's that is passed by reference.
bool eOggetto(const VARIANT& valore) {
    const bool variabile =
        V_VT(&valore) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(&valore) != nullptr;
    const VARIANT& dentro = variabile ? *V_VARIANTREF(&valore) : valore;
    return (V_VT(&dentro) & ~VT_BYREF) == VT_DISPATCH;
}

} // namespace

Variant valoreDelHost(const VARIANT& valore, TipoMembro tipo) {
    if (tipo == TipoMembro::Recordset) {
        ObjectFaces facce;
        facce.inward = recordsetDelHost;
        return fromVariant(valore, facce);
    }
    if (!eOggetto(valore)) return fromVariant(valore);
    const DispatchObject oggetto = DispatchObject::in(valore);
    return oggetto ? fromVariant(valorePredefinito(oggetto).get()) : fromVariant(valore);
}

} // namespace norvel::com
