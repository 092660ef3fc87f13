// The search window. One per process; the public class sees it as FinestraRicerca.
#pragma once

#include "platform/controls/DataControl.h"
#include "search_window/CaricoValori.h"
#include "search_window/FinestraRicerca.h"
#include "search_window/RecordsetPrivato.h"
#include "search_window/Restituzione.h"
#include "search_window/StatoLettura.h"

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class wxFrame;
class wxButton;
class wxPanel;
class wxRadioButton;
class wxRect;
class wxCommandEvent;
class wxTimer;

namespace norvel::controls {
class ModalLoop;
class ToolBar;
class StatusBar;
class ValueList;
struct Button;
struct ButtonMenu;
} // namespace norvel::controls
namespace norvel::grid {
class Grid;
}
namespace norvel::output {
struct AreaSelezionata;
struct ParteEsportazione;
} // namespace norvel::output
namespace norvel::query {
struct ColonnaFiltro;
}

namespace norvel::search_window {

// How an unload was asked for; only the first clears the answer.
enum class ModoScarico { MenuDiControllo = 0, Codice = 1 };

class FrmRicerca final : public FinestraRicerca, private controls::DataControl::Observer {
  public:
    // Loads the window, hidden, in its designed state. Brings the toolkit up on the calling thread.
    FrmRicerca();
    ~FrmRicerca() override;
    FrmRicerca(const FrmRicerca&) = delete;
    FrmRicerca& operator=(const FrmRicerca&) = delete;

    // FinestraRicerca
    void SetStatusBarVisible(bool visible) override;
    void SetBarraBaseVisible(bool visible) override;
    void SetCaption(const std::string& caption) override;
    void SetHeight(float twips) override;
    void SetWidth(float twips) override;
    void SetTop(float twips) override;
    void SetLeft(float twips) override;
    void SetWindowState(int state) override;
    void centraForm() override;
    void SetRecordset(adodb::RecordsetRef recordset) override;
    void ImpostaStileGriglia() override;
    void CollegaGriglia() override;
    int NumeroColonne() const override;
    bool FilterCombo(int colonna) const override;
    void SetFilterCombo(int colonna, bool value) override;
    void SetButtonVisible(std::string_view key, bool visible) override;
    void Show(bool modale) override;

    // Ends the session: the window goes, with all its state. The object itself is destroyed once
    // the handlers that are still running have returned.
    void Scarica(ModoScarico modo);

    // Writes the record counter into the status bar; errors are ignored (no recordset bound yet,
    // empty or closed: the panel keeps what it shows).
    void aggiornaContatore();

    // The controls, under their designed names. Owned by the frame.
    wxFrame* Finestra = nullptr;
    controls::ToolBar* BarraBase = nullptr;
    wxButton* CmdChiudi = nullptr;
    grid::Grid* Griglia = nullptr;
    controls::StatusBar* StatusBar = nullptr;
    controls::ValueList* List1 = nullptr; // a column's values, under its filter cell
    wxPanel* frameRicercaAvanzata = nullptr;
    wxRadioButton* optContiene = nullptr;
    wxRadioButton* optUguale = nullptr;
    wxRadioButton* optDiverso = nullptr;
    controls::DataControl DBRicerca;
    std::unique_ptr<wxTimer> Timer1; // 500 ms, once: the window is ready

    static constexpr int intervalloTimer1 = 500; // milliseconds

    // The column whose value list is open, or was last; -1: none yet.
    int colonnaFiltro = -1;
    // Milliseconds to wait after a key in the filter bar, by recordset (query/PausaDigitazione.h).
    std::function<int(const adodb::Recordset&)> pausaDigitazione;

    // Fills List1 for colonnaFiltro: the four fixed entries now, the column's values as their rows
    // come.
    void caricaListaValori();
    // Switches the buttons of the comparison modes off, then one on: 1 contains, 2 equal, 3
    // different, any other none. Filters nothing by itself.
    void impostaOpzioni(int m);

  private:
    // FrmRicercaControlli.cpp: making and placing the controls
    void creaControlli();
    void creaBarra();
    void collegaEventi();
    void ridimensiona();
    double scala() const; // logical pixels a 1/96 inch

    // FrmRicercaEventi.cpp: handlers
    void suTimer1();
    bool suScorciatoia(int codice, int modificatori);
    bool suTasto(int codice, int modificatori, bool suiDati);
    void suDoppioClic();
    Scelta scelta();
    bool attendiRighe();

    void togliBarraFiltri();

    // FrmRicercaBarra.cpp: the toolbar
    using Comando = void (FrmRicerca::*)(const controls::Button& pulsante);
    static Comando comandoDi(std::string_view chiave); // null: none
    void suMenuViste(const controls::ButtonMenu& voce);
    bool raggruppata() const;
    void RiordinaGriglia();
    void riapplicaStile();
    void mostraFacilitata();
    void suClicBarra(const controls::Button& pulsante);
    void suApri(const controls::Button& pulsante);
    void suChiudi(const controls::Button& pulsante);
    void suConfigura(const controls::Button& pulsante);
    void suFacilitata(const controls::Button& pulsante);
    template <void (*passo)(adodb::Recordset&)>
    void suNaviga(const controls::Button& pulsante);
    void suAggiorna(const controls::Button& pulsante);

    // FrmRicercaEsporta.cpp: clipboard, workbook, files
    output::AreaSelezionata areaSelezionata();
    void esporta(void (*comando)(const output::ParteEsportazione&));
    void suCopiaAppunti(const controls::Button& pulsante);
    void suEsportaExcel(const controls::Button& pulsante);
    void suEsportaHtml(const controls::Button& pulsante);
    void suEsportaCsv(const controls::Button& pulsante);

    // FrmRicercaModifica.cpp: editing in the grid
    void collegaModifica();
    void suModifica(const controls::Button& pulsante);
    void rilascia(const controls::Button& pulsante);
    bool fineModifica(const controls::Button& pulsante); // false: what is half typed was refused
    void chiudi(ModoScarico modo);

    // FrmRicercaFiltri.cpp: the filter bar and the panel of comparison modes
    void creaPannello();
    void collegaFiltri();
    void suCambioFiltro(int colonna);
    void filtraSubito();
    void filtraInSospeso();
    void applicaFiltro(bool multiplo);
    void impostaFiltro(const std::string& testo);
    void segnaCelle(const std::vector<std::string>& motivi);
    void segnaRifiutata(const Errore& errore);
    void diciRifiuto(const std::string& rifiuto);
    void suDrop(const controls::Button& pulsante);
    bool sceltaMultipla() const;
    std::vector<query::ColonnaFiltro> celleFiltro() const;

    // FrmRicercaLista.cpp: the value list
    void collegaLista();
    void suPulsanteFiltro(int colonna);
    void leggiValori();
    void suClicLista();
    void scegliVoce();
    void scegliVoci();
    void suListaChiusa(bool avevaIlFuoco);
    void aggiungiVoce(std::string_view voce);
    wxRect cellaFiltro(int colonna) const;

    // FrmRicercaLettura.cpp: rows that are coming
    void collegaLettura();
    void scriviLettura();
    void mostraLettura(const std::string& testo);
    bool interrompiLettura();
    void diciFine(const Errore& errore, const adodb::Recordset& recordset, bool chiesta);

    // FrmRicercaStampa.cpp: the print preview
    void suStampa(const controls::Button& pulsante);

    // FrmRicercaOrdine.cpp: sorting
    void suClicIntestazione(int colonna);
    void togliFrecce();

    // DataControl::Observer
    void RecordsetReplaced() override;
    void WillChangeRecordset(adodb::EventReasonEnum, adodb::EventStatusEnum&,
                             adodb::Recordset&) override;
    void RecordsetChangeComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                                 adodb::Recordset&) override;
    void MoveComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                      adodb::Recordset&) override;
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;
    void ViewChanged(adodb::Recordset&) override;

    // Which count the first panel shows, so that it is written again as rows arrive.
    enum class Conteggio { Nessuno, Totale, Contatore, Selezionati };
    void scriviStato(const std::string& testo, Conteggio conteggio);
    void riscriviConteggio();

    Conteggio conteggio_ = Conteggio::Nessuno;
    double altezza_ = 0, larghezza_ = 0; // twips, as last set
    controls::ModalLoop* modale_ = nullptr;
    bool mostrata_ = false;
    bool scaricata_ = false;
    RecordsetPrivato esportazione_; // what a workbook is filled from; made on first use
    bool inAttesa_ = false;         // a hand-back waits for rows still coming
    bool inApertura_ = false;       // SetRecordset waits for first rows; the host runs meanwhile
    std::string separatore_;        // between the values of a multiple choice

    std::unique_ptr<wxTimer> avvisoLettura_; // until what runs is told
    bool lavoroDetto_ = false;               // and it has been
    bool interruzione_ = false;              // Esc has asked to end what runs
    Aggiornamento aggiornamento_ = Aggiornamento::Fatto;

    wxRadioButton* nessunaOpzione_ = nullptr; // never shown: on while the three are off
    bool opzioniPronte_ = false;              // the three are not being set by code
    std::unique_ptr<wxTimer> attesaFiltro_;   // the operator is still typing
    int ultimaCella_ = -1;                    // whose text changed last
    std::string rifiutoDetto_;                // told to the operator, and still so
    CaricoValori valori_;
    std::unique_ptr<wxTimer> letturaValori_;
    std::chrono::steady_clock::time_point letturaIniziata_;
    std::set<std::string, std::less<>> giaScelte_; // of the open list: what its cell holds already
    bool daCella_ = false;                         // the list was opened from the cell being edited
    bool crescente_ = false; // direction of the last sort, whatever its column
};

// The real window as the process's window. The shared library does it when it is loaded; a program
// that links the folder statically, or a test that gave the process a window of its own, calls it.
NR_API void installaFrmRicerca();
// The loaded window, or null: for tests that drive it.
NR_API FrmRicerca* frmRicercaReale();

} // namespace norvel::search_window
