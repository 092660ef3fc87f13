#include "hosts/norvelricerca/ProprietaRicerca.h"

#include "component/TabellaMembri.h"
#include "hosts/norvelricerca/Aiuto.h"

#include <string>

namespace norvel::hosts {

namespace {

TipoProprieta tipoDi(const Membro& membro) {
    if (membro.tipo == TipoMembro::Recordset) return TipoProprieta::Oggetto;
    if ((membro.modi & modoLet) == 0) return TipoProprieta::SolaLettura;
    if (membro.tipo == TipoMembro::Booleano) return TipoProprieta::Booleano;
    return eNumero(membro.nome) ? TipoProprieta::Numero : TipoProprieta::Testo;
}

} // namespace

std::vector<Proprieta> proprietaDellaRicerca() {
    std::vector<Proprieta> elenco;
    for (const Membro& membro : tabellaMembri())
        if ((membro.modi & modoMetodo) == 0)
            elenco.push_back({std::string(membro.nome), tipoDi(membro)});
    return elenco;
}

} // namespace norvel::hosts
