// The search window. One per process; the public class sees it as FinestraRicerca.
#pragma once

#include "platform/controls/DataControl.h"
#include "search_window/FinestraRicerca.h"
#include "search_window/Restituzione.h"

#include <memory>

class wxFrame;
class wxButton;
class wxCommandEvent;
class wxTimer;

namespace norvel::controls {
class ModalLoop;
class ToolBar;
class StatusBar;
struct Button;
} // namespace norvel::controls
namespace norvel::grid {
class Grid;
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
    controls::DataControl DBRicerca;
    std::unique_ptr<wxTimer> Timer1; // 500 ms, once: the window is ready

    static constexpr int intervalloTimer1 = 500; // milliseconds

  private:
    // FrmRicercaControlli.cpp: making and placing the controls
    void creaControlli();
    void creaBarra();
    void collegaEventi();
    void ridimensiona();
    double scala() const; // logical pixels a 1/96 inch

    // FrmRicercaEventi.cpp: handlers
    void suTimer1();
    void suClicBarra(const controls::Button& pulsante);
    bool suTasto(int codice, int modificatori, bool suiDati);
    void suDoppioClic();
    Scelta scelta();
    bool attendiRighe();

    // DataControl::Observer
    void MoveComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                      adodb::Recordset&) override;
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;

    // Which count the first panel shows, so that it is written again as rows arrive.
    enum class Conteggio { Nessuno, Totale, Contatore };
    void scriviStato(const std::string& testo, Conteggio conteggio);
    void riscriviConteggio();

    Conteggio conteggio_ = Conteggio::Nessuno;
    double altezza_ = 0, larghezza_ = 0; // twips, as last set
    controls::ModalLoop* modale_ = nullptr;
    bool mostrata_ = false;
    bool scaricata_ = false;
    bool inAttesa_ = false;  // a hand-back waits for rows still coming
    std::string separatore_; // between the values of a multiple choice
};

// The real window as the process's window. The shared library does it when it is loaded; a program
// that links the folder statically, or a test that gave the process a window of its own, calls it.
NR_API void installaFrmRicerca();
// The loaded window, or null: for tests that drive it.
NR_API FrmRicerca* frmRicercaReale();

} // namespace norvel::search_window
