#include "output/Righe.h"

#include "platform/runtime/HostPath.h"

#include <system_error>

namespace norvel::output {

adodb::Recordset& recordsetDi(const ParteEsportazione& parte) {
    if (!parte.recordset) throw erroreOggettoNonImpostato();
    return *parte.recordset;
}

bool tutteLeRighe(const ParteEsportazione& parte) {
    const adodb::Recordset& recordset = recordsetDi(parte);
    if (!parte.attendiRighe()) return false;
    if (const auto interrotta = recordset.FetchError()) throw *interrotta;
    return true;
}

void creaCartella(const std::string& percorso) {
    std::error_code ignorato;
    std::filesystem::create_directory(percorsoSistema(percorso), ignorato);
}

std::string testoPercorso(const Variant& valore) {
    return testoValore(valore);
}

} // namespace norvel::output
