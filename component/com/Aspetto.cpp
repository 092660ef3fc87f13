#include "component/com/Aspetto.h"

#include "component/com/Modulo.h"

namespace norvel::com {

namespace {

// Where Windows keeps the manifest of a DLL; it resolves what the DLL itself imports by it.
constexpr int risorsaManifesto = 2; // ISOLATIONAWARE_MANIFEST_RESOURCE_ID

// Made once and kept: windows may be there as long as the process. Where it cannot be made, the
// controls look as the host's.
HANDLE contesto() {
    static const HANDLE unico = [] {
        const std::wstring percorso = percorsoModulo();
        ACTCTXW richiesta{};
        richiesta.cbSize = sizeof richiesta;
        richiesta.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
        richiesta.lpSource = percorso.c_str();
        richiesta.lpResourceName = MAKEINTRESOURCEW(risorsaManifesto);
        return CreateActCtxW(&richiesta);
    }();
    return unico;
}

} // namespace

Aspetto::Aspetto()
    : attivo_(contesto() != INVALID_HANDLE_VALUE && ActivateActCtx(contesto(), &biscotto_) != 0) {}

Aspetto::~Aspetto() {
    if (attivo_) DeactivateActCtx(0, biscotto_);
}

} // namespace norvel::com
