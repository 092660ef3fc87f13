// What stands on the four pages.
#include "platform/controls/WxText.h"
#include "platform/runtime/Text.h"
#include "views/FrmConfigura.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

namespace norvel::views {

using controls::toWx;

namespace {

constexpr int spazio = 8;       // logical pixels at 96 dpi, between the parts of a page
constexpr int largoTesto = 560; // likewise: descriptions break no earlier
constexpr int largoLista = 150; // likewise, at least
constexpr int altoLista = 96;   // likewise, at least
constexpr int largoBordi = 28;  // likewise, of a text box and its arrow
constexpr int passoScorri = 10; // likewise

wxStaticText* testo(wxWindow* su, const char* parole) {
    return new wxStaticText(su, wxID_ANY, toWx(parole));
}

// A text that breaks its lines where its page ends.
class TestoLungo : public wxStaticText {
  public:
    TestoLungo(wxWindow* su, const char* parole)
        : wxStaticText(su, wxID_ANY, toWx(parole)), parole_(toWx(parole)) {
        Wrap(FromDIP(largoTesto));
    }
    void Adatta(int largo) {
        SetLabelText(parole_);
        Wrap(std::max(FromDIP(largoTesto), largo));
    }

  private:
    wxString parole_;
};

void adattaTesti(wxWindow& pagina) {
    for (wxWindow* parte : pagina.GetChildren())
        if (auto* lungo = dynamic_cast<TestoLungo*>(parte)) lungo->Adatta(pagina.GetClientSize().x);
}

wxButton* pulsante(wxWindow* su, const char* parole) {
    return new wxButton(su, wxID_ANY, toWx(parole));
}

wxCheckBox* spunta(wxWindow* su, const char* parole) {
    return new wxCheckBox(su, wxID_ANY, toWx(parole));
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

// A page with its title and description, as the side menu has them; its parts go into contenuto.
wxPanel* FrmConfigura::nuovaPagina(int pagina, wxSizer*& contenuto) {
    auto* frame = new wxScrolled<wxPanel>(Finestra, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                          wxTAB_TRAVERSAL | wxVSCROLL | wxHSCROLL);
    const VoceMenu& voce = voceDiPagina(pagina);
    auto* tutto = new wxBoxSizer(wxVERTICAL);
    wxStaticText* titolo = testo(frame, voce.testo);
    titolo->SetFont(frame->GetFont().Bold().Larger());
    const int bordo = frame->FromDIP(spazio);
    tutto->Add(titolo, 0, wxBOTTOM, bordo / 2);
    tutto->Add(new TestoLungo(frame, voce.descrizione), 0, wxBOTTOM, bordo);
    contenuto = new wxBoxSizer(wxVERTICAL);
    tutto->Add(contenuto, 1, wxEXPAND);
    frame->SetSizer(tutto);
    const int passo = frame->FromDIP(passoScorri);
    frame->SetScrollRate(passo, passo);
    frame->Bind(wxEVT_SIZE, [frame](wxSizeEvent& event) {
        adattaTesti(*frame);
        event.Skip(); // then the page's own layout
    });
    FrmDimensioni[static_cast<std::size_t>(pagina)] = frame;
    return frame;
}

void FrmConfigura::creaPosizione() {
    wxSizer* contenuto = nullptr;
    wxPanel* pagina = nuovaPagina(0, contenuto);
    const int bordo = pagina->FromDIP(spazio);
    for (const char* riga :
         {"Per spostare una colonna trascinarne l'intestazione, qui sopra, dove deve stare.",
          "Per allargarla o restringerla trascinare il bordo destro dell'intestazione; un doppio "
          "clic sul bordo la adatta al contenuto.",
          "Dalla tastiera, nella griglia: Ctrl+Maiusc+Freccia sposta la colonna corrente.",
          "Le modifiche restano nella vista solo dopo il salvataggio."})
        contenuto->Add(new TestoLungo(pagina, riga), 0, wxBOTTOM, bordo);
}

wxSizer* FrmConfigura::creaListaColonne(wxPanel* pagina, const char* titolo, wxListBox*& dove) {
    auto* colonna = new wxBoxSizer(wxVERTICAL);
    colonna->Add(testo(pagina, titolo), 0, wxBOTTOM, pagina->FromDIP(spazio / 2));
    dove = lista(pagina);
    colonna->Add(dove, 1, wxEXPAND);
    return colonna;
}

void FrmConfigura::creaVisualizza() {
    wxSizer* contenuto = nullptr;
    wxPanel* pagina = nuovaPagina(1, contenuto);
    const int bordo = pagina->FromDIP(spazio);
    auto* riga = new wxBoxSizer(wxHORIZONTAL);
    riga->Add(creaListaColonne(pagina, "Colonne &visibili", List1), 1, wxEXPAND);
    auto* pulsanti = new wxBoxSizer(wxVERTICAL);
    CmdSportaI = pulsante(pagina, "&Nascondi >");
    Command3 = pulsante(pagina, "< &Mostra");
    CmdRimuoviTutti = pulsante(pagina, "Nascondi &tutte >>");
    for (wxButton* uno : {CmdSportaI, Command3, CmdRimuoviTutti})
        pulsanti->Add(uno, 0, wxEXPAND | wxBOTTOM, bordo);
    riga->Add(pulsanti, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT | wxRIGHT, bordo);
    riga->Add(creaListaColonne(pagina, "Colonne n&ascoste", List2), 1, wxEXPAND);
    contenuto->Add(riga, 1, wxEXPAND);
}

wxSizer* FrmConfigura::creaSpunte(wxPanel* pagina) {
    auto* colonna = new wxBoxSizer(wxVERTICAL);
    ChkChekBox = spunta(pagina, "Visualizza ChekBox per valori 0 -1");
    ChkColonne = spunta(pagina, "Ridimensiona Colonne Bloccate");
    ChkEvidenzia = spunta(pagina, "Evidenzia tutta la riga ");
    ChkFacilitato = spunta(pagina, "Lettura Facilitata");
    ChkRaggruppamento = spunta(pagina, "Attiva Raggruppamento");
    chkRighe = spunta(pagina, "Ridimensiona Righe");
    ChkSposta = spunta(pagina, "Sposta Colonne");
    for (wxCheckBox* una : {ChkChekBox, ChkColonne, ChkEvidenzia, ChkFacilitato, ChkRaggruppamento,
                            chkRighe, ChkSposta})
        colonna->Add(una, 0, wxBOTTOM, pagina->FromDIP(spazio / 2));
    return colonna;
}

// Labels in one column, what they name in the next.
wxSizer* FrmConfigura::creaColoriECarattere(wxPanel* pagina) {
    const int bordo = pagina->FromDIP(spazio);
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
    wxSizer* contenuto = nullptr;
    wxPanel* pagina = nuovaPagina(2, contenuto);
    const int bordo = pagina->FromDIP(spazio);
    auto* riquadro = new wxStaticBoxSizer(wxHORIZONTAL, pagina, "Modifica stile Griglia");
    riquadro->Add(creaSpunte(pagina), 0, wxALL, bordo);
    riquadro->AddSpacer(bordo);
    riquadro->Add(creaColoriECarattere(pagina), 0, wxALL, bordo);
    contenuto->Add(riquadro, 0, wxEXPAND);
}

wxSizer* FrmConfigura::creaElencoViste(wxPanel* pagina) {
    const int bordo = pagina->FromDIP(spazio);
    auto* riga = new wxBoxSizer(wxHORIZONTAL);
    Lista = lista(pagina);
    riga->Add(Lista, 1, wxEXPAND);
    auto* pulsanti = new wxBoxSizer(wxVERTICAL);
    CmdAttiva = pulsante(pagina, "&Modifica vista");
    CmdEliminaVista = pulsante(pagina, "&Elimina vista");
    CmdCaricoBase = pulsante(pagina, "Carica vista &base");
    for (wxButton* uno : {CmdAttiva, CmdEliminaVista, CmdCaricoBase})
        pulsanti->Add(uno, 0, wxEXPAND | wxBOTTOM, bordo);
    riga->Add(pulsanti, 0, wxLEFT, bordo);
    return riga;
}

void FrmConfigura::creaSalva() {
    wxSizer* contenuto = nullptr;
    wxPanel* pagina = nuovaPagina(paginaSalvataggio, contenuto);
    const int bordo = pagina->FromDIP(spazio);
    auto* nome = new wxBoxSizer(wxHORIZONTAL);
    l1[0] = testo(pagina, "Nome vista");
    nome->Add(l1[0], 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT, bordo);
    txtNome = new wxTextCtrl(pagina, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                             wxTE_PROCESS_ENTER);
    nome->Add(txtNome, 1, wxALIGN_CENTRE_VERTICAL | wxRIGHT, bordo);
    CmdSalva = pulsante(pagina, "&Salva vista");
    comePulsante(*txtNome, *CmdSalva, "MMMMMMMMMM");
    nome->Add(CmdSalva, 0, wxALIGN_CENTRE_VERTICAL);
    contenuto->Add(nome, 0, wxEXPAND | wxBOTTOM, bordo / 2);
    ChkPredefinito = spunta(pagina, "Vista &preferita: è quella con cui si apre la ricerca");
    contenuto->Add(ChkPredefinito, 0, wxBOTTOM, bordo);
    l1[1] = testo(pagina, "Viste salvate");
    contenuto->Add(l1[1], 0, wxBOTTOM, bordo / 2);
    contenuto->Add(creaElencoViste(pagina), 1, wxEXPAND);
}

} // namespace norvel::views
