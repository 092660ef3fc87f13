// The style's page: each control sets its part of the preview at once.
#include "platform/controls/Icons.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "views/DialoghiSistema.h"
#include "views/FrmConfigura.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

namespace norvel::views {

namespace {

// Most of the style's handlers end without a word on any error.
void inSilenzio(const std::function<void()>& passi) {
    try {
        passi();
    } catch (...) {
        return;
    }
}

void conScatola(const std::function<void()>& passi) {
    try {
        passi();
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
}

wxColour colore(std::uint32_t valore) {
    return wxColour(static_cast<unsigned long>(valore & 0x00FFFFFF));
}

// The box shows the colour itself behind its number.
void mostraColore(wxTextCtrl& testo, const std::string& numero, std::uint32_t valore) {
    testo.ChangeValue(controls::toWx(numero));
    testo.SetBackgroundColour(colore(valore));
    testo.SetForegroundColour(controls::isDark(colore(valore)) ? *wxWHITE : *wxBLACK);
    testo.Refresh();
}

} // namespace

output::ParteStile FrmConfigura::stile() {
    return {Griglia->Columns(), Griglia->SplitAt(0), Griglia->Style(),
            [this](int colonna) { return Griglia->DataTypeCode(colonna); }};
}

void FrmConfigura::collegaStile() {
    using Imposta = void (*)(const output::ParteStile&, bool);
    const auto spunta = [this](wxCheckBox* scatola, Imposta imposta,
                               void (*trappola)(const std::function<void()>&)) {
        scatola->Bind(wxEVT_CHECKBOX, [=, this](wxCommandEvent&) {
            trappola([&] { imposta(stile(), scatola->GetValue()); });
            Griglia->Changed();
        });
    };
    spunta(ChkChekBox, output::impostaChekBox, conScatola);
    spunta(ChkEvidenzia, output::impostaEvidenziaRiga, inSilenzio);
    spunta(ChkFacilitato, output::impostaLetturaFacilitata, inSilenzio);
    spunta(chkRighe, output::impostaRidimensionaRighe, inSilenzio);
    ChkColonne->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { ChkColonne_Click(); });
    ChkSposta->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { ChkSposta_Click(); });
    ChkRaggruppamento->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { ChkRaggruppamento_Click(); });
    CmbSize->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { CmbSize_Click(); });
    CmbSize->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { CmbSize_Click(); });
    CmbSize->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        const std::string testo = controls::fromWx(CmbSize->GetValue());
        if (testo == dimensione_ || scaricata_) return;
        Finestra->CallAfter([this] { // no box while the focus is on its way
            if (!scaricata_ && controls::fromWx(CmbSize->GetValue()) != dimensione_)
                CmbSize_Click();
        });
    });
    CmdCarattere->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { CmdCarattere_Click(); });
    Command1->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        cambiaColore(txtColore1, Griglia->SplitAt(0).EvenRowStyle, output::impostaColorePari);
    });
    Command2->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        cambiaColore(txtColore2, Griglia->SplitAt(0).OddRowStyle, output::impostaColoreDispari);
    });
}

// The controls as the grid has them; check boxes for yes/no columns, grouping and the font's size
// are not read back.
void FrmConfigura::mostraStile() {
    const output::ControlliStile controlli = output::leggiStile(stile());
    const grid::Split& split = Griglia->SplitAt(0);
    mostraColore(*txtColore2, controlli.coloreDispari, split.OddRowStyle.BackColor);
    mostraColore(*txtColore1, controlli.colorePari, split.EvenRowStyle.BackColor);
    ChkFacilitato->SetValue(controlli.facilitato);
    ChkSposta->SetValue(controlli.sposta);
    ChkColonne->SetValue(controlli.colonne);
    chkRighe->SetValue(controlli.righe);
    ChkEvidenzia->SetValue(controlli.evidenzia);
}

void FrmConfigura::ChkColonne_Click() {
    inSilenzio([this] { output::impostaRidimensionaColonne(stile(), ChkColonne->GetValue()); });
    Griglia->Changed();
}

void FrmConfigura::ChkSposta_Click() {
    inSilenzio([this] { output::impostaSpostaColonne(stile(), ChkSposta->GetValue()); });
    Griglia->Changed();
}

// Grouping wants columns that move: it ticks their box, too, which stays so when it is cleared.
void FrmConfigura::ChkRaggruppamento_Click() {
    const bool attivo = ChkRaggruppamento->GetValue();
    if (attivo) ChkSposta->SetValue(true);
    inSilenzio([&] { output::impostaRaggruppamento(stile(), attivo); });
    Griglia->Changed();
}

void FrmConfigura::CmbSize_Click() {
    dimensione_ = controls::fromWx(CmbSize->GetValue());
    conScatola([this] { output::impostaDimensioneCarattere(stile(), dimensione_); });
    Griglia->Changed();
}

// Cancelling counts as an error, which is told.
void FrmConfigura::CmdCarattere_Click() {
    conScatola([this] {
        const grid::FontStyle presente = Griglia->Style().Font;
        output::impostaCarattere(stile(), scegliCarattere(*Finestra, presente));
    });
    if (!scaricata_) Griglia->Changed();
}

// Cancelling counts as an error, which is not told.
void FrmConfigura::cambiaColore(wxTextCtrl* testo, const grid::Style& presente,
                                void (*imposta)(const output::ParteStile&, const std::string&)) {
    inSilenzio([&] {
        const std::uint32_t scelto = scegliColore(*Finestra, presente.BackColor);
        const std::string numero = std::to_string(scelto);
        testo->ChangeValue(controls::toWx(numero));
        imposta(stile(), numero);
        mostraColore(*testo, numero, scelto);
    });
    if (!scaricata_) Griglia->Changed();
}

} // namespace norvel::views
