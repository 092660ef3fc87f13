// The value list under a filter cell: filling it, and what a choice in it does.
#include "component/VariabiliGlobali.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/ValueList.h"
#include "platform/grid/Grid.h"
#include "query/Condizioni.h"
#include "query/ListaValori.h"
#include "search_window/FrmRicerca.h"

#include <wx/frame.h>
#include <wx/timer.h>

namespace norvel::search_window {

namespace {

constexpr int battito = 20; // milliseconds between two looks at the rows
constexpr auto perBattito = std::chrono::milliseconds(10); // spent on reading them
constexpr auto primaDellaNota = std::chrono::milliseconds(250);
constexpr const char* notaLettura = "Lettura dei valori in corso";
constexpr const char* notaFallita = "Lettura dei valori non riuscita";

} // namespace

void FrmRicerca::collegaLista() {
    Griglia->OnFilterButton = [this](int colonna) { suPulsanteFiltro(colonna); };
    List1->OnClick = [this] { suClicLista(); };
    List1->OnCloseUp = [this](bool avevaIlFuoco) { suListaChiusa(avevaIlFuoco); };
    letturaValori_->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { leggiValori(); });
}

// The cell's button opens the list and closes it. The filter that the values are taken through is
// the one that the cells say.
void FrmRicerca::suPulsanteFiltro(int colonna) {
    const bool eraAperta = List1->IsShown() && colonnaFiltro == colonna;
    List1->CloseUp();
    if (eraAperta) return;
    filtraInSospeso();
    colonnaFiltro = colonna;
    daCella_ = Griglia->FilterColumn() == colonna;
    List1->SetMultiSelect(sceltaMultipla());
    giaScelte_.clear();
    if (sceltaMultipla())
        for (const auto valore : query::valoriDi(Griglia->Columns().Item(colonna).FilterText))
            giaScelte_.emplace(valore);
    caricaListaValori();
    List1->DropUnder(cellaFiltro(colonna), Griglia->GetRect());
}

wxRect FrmRicerca::cellaFiltro(int colonna) const {
    wxRect cella = Griglia->FilterCellRect(colonna);
    cella.Offset(Griglia->GetPosition());
    return cella;
}

void FrmRicerca::caricaListaValori() {
    List1->Clear();
    for (const char* voce : query::vociFisse)
        aggiungiVoce(voce);
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset) return;
    valori_.avvia(*recordset, Griglia->Columns().Item(colonnaFiltro).DataField,
                  variabiliGlobali().gQueryBase);
    letturaIniziata_ = std::chrono::steady_clock::now();
    letturaValori_->Start(battito);
    leggiValori(); // a short list is there at once
}

void FrmRicerca::aggiungiVoce(std::string_view voce) {
    List1->AddItem(voce);
    if (giaScelte_.contains(voce)) List1->SetSelected(List1->ListCount() - 1, true);
}

void FrmRicerca::leggiValori() {
    valori_.leggi(perBattito, [this](std::string_view voce) { aggiungiVoce(voce); });
    const auto daQuando = std::chrono::steady_clock::now() - letturaIniziata_;
    const bool lunga = valori_.inCorso() && daQuando > primaDellaNota;
    List1->SetNote(lunga ? notaLettura : valori_.fallito() ? notaFallita : "");
    if (!valori_.inCorso()) letturaValori_->Stop();
}

// An error leaves the cell as far as it was set.
void FrmRicerca::suClicLista() {
    try {
        ultimaCella_ = colonnaFiltro;
        if (sceltaMultipla())
            scegliVoci();
        else
            scegliVoce();
    } catch (const Errore&) {
        return;
    }
}

void FrmRicerca::scegliVoce() {
    const bool tutti = List1->ListIndex() == 0;
    Griglia->SetFilterText(colonnaFiltro, tutti ? std::string() : List1->Text());
    List1->CloseUp();
    applicaFiltro(false);
}

void FrmRicerca::scegliVoci() {
    std::string scelte;
    const bool tutti = List1->ListIndex() == 0;
    for (std::size_t i = 0; !tutti && i < List1->ListCount(); ++i) {
        if (!List1->Selected(i)) continue;
        if (!scelte.empty()) scelte += separatore_;
        scelte += List1->List(i);
    }
    Griglia->SetFilterText(colonnaFiltro, scelte);
    if (tutti) List1->CloseUp();
    applicaFiltro(true);
}

// The keyboard goes back to where the list was opened from, unless the operator has taken it
// elsewhere.
void FrmRicerca::suListaChiusa(bool avevaIlFuoco) {
    letturaValori_->Stop();
    valori_.annulla();
    if (!avevaIlFuoco || scaricata_) return;
    if (!daCella_ || !Griglia->EnterFilterCell(colonnaFiltro)) Griglia->SetFocus();
}

} // namespace norvel::search_window
