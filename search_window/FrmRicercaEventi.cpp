// The window's handlers, each a few lines over a named procedure.
#include "component/VariabiliGlobali.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/ValueList.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "search_window/Attesa.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Scorciatoie.h"
#include "search_window/Testi.h"

#include <wx/frame.h>
#include <wx/timer.h>

#include <chrono>

namespace norvel::search_window {

using namespace adodb;

namespace {

constexpr auto intervalloConteggio =
    std::chrono::milliseconds(100); // between two paints of the count

} // namespace

void FrmRicerca::suTimer1() {
    Timer1->Stop();
    variabiliGlobali().gFinestraPronta = true;
}

// Enter in the data rows chooses; the grid itself answers it in a filter cell or a cell being
// edited.
bool FrmRicerca::suTasto(int codice, int modificatori, bool suiDati) {
    if (!suiDati || modificatori != wxMOD_NONE) return false;
    if (codice != WXK_RETURN && codice != WXK_NUMPAD_ENTER) return false;
    if (!variabiliGlobali().gFinestraPronta) return true;
    try {
        if (variabiliGlobali().gSelezioneMultipla)
            restituisciSelezione(variabiliGlobali(), scelta());
        else
            suDoppioClic();
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
    return true;
}

// Keys that no part of the window has taken. Enter chooses, with Ctrl as well: too early it does
// nothing.
bool FrmRicerca::suScorciatoia(int codice, int modificatori) {
    if (codice == WXK_ESCAPE && modificatori == wxMOD_NONE) return interrompiLettura();
    const Scorciatoia* const voce = scorciatoiaDi(codice, modificatori);
    if (!voce) return false;
    if (voce->codice == WXK_RETURN && !variabiliGlobali().gFinestraPronta) return true;
    List1->CloseUp();
    if (voce->menu)
        BarraBase->OpenMenu(voce->chiave);
    else
        BarraBase->Press(voce->chiave);
    return true;
}

void FrmRicerca::suDoppioClic() {
    restituisciRiga(variabiliGlobali(), scelta());
}

Scelta FrmRicerca::scelta() {
    Scelta parti;
    parti.recordset = DBRicerca.Recordset();
    parti.selezionate = [this] { return static_cast<RowCount>(Griglia->SelBookmarks().Count()); };
    parti.primaSelezionata = [this] { return Griglia->SelBookmarks().Item(0); };
    parti.togliPrima = [this] { Griglia->SelBookmarks().Remove(0); };
    parti.vaiA = [this](const Variant& bookmark) { Griglia->SetBookmark(bookmark); };
    // The walk over all rows handles no events: the count is painted by hand, now and then.
    parti.stato = [this, dipinto = std::chrono::steady_clock::time_point()](
                      const std::string& testo) mutable {
        scriviStato(testo, Conteggio::Nessuno);
        const auto ora = std::chrono::steady_clock::now();
        if (ora - dipinto < intervalloConteggio) return;
        StatusBar->Update();
        dipinto = ora;
    };
    parti.attendiRighe = [this] { return attendiRighe(); };
    parti.scarica = [this] { Scarica(ModoScarico::Codice); };
    return parti;
}

bool FrmRicerca::attendiRighe() {
    struct Attesa { // however it ends
        explicit Attesa(bool& inCorso) : inCorso_(inCorso) { inCorso_ = true; }
        ~Attesa() { inCorso_ = false; }
        Attesa(const Attesa&) = delete;
        Attesa& operator=(const Attesa&) = delete;

      private:
        bool& inCorso_;
    };
    const Attesa attesa(inAttesa_);
    return attendiLettura(*Finestra, *DBRicerca.Recordset());
}

// --- status line ---

void FrmRicerca::scriviStato(const std::string& testo, Conteggio conteggio) {
    StatusBar->SetPanelText(1, testo);
    conteggio_ = conteggio;
}

void FrmRicerca::aggiornaContatore() {
    const auto& recordset = DBRicerca.Recordset();
    if (!recordset) return;
    try {
        scriviStato(testoContatore(recordset->AbsolutePosition(), recordset->RecordCount()),
                    Conteggio::Contatore);
    } catch (const Errore&) {
        return; // the panel keeps what it shows
    }
}

void FrmRicerca::riscriviConteggio() {
    if (conteggio_ == Conteggio::Contatore) aggiornaContatore();
    const auto& recordset = DBRicerca.Recordset();
    if (!recordset) return;
    try {
        if (conteggio_ == Conteggio::Totale)
            scriviStato(testoTotale(recordset->RecordCount()), Conteggio::Totale);
        if (conteggio_ == Conteggio::Selezionati)
            scriviStato(testoRecordSelezionati(recordset->RecordCount()), Conteggio::Selezionati);
    } catch (const Errore&) { // one that was closed
        return;
    }
}

// --- the recordset's events ---

void FrmRicerca::MoveComplete(EventReasonEnum, const Errore*, EventStatusEnum, Recordset&) {
    aggiornaContatore();
}

// A new order leaves the current record where it is, at another place among the rows. A recordset
// that closes changes nothing here.
void FrmRicerca::ViewChanged(Recordset& recordset) {
    if ((recordset.State() & adStateOpen) == 0) return;
    riscriviConteggio();
    scriviLettura();
}

} // namespace norvel::search_window
