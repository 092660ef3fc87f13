// The filter bar: its cells become the recordset's filter; the panel of comparison modes.
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "query/FiltroColonne.h"
#include "search_window/FiltroBarra.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Testi.h"

#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/timer.h>

namespace norvel::search_window {

namespace {

constexpr int modoContiene = 1; // what impostaOpzioni takes
constexpr int modoUguale = 2;
constexpr int modoDiverso = 3;

wxRadioButton* opzione(wxWindow* pannello, const char* testo, const char* aiuto) {
    auto* pulsante = new wxRadioButton(pannello, wxID_ANY, controls::toWx(testo));
    pulsante->SetToolTip(controls::toWx(aiuto));
    return pulsante;
}

std::string filtroInVigore(const adodb::Recordset& recordset) {
    const Variant filtro = recordset.Filter();
    return filtro.isText() ? filtro.text() : std::string();
}

} // namespace

// --- the panel ---

void FrmRicerca::creaPannello() {
    frameRicercaAvanzata = new wxPanel(Finestra);
    frameRicercaAvanzata->Hide();
    nessunaOpzione_ = new wxRadioButton(frameRicercaAvanzata, wxID_ANY, "", wxDefaultPosition,
                                        wxDefaultSize, wxRB_GROUP);
    nessunaOpzione_->Hide();
    optContiene = opzione(frameRicercaAvanzata, "Contiene", "Il testo cercato è dentro il valore");
    optUguale = opzione(frameRicercaAvanzata, "Uguale", "Il valore è quello cercato");
    optDiverso = opzione(frameRicercaAvanzata, "Diverso", "Il valore non è quello cercato");
    auto* riga = new wxBoxSizer(wxHORIZONTAL);
    const int spazio = Finestra->FromDIP(6);
    for (wxRadioButton* pulsante : {optContiene, optUguale, optDiverso})
        riga->Add(pulsante, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, spazio);
    riga->AddSpacer(spazio);
    frameRicercaAvanzata->SetSizer(riga);
    frameRicercaAvanzata->SetAutoLayout(false); // a panel that is cut does not squeeze its buttons
    impostaOpzioni(modoContiene);
}

void FrmRicerca::impostaOpzioni(int m) {
    opzioniPronte_ = false;
    nessunaOpzione_->SetValue(true); // takes the other three off
    if (m == modoContiene) optContiene->SetValue(true);
    if (m == modoUguale) optUguale->SetValue(true);
    if (m == modoDiverso) optDiverso->SetValue(true);
    opzioniPronte_ = true;
}

// The typed values are compared by "contains" whenever the panel has just been shown or hidden: a
// mode that nobody sees must not be in force.
void FrmRicerca::suDrop(const controls::Button&) {
    frameRicercaAvanzata->Show(!frameRicercaAvanzata->IsShown());
    ridimensiona();
    impostaOpzioni(modoContiene);
    filtraSubito();
}

bool FrmRicerca::sceltaMultipla() const {
    return BarraBase->Item("Drop").Value == 1;
}

// --- from the cells to the filter ---

void FrmRicerca::collegaFiltri() {
    attesaFiltro_->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { filtraSubito(); });
    Griglia->OnFilterChange = [this](int colonna) { suCambioFiltro(colonna); };
    Griglia->OnFilterEnter = [this](int) { filtraSubito(); };
    // Later: the click that left the cell is for the rows that were on show.
    Griglia->OnFilterLeave = [this](int) {
        if (attesaFiltro_->IsRunning()) Finestra->CallAfter([this] { filtraInSospeso(); });
    };
    for (wxRadioButton* pulsante : {optContiene, optUguale, optDiverso})
        pulsante->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) {
            if (opzioniPronte_) filtraSubito();
        });
}

void FrmRicerca::suCambioFiltro(int colonna) {
    ultimaCella_ = colonna;
    const auto& recordset = DBRicerca.Recordset();
    const int pausa = recordset ? pausaDigitazione(*recordset) : 0;
    if (pausa > 0)
        attesaFiltro_->StartOnce(pausa);
    else
        filtraSubito();
}

void FrmRicerca::filtraSubito() {
    applicaFiltro(sceltaMultipla());
}

void FrmRicerca::filtraInSospeso() {
    if (attesaFiltro_->IsRunning()) filtraSubito();
}

std::vector<query::ColonnaFiltro> FrmRicerca::celleFiltro() const {
    std::vector<query::ColonnaFiltro> celle;
    const grid::Columns& colonne = Griglia->Columns();
    celle.reserve(static_cast<std::size_t>(colonne.Count()));
    for (int i = 0; i < colonne.Count(); ++i)
        celle.push_back({colonne.Item(i).DataField, colonne.Item(i).FilterText});
    return celle;
}

// The filter-bar handling. multiplo: composes with the composer of several values, which is also
// taken where a cell holds several: a choice does not lose its meaning when the list's mode goes.
void FrmRicerca::applicaFiltro(bool multiplo) {
    attesaFiltro_->Stop();
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset) return;
    const auto celle = celleFiltro();
    const FiltroBarra barra =
        valutaBarra(celle, query::tipiDi(*recordset),
                    query::confrontoScelto(optDiverso->GetValue(), optUguale->GetValue()),
                    multiplo || contienePiuValori(celle));
    segnaCelle(barra.motivi);
    diciRifiuto(barra.rifiuto);
    if (barra.valido) impostaFiltro(barra.testo);
}

// A filter that is in force already is not set anew: the current record would be lost.
void FrmRicerca::impostaFiltro(const std::string& testo) {
    try {
        const adodb::RecordsetRef recordset = DBRicerca.Recordset();
        if (filtroInVigore(*recordset) != testo) recordset->SetFilter(testo);
        scriviStato(testoRecordSelezionati(recordset->RecordCount()), Conteggio::Selezionati);
    } catch (const Errore& errore) {
        segnaRifiutata(errore);
    }
}

void FrmRicerca::segnaCelle(const std::vector<std::string>& motivi) {
    for (std::size_t i = 0; i < motivi.size(); ++i)
        Griglia->SetFilterError(static_cast<int>(i), motivi[i]);
}

// What only the recordset itself found wrong is said at the cell that changed last.
void FrmRicerca::segnaRifiutata(const Errore& errore) {
    const auto celle = celleFiltro();
    int colonna = ultimaCella_;
    const auto piena = [&](int i) {
        return i >= 0 && i < static_cast<int>(celle.size()) &&
               !celle[static_cast<std::size_t>(i)].valore.empty();
    };
    for (int i = 0; !piena(colonna) && i < static_cast<int>(celle.size()); ++i)
        colonna = i;
    if (piena(colonna))
        Griglia->SetFilterError(colonna,
                                "Il filtro non è stato accettato: " + errore.descrizione());
}

void FrmRicerca::diciRifiuto(const std::string& rifiuto) {
    const bool nuovo = !rifiuto.empty() && rifiuto != rifiutoDetto_;
    rifiutoDetto_ = rifiuto;
    if (nuovo) mostraMessaggio(messaggioRifiuto(rifiuto));
}

} // namespace norvel::search_window
