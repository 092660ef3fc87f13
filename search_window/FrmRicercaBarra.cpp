// The toolbar's commands and the menu of views.
#include "component/VariabiliGlobali.h"
#include "output/StileGriglia.h"
#include "platform/controls/ToolBar.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Navigazione.h"
#include "search_window/RiordinaGriglia.h"
#include "search_window/Testi.h"
#include "views/Disposizioni.h"
#include "views/FrmConfigura.h"

namespace norvel::search_window {

// The keys in the order in which they are tried; the first that matches wins, any other does
// nothing, as «Taglia», which is designed without an action.
FrmRicerca::Comando FrmRicerca::comandoDi(std::string_view chiave) {
    static constexpr std::pair<const char*, Comando> comandi[] = {
        {"Apri", &FrmRicerca::suApri},
        {"excel", &FrmRicerca::suEsportaCsv},
        {"Html", &FrmRicerca::suEsportaHtml},
        {"stampa", &FrmRicerca::suStampa},
        {"primo", &FrmRicerca::suNaviga<vaiAlPrimo>},
        {"ultimo", &FrmRicerca::suNaviga<vaiAllUltimo>},
        {"indietro", &FrmRicerca::suNaviga<vaiIndietro>},
        {"avanti", &FrmRicerca::suNaviga<vaiAvanti>},
        {"chiudi", &FrmRicerca::suChiudi},
        {"configura", &FrmRicerca::suConfigura},
        {"facilitata", &FrmRicerca::suFacilitata},
        {"Drop", &FrmRicerca::suDrop},
        {"Modifica", &FrmRicerca::suModifica},
        {"copiaclip", &FrmRicerca::suCopiaAppunti},
        {"copia", &FrmRicerca::suEsportaExcel},
        {"Aggiorna", &FrmRicerca::suAggiorna},
    };
    for (const auto& [nome, comando] : comandi)
        if (equalsText(chiave, nome)) return comando;
    return nullptr;
}

// A filter still being typed holds for the command, too.
void FrmRicerca::suClicBarra(const controls::Button& pulsante) {
    try {
        if (!fineModifica(pulsante)) return;
        filtraInSospeso();
        if (const Comando comando = comandoDi(pulsante.Key)) (this->*comando)(pulsante);
    } catch (...) {
        mostraMessaggio(messaggioToolbar(erroreInCorso()));
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

void FrmRicerca::suAggiorna(const controls::Button& pulsante) {
    suNaviga<aggiornaElenco>(pulsante);
    scriviLettura();
}

// The configuration window, modal, over the rows and with the layout that are on show; then this
// window's abilitaCombo. The keyboard is in the grid afterwards, wherever it was.
void FrmRicerca::suConfigura(const controls::Button&) {
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset) throw erroreOggettoNonImpostato();
    views::apriFrmConfigura(recordset, Griglia->Layouts().Present());
    if (scaricata_) return;
    invertiCombo(*this);
    Griglia->SetFocus();
}

void FrmRicerca::suFacilitata(const controls::Button& pulsante) {
    Griglia->SplitAt(0).AlternatingRowStyle = pulsante.Value == 1;
    Griglia->Changed();
}

// The entries of "Apri". A grouped grid is sorted by its groups before the view is changed. The
// keyboard is in the rows afterwards: the filter cell that had it may not be in the new view.
void FrmRicerca::suMenuViste(const controls::ButtonMenu& voce) {
    try {
        if (!Griglia->EndEdit()) return;
        Griglia->SetFocus();
        if (raggruppata()) RiordinaGriglia();
        views::ApplicaVista(Griglia->Layouts(), variabiliGlobali(), voce.Key);
        riapplicaStile();
    } catch (...) {
        mostraMessaggio(messaggioToolbar(erroreInCorso()));
    }
}

bool FrmRicerca::raggruppata() const {
    return Griglia->Style().DataView == output::vistaRaggruppata;
}

// Sorts by the group columns. The arrow of a heading that was clicked says nothing true any more.
void FrmRicerca::RiordinaGriglia() {
    const bool riordinata = riordinaGriglia(
        {Griglia->Style().GroupColumns, [this] { Griglia->Refresh(); }, DBRicerca.Recordset()});
    if (riordinata) togliFrecce();
}

// What a layout does not decide alone, after it was loaded: no filter bar where the host asked for
// none, "facilitata" pressed as the rows alternate, the rows of a grouped view by their groups.
void FrmRicerca::riapplicaStile() {
    if (equalsNumber(variabiliGlobali().gFilterBar, 0)) togliBarraFiltri();
    mostraFacilitata();
    if (raggruppata()) RiordinaGriglia();
}

void FrmRicerca::mostraFacilitata() {
    BarraBase->Change("Facilitata", [this](controls::Button& facilitata) {
        facilitata.Value = Griglia->SplitAt(0).AlternatingRowStyle ? 1 : 0;
    });
}

} // namespace norvel::search_window
