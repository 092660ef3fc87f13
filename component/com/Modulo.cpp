#include "component/com/Modulo.h"

#include <wx/msw/private.h>

#include <atomic>

namespace norvel::com {

namespace {

HINSTANCE istanza = nullptr;
std::atomic<long> usi{0};
std::atomic<bool> trattenuto{false};

} // namespace

std::wstring percorsoModulo() {
    std::wstring testo(MAX_PATH, L'\0');
    for (;;) {
        const DWORD lunghezza =
            GetModuleFileNameW(istanza, testo.data(), static_cast<DWORD>(testo.size()));
        if (lunghezza < testo.size()) {
            testo.resize(lunghezza);
            return testo;
        }
        testo.resize(testo.size() * 2); // it was cut
    }
}

void aggiungiUso() {
    ++usi;
}
void togliUso() {
    --usi;
}

void trattieniModulo() {
    if (trattenuto.exchange(true)) return;
    HMODULE modulo = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&trattieniModulo), &modulo);
}

bool moduloLibero() {
    return usi == 0 && !trattenuto;
}

} // namespace norvel::com

// The toolkit, which is linked into the DLL, finds its resources by the DLL's handle.
extern "C" BOOL WINAPI DllMain(HINSTANCE istanza, DWORD motivo, LPVOID) {
    if (motivo == DLL_PROCESS_ATTACH) {
        norvel::com::istanza = istanza;
        wxSetInstance(istanza);
    }
    return TRUE;
}
