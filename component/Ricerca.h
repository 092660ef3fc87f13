// The public class: all that a host touches. It sets the properties, calls Cerca() and reads
// Risposta().
//
//     norvel::Ricerca ricerca;
//     ricerca.SetRecordset(righe);
//     ricerca.SetCampoRicerca("codice");
//     ricerca.Cerca();
//     std::cout << ricerca.Risposta() << '\n';
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Api.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Variant.h"

#include <string>

namespace norvel {

// The Errore that a call from a second thread gets while the window is open on another one: 430,
// "La finestra di ricerca è aperta in un altro thread".
NR_API Errore erroreAltroThread();

// One search session. Objects hold no state of their own: every property stores into, and reads
// from, the one session of the process, so that two objects share every setting, and a new object
// finds what the last one left. Nothing is reset between two searches except what a member says.
//
// Texts are UTF-8. Switches and geometry are texts, stored as given; they are read as numbers
// (Italian conventions) only where Cerca() uses them. A getter whose stored value has no reading as
// its type raises Errore 13, or 94 on Null; setters raise nothing unless stated.
//
// Threads: the windows live on the thread that calls Cerca(). Properties are not guarded: set and
// read them on that thread.
class NR_API Ricerca {
  public:
    // Both set SoloRicerca to False and touch nothing else.
    Ricerca();
    ~Ricerca();
    Ricerca(const Ricerca&) = delete;
    Ricerca& operator=(const Ricerca&) = delete;

    // --- places and people ---
    // Folder of the operator's personal layout files, with its last separator.
    std::string PercorsoPers() const;
    void SetPercorsoPers(const std::string& valore);
    // Base folder of the host's installation, with its last separator; "parametri\" and "export\"
    // hang under it.
    std::string Percorso() const;
    void SetPercorso(const std::string& valore);
    // Code of the operator at work: key of personal views.
    std::string User() const;
    void SetUser(const std::string& valore);

    // --- the answer ---
    // What was chosen: the value of CampoRicerca as text; of several rows each value followed by
    // "|"; "" when the window was closed by its close box. Not cleared when a search starts: after
    // a call that failed it is still the last search's. Raises 94 where the chosen field is Null.
    std::string Risposta() const;

    // --- the search ---
    // Name of the calling module, the search's code: key of views and of layout files.
    std::string Modulo() const;
    void SetModulo(const std::string& valore);
    // True: browse only, choosing a row hands nothing back.
    bool SoloRicerca() const;
    void SetSoloRicerca(bool valore);

    // --- the window ---
    // The window's title.
    std::string Caption() const;
    void SetCaption(const std::string& valore);
    // 0 or unset hides the status bar; any other number leaves it as designed (visible).
    std::string StatusBar() const;
    void SetStatusBar(const std::string& valore);
    // 0 or unset shows the toolbar; any other number leaves it as designed (visible as well).
    std::string Toolbar() const;
    void SetToolbar(const std::string& valore);
    // Place of the window in twips; used where WindowsState is neither 1 nor 2. Unset is 0.
    std::string Top() const;
    void SetTop(const std::string& valore);
    std::string Left() const;
    void SetLeft(const std::string& valore);
    // Size of the window in twips. 0 or unset: Cerca() stores 7000 and 11355, which the getters
    // report from then on.
    std::string Height() const;
    void SetHeight(const std::string& valore);
    std::string Width() const;
    void SetWidth(const std::string& valore);
    // 1 centres the window on the screen, 2 maximises it, anything else places it at Top, Left.
    std::string WindowsState() const;
    void SetWindowsState(const std::string& valore);

    // True lets several rows be handed back at once. It holds for one answer: the window sets it to
    // False when it hands back. The getter does not report what was set: it is WindowsState as a
    // Boolean (unset or "0" False, another number True), as hosts have always found it.
    bool SelezioneMultipla() const;
    void SetSelezioneMultipla(bool valore);
    // 0 switches the filter bar off.
    std::string FilterBar() const;
    void SetFilterBar(const std::string& valore);
    // Name of the field whose value is handed back; case-blind.
    std::string CampoRicerca() const;
    void SetCampoRicerca(const std::string& valore);
    // Names of the fields that the operator may edit, separated by ";". A text that is not empty is
    // split at every ";" and makes the toolbar's button "Modifica" visible, loading the window if
    // need be (the list is stored even where that fails); an empty one changes nothing. The getter
    // joins the names with ";".
    std::string AbilitaModificaCampi() const;
    void SetAbilitaModificaCampi(const std::string& valore);

    // The method that automation hosts and the C interface call Ricerca; C++ keeps that name for
    // the class. Opens the search window over Recordset and returns when it has been unloaded. The
    // result is always Empty: the answer is in Risposta().
    //
    // Failures while the window is prepared (no display, a switch or size that is no number, a
    // recordset that refuses) are shown in a message box, "Errore nella funzione
    // NorvelRicerca.Ricerca", and end the call; the window may stay loaded, hidden. Called again
    // from the window's own event loop, it prepares the window anew, shows it modelessly and
    // returns at once. Raises nothing but erroreAltroThread(), on a call from another thread while
    // the window is open.
    Variant Cerca();

    // Inverts the filter-combo switch of every column of the grid. Cerca() calls it once before it
    // shows the window.
    void abilitaCombo();

    // The base query of the search, for the columns' value lists.
    void SetQueryBase(const std::string& valore);

    // --- the host's data; each keeps a counted reference, a null one is Nothing ---
    // The rows to search: open, and left open.
    void SetRecordset(adodb::RecordsetRef valore);
    // The operators (fields codiceutente, ricerchepers).
    void SetRecordsetOperatori(adodb::RecordsetRef valore);
    // The personal views (fields codiceoperatore, codicericerca, NomeVista, preferito).
    void SetRecordsetViste(adodb::RecordsetRef valore);

    // The component's version: "1.000.094".
    std::string Ver() const;
};

} // namespace norvel
