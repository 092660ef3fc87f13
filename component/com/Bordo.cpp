#include "component/com/Bordo.h"

#include "component/com/Identificatori.h"
#include "platform/adodb/ado/Com.h"
#include "platform/adodb/ado/Failures.h"
#include "platform/runtime/WideText.h"

#include <string>

namespace norvel::com {

// Where there is no memory for the words, the code alone has to do.
HRESULT segnala(const Errore& errore) noexcept {
    try {
        std::wstring origine = progId;
        std::wstring descrizione = wideText(errore.descrizione());
        ComPtr<ICreateErrorInfo> nuovo;
        if (SUCCEEDED(CreateErrorInfo(nuovo.put()))) {
            nuovo->SetGUID(idInterfaccia);
            nuovo->SetSource(origine.data());
            nuovo->SetDescription(descrizione.data());
            if (const auto pronto = nuovo.as<IErrorInfo>(IID_IErrorInfo))
                SetErrorInfo(0, pronto.get());
        }
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
    }
    return codeOf(errore.numero());
}

} // namespace norvel::com
