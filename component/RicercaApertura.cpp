// The method that opens the search window: prepares it from the session's values, shows it and
// returns once it has been unloaded.
#include "component/Ricerca.h"
#include "component/SessioneInCorso.h"
#include "component/VariabiliGlobali.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "search_window/FinestraRicerca.h"

#include <cstdint>
#include <string>

namespace norvel {

namespace {

using search_window::frmRicerca; // asked anew for each step: it is always the one loaded instance

constexpr std::int16_t larghezzaPredefinita = 11355; // twips
constexpr std::int16_t altezzaPredefinita = 7000;    // twips

// The two switches are not symmetrical: 0 hides the one and shows the other.
void impostaBarre(const VariabiliGlobali& sessione) {
    if (equalsNumber(sessione.gStatusBar, 0)) frmRicerca().SetStatusBarVisible(false);
    if (equalsNumber(sessione.gToolbar, 0)) frmRicerca().SetBarraBaseVisible(true);
}

// The defaults are stored, so that the host reads them afterwards.
void impostaDimensioni(VariabiliGlobali& sessione) {
    if (equalsNumber(sessione.gWidth, 0)) sessione.gWidth = larghezzaPredefinita;
    if (equalsNumber(sessione.gHeight, 0)) sessione.gHeight = altezzaPredefinita;
    frmRicerca().SetHeight(sessione.gHeight.toSingle());
    frmRicerca().SetWidth(sessione.gWidth.toSingle());
}

void impostaPosizione(const VariabiliGlobali& sessione) {
    if (equalsNumber(sessione.gWindowsState, 1)) {
        frmRicerca().centraForm();
    } else if (equalsNumber(sessione.gWindowsState, 2)) {
        frmRicerca().SetWindowState(2);
    } else {
        frmRicerca().SetTop(sessione.gTop.toSingle());
        frmRicerca().SetLeft(sessione.gLeft.toSingle());
    }
}

// The grid is bound after it has been styled, so that a view's columns are there when rows arrive.
void collegaRighe(VariabiliGlobali& sessione) {
    frmRicerca().SetRecordset(sessione.gRecordset);
    frmRicerca().ImpostaStileGriglia();
    frmRicerca().CollegaGriglia();
    sessione.gFinestraPronta = false;
}

void preparaFinestra(Ricerca& ricerca) {
    VariabiliGlobali& sessione = variabiliGlobali();
    frmRicerca(); // loads the window, hidden
    impostaBarre(sessione);
    frmRicerca().SetCaption(sessione.gCaption.toText());
    impostaDimensioni(sessione);
    impostaPosizione(sessione);
    collegaRighe(sessione);
    ricerca.abilitaCombo();
}

void mostraErrore(const Errore& errore) {
    Messaggio messaggio;
    messaggio.testo = "Errore nella funzione NorvelRicerca.Ricerca\r" +
                      std::to_string(errore.numero()) + " - " + errore.descrizione();
    messaggio.icona = BoxIcon::Critical;
    mostraMessaggio(messaggio);
}

// Errors of the show are ignored, but for a window that is shown modally already: it is shown once
// more modelessly, which brings it to the front.
void mostraFinestra() {
    try {
        frmRicerca().Show(true);
    } catch (...) {
        if (erroreInCorso().numero() != search_window::erroreFormGiaVisualizzato) return;
        try {
            frmRicerca().Show(false);
        } catch (...) {
            return; // there is nothing more to show, and the call ends here anyway
        }
    }
}

} // namespace

Variant Ricerca::Cerca() {
    const SessioneInCorso sessioneInCorso;
    try {
        preparaFinestra(*this);
    } catch (...) {
        const Errore errore = erroreInCorso();
        // The window belongs to another thread, so no box can be shown on this one.
        if (errore == erroreAltroThread()) throw;
        mostraErrore(errore);
        return {};
    }
    mostraFinestra();
    return {};
}

} // namespace norvel
