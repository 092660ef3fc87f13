// The edge between this system's failures, which are thrown, and COM's, which are codes.
#pragma once

#include "platform/runtime/Errore.h"
#include "platform/runtime/ErroreInCorso.h"

#include <windows.h>

namespace norvel::com {

// Leaves the error with the thread, where a host bound early finds it, and gives its code.
HRESULT segnala(const Errore& errore) noexcept;

// Runs an action of the component; nothing that it throws passes.
template <class Azione>
HRESULT alBordo(Azione azione) noexcept {
    try {
        azione();
        return S_OK;
    } catch (...) {
        return segnala(erroreInCorso());
    }
}

} // namespace norvel::com
