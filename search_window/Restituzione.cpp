#include "search_window/Restituzione.h"

#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "search_window/Testi.h"

#include <utility>

namespace norvel::search_window {

using adodb::RowCount;

namespace {

// A value as it stands in a composed text: Null adds nothing.
std::string comeTesto(const Variant& valore) {
    return valore.isNull() ? "" : valore.toText();
}

Variant valoreCampo(const VariabiliGlobali& sessione, adodb::Recordset& recordset) {
    return recordset.Fields()(comeTesto(sessione.gCampoRicerca)).Value();
}

std::string testoSelezione(const VariabiliGlobali& sessione, const Scelta& scelta) {
    std::string testo;
    while (scelta.selezionate() > 0) {
        scelta.vaiA(scelta.primaSelezionata());
        testo += comeTesto(valoreCampo(sessione, *scelta.recordset)) + "|";
        scelta.togliPrima();
    }
    return testo;
}

std::string testoTutti(const VariabiliGlobali& sessione, const Scelta& scelta) {
    adodb::Recordset& recordset = *scelta.recordset;
    std::string testo;
    RowCount contatore = 0;
    recordset.MoveFirst();
    while (!recordset.EOF_()) {
        scelta.stato(testoSelezionati(++contatore));
        testo += comeTesto(valoreCampo(sessione, recordset)) + "|";
        recordset.MoveNext();
    }
    return testo;
}

} // namespace

void restituisciRiga(VariabiliGlobali& sessione, const Scelta& scelta) {
    bool scegliere = false;
    try {
        if (!scelta.recordset) throw erroreOggettoNonImpostato();
        scegliere = scelta.recordset->RecordCount() > 0 && !sessione.gSoloRicerca;
    } catch (...) {
        mostraMessaggio(messaggioDblClick(erroreInCorso()));
        return;
    }
    if (!scegliere) return;
    try {
        Variant valore = valoreCampo(sessione, *scelta.recordset);
        if (sessione.gSelezioneMultipla) {
            sessione.gRisposta = comeTesto(valore) + "|";
            sessione.gSelezioneMultipla = false;
        } else {
            sessione.gRisposta = std::move(valore);
        }
        scelta.scarica();
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
}

void restituisciSelezione(VariabiliGlobali& sessione, const Scelta& scelta) {
    if (sessione.gSoloRicerca) return;
    if (!scelta.recordset) throw erroreOggettoNonImpostato();
    std::string testo;
    if (scelta.selezionate() > 0) {
        testo = testoSelezione(sessione, scelta);
    } else if (mostraMessaggio(domandaTuttiRecord()) == BoxAnswer::Yes) {
        if (!scelta.attendiRighe()) return;
        if (const auto interrotta = scelta.recordset->FetchError()) throw *interrotta;
        testo = testoTutti(sessione, scelta);
    }
    sessione.gRisposta = std::move(testo);
    sessione.gSelezioneMultipla = false;
    scelta.scarica();
}

} // namespace norvel::search_window
