#include "views/Avvio.h"

#include "platform/runtime/Errore.h"
#include "views/ArchivioViste.h"
#include "views/Disposizioni.h"

namespace norvel::views {

namespace {

constexpr const char* voceBase = "Vista predefinita";

adodb::Recordset& aperto(const adodb::RecordsetRef& recordset) {
    if (!recordset) throw erroreOggettoNonImpostato();
    return *recordset;
}

// The base layout is loaded where no preferred view was applied; a preferred view that stands for a
// base layout answers Empty, which counts as False, too.
void caricaPrimaVista(const VariabiliGlobali& sessione, const PartiAvvio& parti,
                      const Proprietario& di) {
    Variant applicata = false;
    if (const auto nome = vistaPreferita(aperto(sessione.gRecordsetViste), di))
        applicata = ApplicaVista(parti.griglia, sessione, *nome);
    if (!applicata.toBoolean()) CaricaVistaBase(parti.griglia, sessione, di.modulo);
}

void impostaTutto(const VariabiliGlobali& sessione, const PartiAvvio& parti) {
    const Proprietario di{testoSessione(sessione.gUser), testoSessione(sessione.gModulo)};
    parti.abilitaUltimo(permessoViste(aperto(sessione.gRecordsetOperatori), di.utente));
    caricaPrimaVista(sessione, parti, di);
    for (const std::string& nome : nomiViste(aperto(sessione.gRecordsetViste), di))
        parti.aggiungiVoce(nome, nome);
    parti.aggiungiVoce(prefissoBase + di.modulo, voceBase);
    parti.scriviTotale(aperto(sessione.gRecordset).RecordCount());
    if (equalsNumber(sessione.gFilterBar, 0)) parti.togliBarraFiltri();
    parti.avviaTimer();
}

} // namespace

void impostaStileGriglia(const VariabiliGlobali& sessione, const PartiAvvio& parti) {
    try {
        impostaTutto(sessione, parti);
    } catch (const Errore&) {
        return;
    }
}

} // namespace norvel::views
