// Rows that are coming, and how the operator ends their coming: what the second panel of the status
// bar says, and Esc.
#include "platform/adodb/Errors.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Misure.h"
#include "search_window/Testi.h"

#include <wx/frame.h>
#include <wx/timer.h>

#include <utility>

namespace norvel::search_window {

using namespace adodb;

namespace {

constexpr int primaDellAvviso = 400; // milliseconds: what is over sooner needs no word
constexpr int pannelloLettura = 2;

} // namespace

// --- what the panel says ---

void FrmRicerca::collegaLettura() {
    avvisoLettura_->Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        lavoroDetto_ = true;
        scriviLettura();
    });
}

// What runs is told after a moment, what it came to at once. Errors are ignored, as the counter's.
void FrmRicerca::scriviLettura() {
    const auto& recordset = DBRicerca.Recordset();
    if (!recordset || scaricata_) return;
    try {
        StatoLettura stato = statoLettura(*recordset);
        stato.interruzione = interruzione_;
        stato.aggiornamento = aggiornamento_;
        const bool lavora = stato.lavoro != StatoLettura::Lavoro::Nessuno;
        if (!lavora) {
            avvisoLettura_->Stop();
            lavoroDetto_ = false;
        } else if (!lavoroDetto_ && !avvisoLettura_->IsRunning()) {
            avvisoLettura_->StartOnce(primaDellAvviso);
        }
        mostraLettura(lavora && !lavoroDetto_ ? std::string() : testoLettura(stato));
    } catch (const Errore&) {
        return; // the panel keeps what it shows
    }
}

// The text is in the tip, too: a narrow window shows the beginning of it only.
void FrmRicerca::mostraLettura(const std::string& testo) {
    if (StatusBar->PanelText(pannelloLettura) == testo) return;
    StatusBar->SetPanelText(pannelloLettura, testo);
    if (testo.empty())
        StatusBar->UnsetToolTip();
    else
        StatusBar->SetToolTip(controls::toWx(testo));
}

// --- Esc ---

// Esc that no part of the window had a use for (an open list, a cell or a row being edited, a
// filter cell, a selection come first) ends what runs on the database: a refresh, whose old rows
// stay then, or the coming of rows, of which those that came stay. False: nothing runs.
bool FrmRicerca::interrompiLettura() {
    const RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset || !inLavoro(*recordset)) return false;
    if (interruzione_) return true; // asked already
    interruzione_ = true;
    try {
        recordset->Cancel();
    } catch (...) { // it runs on
        interruzione_ = false;
        mostraErroreModulo(erroreInCorso());
    }
    scriviLettura();
    return true;
}

// An end that the operator asked for needs no box to click away, where the status bar says it.
void FrmRicerca::diciFine(const Errore& errore, const Recordset& recordset, bool chiesta) {
    if (chiesta && errore.numero() == adErrOperationCancelled && StatusBar->IsShown()) return;
    mostraMessaggio(aggiornamento_ == Aggiornamento::Fatto
                        ? messaggioLetturaInterrotta(errore, recordset.RecordCount())
                        : messaggioAggiornamento(errore, aggiornamento_));
    // The box may have come before the window had settled its focus: the rows get it, or Enter
    // would press whatever button the window system took instead.
    if (!scaricata_ && Griglia->focusArea() == grid::Area::Data) Griglia->SetFocus();
}

// --- the recordset's events ---

void FrmRicerca::RecordsetReplaced() {
    interruzione_ = false;
    aggiornamento_ = Aggiornamento::Fatto;
    scriviLettura();
}

// What the last refresh came to, and an Esc for it, hold no more once another one begins, whoever
// asked for it.
void FrmRicerca::WillChangeRecordset(EventReasonEnum motivo, EventStatusEnum&, Recordset&) {
    if (motivo != adRsnRequery) return;
    interruzione_ = false;
    aggiornamento_ = Aggiornamento::Fatto;
}

void FrmRicerca::RecordsetChangeComplete(EventReasonEnum motivo, const Errore* errore,
                                         EventStatusEnum, Recordset&) {
    if (motivo != adRsnRequery) return;
    aggiornamento_ = Aggiornamento::Fatto;
    if (!errore) { // where Esc met its first rows, it was for the others, too
        if (std::exchange(interruzione_, false))
            Finestra->CallAfter([this] { interrompiLettura(); });
        return;
    }
    aggiornamento_ = interruzione_ && errore->numero() == adErrOperationCancelled
                         ? Aggiornamento::Interrotto
                         : Aggiornamento::NonRiuscito;
}

void FrmRicerca::FetchProgress(RowCount, RowCount, EventStatusEnum, Recordset&) {
    riscriviConteggio();
    scriviLettura();
}

void FrmRicerca::FetchComplete(const Errore* error, EventStatusEnum, Recordset& recordset) {
    misureFinestra().fineLettura = std::chrono::steady_clock::now();
    misureFinestra().righeLette = recordset.RecordCount();
    const bool chiesta = std::exchange(interruzione_, false);
    riscriviConteggio();
    scriviLettura();
    if (error && !inAttesa_) // whoever waits for the rows shows the error itself
        diciFine(*error, recordset, chiesta);
}

} // namespace norvel::search_window
