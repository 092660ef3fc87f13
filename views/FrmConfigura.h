// The configuration window: the operator's views of the search, edited on a grid of their own.
#pragma once

#include "output/StileGriglia.h"
#include "platform/controls/DataControl.h"
#include "platform/grid/layout/Layout.h"
#include "views/ListaFinestra.h"
#include "views/RigheAnteprima.h"
#include "views/Salvataggio.h"
#include "views/VociMenu.h"

#include <array>
#include <memory>
#include <string>

class wxButton;
class wxCheckBox;
class wxComboBox;
class wxFrame;
class wxListBox;
class wxSizer;
class wxStaticText;
class wxTextCtrl;
class wxTimer;
class wxWindow;

namespace norvel::controls {
class ExplorerBar;
class ModalLoop;
} // namespace norvel::controls
namespace norvel::grid {
class Grid;
}

namespace norvel::views {

class PaginaConfigura;

// The grid shows the search window's rows through a clone, since both windows share one recordset
// and the search window's current row must stay where it is. It begins with the layout that the
// search window has; what is done to it reaches the search window at its next opening, by way of a
// saved view.
class FrmConfigura {
  public:
    // Loads the window, hidden. Raises what the recordset raises where it cannot be cloned, and
    // what a session value raises that is no text; no part of the window stays then.
    FrmConfigura(adodb::RecordsetRef righe, const grid::Layout& presente);
    ~FrmConfigura();
    FrmConfigura(const FrmConfigura&) = delete;
    FrmConfigura& operator=(const FrmConfigura&) = delete;

    void Show();    // modally; returns once it has been unloaded
    void Scarica(); // nothing is saved

    // The controls, under their designed names. Owned by the frame.
    wxFrame* Finestra = nullptr;
    controls::ExplorerBar* MenuBar = nullptr;
    grid::Grid* Griglia = nullptr;
    controls::DataControl DBRicerca;
    std::array<wxWindow*, pagineConfigura> FrmDimensioni{};
    wxButton* CmdChiudi = nullptr;
    std::unique_ptr<wxTimer> Timer1; // once: the window has appeared
    // Page 1: columns
    wxListBox* List1 = nullptr; // shown
    wxListBox* List2 = nullptr; // hidden
    wxButton* CmdSportaI = nullptr;
    wxButton* Command3 = nullptr;
    wxButton* CmdRimuoviTutti = nullptr;
    // Page 2: style
    wxCheckBox* ChkChekBox = nullptr;
    wxCheckBox* ChkColonne = nullptr;
    wxCheckBox* ChkEvidenzia = nullptr;
    wxCheckBox* ChkFacilitato = nullptr;
    wxCheckBox* ChkRaggruppamento = nullptr;
    wxCheckBox* chkRighe = nullptr;
    wxCheckBox* ChkSposta = nullptr;
    wxTextCtrl* txtColore1 = nullptr;
    wxTextCtrl* txtColore2 = nullptr;
    wxButton* Command1 = nullptr;
    wxButton* Command2 = nullptr;
    wxComboBox* CmbSize = nullptr;
    wxButton* CmdCarattere = nullptr;
    // Page 3: views
    std::array<wxStaticText*, 2> l1{}; // a double click on the first saves as base
    wxTextCtrl* txtNome = nullptr;
    wxCheckBox* ChkPredefinito = nullptr;
    wxListBox* Lista = nullptr;
    wxButton* CmdSalva = nullptr;
    wxButton* CmdAttiva = nullptr;
    wxButton* CmdEliminaVista = nullptr;
    wxButton* CmdCaricoBase = nullptr;

    static constexpr int intervalloTimer1 = 50; // milliseconds

    int PaginaMostrata() const { return pagina_; }

  private:
    FrmConfigura(); // without anything; from here on the destructor takes away what was made
    void carica(adodb::RecordsetRef righe, const grid::Layout& presente);

    // FrmConfiguraControlli.cpp: making and placing the controls
    void creaControlli();
    void creaPagine();
    void collegaEventi();
    void impostaMisure();
    void ridimensiona();
    double scala() const; // logical pixels a 1/96 inch

    // FrmConfiguraPagine.cpp: what stands on the pages
    PaginaConfigura* nuovaPagina(int pagina);
    void creaPosizione();
    void creaVisualizza();
    void creaStile();
    void creaSalva();
    wxSizer* creaListaColonne(PaginaConfigura* pagina, const char* titolo, wxListBox*& lista);
    wxSizer* creaSpunte(PaginaConfigura* pagina);
    wxSizer* creaColoriECarattere(PaginaConfigura* pagina);
    wxSizer* creaElencoViste(PaginaConfigura* pagina);

    // FrmConfiguraMenu.cpp: the side menu and the pages
    void suTimer1();
    void CreaMenu();
    void suVoce(const std::string& chiave);
    void mostraPagina(int pagina);

    // FrmConfiguraColonne.cpp: the column editor
    void collegaColonne();
    void caricaColonne();
    void spostaColonne(void (*come)(ListaVoci&, ListaVoci&, grid::Columns&, bool), bool visibile);
    void aggiornaPulsantiColonne();

    // FrmConfiguraStile.cpp: the style's controls
    void collegaStile();
    void mostraStile();
    output::ParteStile stile();
    void ChkColonne_Click();
    void ChkSposta_Click();
    void ChkRaggruppamento_Click();
    void CmbSize_Click();
    void CmdCarattere_Click();
    void cambiaColore(wxTextCtrl* testo, const grid::Style& presente,
                      void (*imposta)(const output::ParteStile&, const std::string&));

    // FrmConfiguraViste.cpp: the commands of views
    void collegaViste();
    void comando(void (*quale)(const VariabiliGlobali&, const PartiSalvataggio&));
    PartiSalvataggio parti();
    void aggiornaPulsantiViste();
    void togliBarraFiltri();

    std::unique_ptr<RigheAnteprima> righe_;
    std::unique_ptr<ListaFinestra> visibili_, nascoste_, viste_;
    controls::ModalLoop* modale_ = nullptr;
    bool scaricata_ = false;
    int pagina_ = 0;
    int largoMenu_ = 0;      // pixels
    std::string dimensione_; // what CmbSize applied last
};

// Unloads the window if it is loaded and loads it anew over these rows, with the layout that they
// are shown in; modal. Returns once it has been unloaded. Raises what loading it raises.
NR_API void apriFrmConfigura(adodb::RecordsetRef righe, const grid::Layout& presente);
// The loaded window, or null.
NR_API FrmConfigura* frmConfiguraReale();

} // namespace norvel::views
