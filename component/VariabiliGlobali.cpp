#include "component/VariabiliGlobali.h"

namespace norvel {

VariabiliGlobali& variabiliGlobali() {
    // Never destroyed: a host may still hold a Ricerca while the process's statics go.
    static auto* session = new VariabiliGlobali;
    return *session;
}

} // namespace norvel
