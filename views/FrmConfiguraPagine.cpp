// What stands on the four pages.
#include "platform/controls/WxText.h"
#include "views/FrmConfigura.h"
#include "views/PaginaConfigura.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <initializer_list>

namespace norvel::views {

using controls::toWx;

namespace {

constexpr int largoLista = 150; // logical pixels at 96 dpi, at least
constexpr int altoLista = 96;   // likewise, at least
constexpr int largoBordi = 28;  // likewise, of a text box and its arrow

wxStaticText* testo(wxWindow* su, const char* parole) {
    return new wxStaticText(su, wxID_ANY, toWx(parole));
}

wxButton* pulsante(wxWindow* su, const char* parole) {
    return new wxButton(su, wxID_ANY, toWx(parole));
}

wxCheckBox* spunta(wxWindow* su, const char* parole) {
    return new wxCheckBox(su, wxID_ANY, toWx(parole));
}

// Buttons or check boxes one below the other, each in its field of the window.
template <class Controllo>
struct Nuovo {
    Controllo*& campo;
    const char* parole;
};
template <class Controllo>
wxSizer* incolonna(PaginaConfigura* pagina, int comeStanno, int sotto,
                   std::initializer_list<Nuovo<Controllo>> tutti) {
    auto* colonna = new wxBoxSizer(wxVERTICAL);
    for (const Nuovo<Controllo>& nuovo : tutti) {
        nuovo.campo = new Controllo(pagina, wxID_ANY, toWx(nuovo.parole));
        colonna->Add(nuovo.campo, 0, comeStanno | wxBOTTOM, sotto);
    }
    return colonna;
}
wxSizer* incolonnaPulsanti(PaginaConfigura* pagina,
                           std::initializer_list<Nuovo<wxButton>> pulsanti) {
    return incolonna(pagina, wxEXPAND, pagina->Spazio(), pulsanti);
}

// As high as a button, whose best size follows the theme's font from the start, and wide enough for
// that text.
void comePulsante(wxWindow& casella, const wxButton& pulsante, const char* testo) {
    int largo = 0;
    casella.GetTextExtent(toWx(testo), &largo, nullptr);
    const wxSize minima(largo + casella.FromDIP(largoBordi), pulsante.GetBestSize().y);
    casella.SetMinSize(minima);
    casella.SetInitialSize(minima);
}

wxListBox* lista(wxWindow* su) {
    return new wxListBox(su, wxID_ANY, wxDefaultPosition,
                         su->FromDIP(wxSize(largoLista, altoLista)), 0, nullptr, wxLB_SINGLE);
}

} // namespace

// With its title and description, as the side menu has them.
PaginaConfigura* FrmConfigura::nuovaPagina(int pagina) {
    const VoceMenu& voce = voceDiPagina(pagina);
    auto* nuova = new PaginaConfigura(Finestra, voce.testo, voce.descrizione);
    FrmDimensioni[static_cast<std::size_t>(pagina)] = nuova;
    return nuova;
}

void FrmConfigura::creaPosizione() {
    PaginaConfigura* pagina = nuovaPagina(0);
    for (const char* riga :
         {"Per spostare una colonna trascinarne l'intestazione, qui sopra, dove deve stare.",
          "Per allargarla o restringerla trascinare il bordo destro dell'intestazione; un doppio "
          "clic sul bordo la adatta al contenuto.",
          "Dalla tastiera, nella griglia: Ctrl+Maiusc+Freccia sposta la colonna corrente.",
          "Le modifiche restano nella vista solo dopo il salvataggio."})
        pagina->AggiungiTesto(pagina->Contenuto(), riga);
}

wxSizer* FrmConfigura::creaListaColonne(PaginaConfigura* pagina, const char* titolo,
                                        wxListBox*& dove) {
    auto* colonna = new wxBoxSizer(wxVERTICAL);
    colonna->Add(testo(pagina, titolo), 0, wxBOTTOM, pagina->Spazio() / 2);
    dove = lista(pagina);
    colonna->Add(dove, 1, wxEXPAND);
    return colonna;
}

void FrmConfigura::creaVisualizza() {
    PaginaConfigura* pagina = nuovaPagina(1);
    auto* riga = new wxBoxSizer(wxHORIZONTAL);
    riga->Add(creaListaColonne(pagina, "Colonne &visibili", List1), 1, wxEXPAND);
    riga->Add(incolonnaPulsanti(pagina, {{CmdSportaI, "&Nascondi >"},
                                         {Command3, "< &Mostra"},
                                         {CmdRimuoviTutti, "Nascondi &tutte >>"}}),
              0, wxALIGN_CENTRE_VERTICAL | wxLEFT | wxRIGHT, pagina->Spazio());
    riga->Add(creaListaColonne(pagina, "Colonne n&ascoste", List2), 1, wxEXPAND);
    pagina->Contenuto().Add(riga, 1, wxEXPAND);
}

wxSizer* FrmConfigura::creaSpunte(PaginaConfigura* pagina) {
    return incolonna<wxCheckBox>(pagina, 0, pagina->Spazio() / 2,
                                 {{ChkChekBox, "Visualizza ChekBox per valori 0 -1"},
                                  {ChkColonne, "Ridimensiona Colonne Bloccate"},
                                  {ChkEvidenzia, "Evidenzia tutta la riga "},
                                  {ChkFacilitato, "Lettura Facilitata"},
                                  {ChkRaggruppamento, "Attiva Raggruppamento"},
                                  {chkRighe, "Ridimensiona Righe"},
                                  {ChkSposta, "Sposta Colonne"}});
}

// Labels in one column, what they name in the next.
wxSizer* FrmConfigura::creaColoriECarattere(PaginaConfigura* pagina) {
    const int bordo = pagina->Spazio();
    auto* griglia = new wxFlexGridSizer(3, bordo, bordo);
    const auto colore = [&](const char* etichetta, wxTextCtrl*& casella, wxButton*& scegli) {
        griglia->Add(testo(pagina, etichetta), 0, wxALIGN_CENTRE_VERTICAL);
        casella = new wxTextCtrl(pagina, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                 wxTE_READONLY);
        griglia->Add(casella, 0, wxALIGN_CENTRE_VERTICAL | wxEXPAND);
        scegli = new wxButton(pagina, wxID_ANY, toWx("…"), wxDefaultPosition, wxDefaultSize,
                              wxBU_EXACTFIT);
        scegli->SetToolTip(toWx("Scegli il colore"));
        comePulsante(*casella, *scegli, "-2147483648");
        griglia->Add(scegli, 0, wxALIGN_CENTRE_VERTICAL);
    };
    colore("Colore sfondo righe pari", txtColore1, Command1);
    colore("Colore sfondo righe dispari", txtColore2, Command2);
    griglia->Add(testo(pagina, "Dimensione carattere"), 0, wxALIGN_CENTRE_VERTICAL);
    CmbSize = new wxComboBox(pagina, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                             nullptr, wxCB_DROPDOWN | wxTE_PROCESS_ENTER);
    comePulsante(*CmbSize, *Command1, "00000000");
    griglia->Add(CmbSize, 0, wxALIGN_CENTRE_VERTICAL | wxEXPAND);
    griglia->AddSpacer(0);
    CmdCarattere = pulsante(pagina, "Cambia Carattere");
    griglia->Add(CmdCarattere, 0, wxALIGN_CENTRE_VERTICAL);
    return griglia;
}

void FrmConfigura::creaStile() {
    PaginaConfigura* pagina = nuovaPagina(2);
    const int bordo = pagina->Spazio();
    auto* riquadro = new wxStaticBoxSizer(wxHORIZONTAL, pagina, "Modifica stile Griglia");
    riquadro->Add(creaSpunte(pagina), 0, wxALL, bordo);
    riquadro->AddSpacer(bordo);
    riquadro->Add(creaColoriECarattere(pagina), 0, wxALL, bordo);
    pagina->Contenuto().Add(riquadro, 0, wxEXPAND);
}

wxSizer* FrmConfigura::creaElencoViste(PaginaConfigura* pagina) {
    auto* riga = new wxBoxSizer(wxHORIZONTAL);
    Lista = lista(pagina);
    riga->Add(Lista, 1, wxEXPAND);
    riga->Add(incolonnaPulsanti(pagina, {{CmdAttiva, "&Modifica vista"},
                                         {CmdEliminaVista, "&Elimina vista"},
                                         {CmdCaricoBase, "Carica vista &base"}}),
              0, wxLEFT, pagina->Spazio());
    return riga;
}

void FrmConfigura::creaSalva() {
    PaginaConfigura* pagina = nuovaPagina(paginaSalvataggio);
    const int bordo = pagina->Spazio();
    auto* nome = new wxBoxSizer(wxHORIZONTAL);
    l1[0] = testo(pagina, "Nome vista");
    nome->Add(l1[0], 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT, bordo);
    txtNome = new wxTextCtrl(pagina, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                             wxTE_PROCESS_ENTER);
    nome->Add(txtNome, 1, wxALIGN_CENTRE_VERTICAL | wxRIGHT, bordo);
    CmdSalva = pulsante(pagina, "&Salva vista");
    comePulsante(*txtNome, *CmdSalva, "MMMMMMMMMM");
    nome->Add(CmdSalva, 0, wxALIGN_CENTRE_VERTICAL);
    pagina->Contenuto().Add(nome, 0, wxEXPAND | wxBOTTOM, bordo / 2);
    ChkPredefinito = spunta(pagina, "Vista &preferita: è quella con cui si apre la ricerca");
    pagina->Contenuto().Add(ChkPredefinito, 0, wxBOTTOM, bordo);
    l1[1] = testo(pagina, "Viste salvate");
    pagina->Contenuto().Add(l1[1], 0, wxBOTTOM, bordo / 2);
    pagina->Contenuto().Add(creaElencoViste(pagina), 1, wxEXPAND);
}

} // namespace norvel::views
