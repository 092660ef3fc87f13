// The toolbar's commands and the menu of views.
#include "component/VariabiliGlobali.h"
#include "platform/controls/ToolBar.h"
#include "platform/grid/Grid.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Navigazione.h"
#include "search_window/Testi.h"
#include "views/Disposizioni.h"

namespace norvel::search_window {

namespace {

using Comando = void (FrmRicerca::*)(const controls::Button& pulsante);

} // namespace

// The first key that matches wins; any other does nothing.
void FrmRicerca::suClicBarra(const controls::Button& pulsante) {
    static constexpr std::pair<const char*, Comando> comandi[] = {
        {"Apri", &FrmRicerca::suApri},
        {"primo", &FrmRicerca::suNaviga<vaiAlPrimo>},
        {"ultimo", &FrmRicerca::suNaviga<vaiAllUltimo>},
        {"indietro", &FrmRicerca::suNaviga<vaiIndietro>},
        {"avanti", &FrmRicerca::suNaviga<vaiAvanti>},
        {"chiudi", &FrmRicerca::suChiudi},
        {"facilitata", &FrmRicerca::suFacilitata},
        {"Drop", &FrmRicerca::suDrop},
        {"Aggiorna", &FrmRicerca::suNaviga<aggiornaElenco>},
    };
    try {
        for (const auto& [chiave, comando] : comandi)
            if (equalsText(pulsante.Key, chiave)) return (this->*comando)(pulsante);
    } catch (const Errore& errore) {
        mostraMessaggio(messaggioToolbar(errore));
    }
}

void FrmRicerca::suApri(const controls::Button&) {
    if (variabiliGlobali().gSelezioneMultipla) restituisciSelezione(variabiliGlobali(), scelta());
}

void FrmRicerca::suChiudi(const controls::Button&) {
    variabiliGlobali().gRisposta = "";
    Scarica(ModoScarico::Codice);
}

template <void (*passo)(adodb::Recordset&)>
void FrmRicerca::suNaviga(const controls::Button&) {
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset) throw erroreOggettoNonImpostato();
    passo(*recordset);
}

void FrmRicerca::suFacilitata(const controls::Button& pulsante) {
    Griglia->SplitAt(0).AlternatingRowStyle = pulsante.Value == 1;
    Griglia->Changed();
}

// The entries of "Apri": the view of that name, whatever filter bar it was saved with where the
// host asked for none.
void FrmRicerca::suMenuViste(const controls::ButtonMenu& voce) {
    try {
        const VariabiliGlobali& sessione = variabiliGlobali();
        views::ApplicaVista(Griglia->Layouts(), sessione, voce.Key);
        if (equalsNumber(sessione.gFilterBar, 0)) togliBarraFiltri();
    } catch (const Errore& errore) {
        mostraMessaggio(messaggioToolbar(errore));
    }
}

} // namespace norvel::search_window
