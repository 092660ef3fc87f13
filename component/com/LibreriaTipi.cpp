#include "component/com/LibreriaTipi.h"

#include "component/com/Bordo.h"
#include "component/com/Modulo.h"
#include "platform/adodb/ado/Com.h"

namespace norvel::com {

HRESULT tipoDellaLibreria(REFGUID id, ITypeInfo** tipo) noexcept {
    HRESULT esito = E_FAIL;
    const HRESULT bordo = alBordo([&] {
        ComPtr<ITypeLib> libreria;
        esito = LoadTypeLibEx(percorsoModulo().c_str(), REGKIND_NONE, libreria.put());
        if (SUCCEEDED(esito)) esito = libreria->GetTypeInfoOfGuid(id, tipo);
    });
    return FAILED(bordo) ? bordo : esito;
}

} // namespace norvel::com
