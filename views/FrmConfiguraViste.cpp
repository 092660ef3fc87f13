// The page of views: its buttons, its list, and the hidden gesture.
#include "component/VariabiliGlobali.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "views/FrmConfigura.h"
#include "views/Tastiera.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace norvel::views {

void FrmConfigura::collegaViste() {
    CmdSalva->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { comando(salvaVista); });
    txtNome->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { comando(salvaVista); });
    tuttoConCtrlA(*txtNome);
    CmdAttiva->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { comando(attivaVista); });
    CmdEliminaVista->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { comando(eliminaVista); });
    CmdCaricoBase->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { comando(caricoBase); });
    suDoppioClicOInvio(*Lista, [this] { comando(attivaVista); });
    Lista->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { aggiornaPulsantiViste(); });
    // Of the labels only the first saves as base.
    suDoppioClic(*l1[0], [this] { comando(salvaComeBase); });
}

void FrmConfigura::comando(void (*quale)(const VariabiliGlobali&, const PartiSalvataggio&)) {
    quale(variabiliGlobali(), parti());
    if (!scaricata_) aggiornaPulsantiViste();
}

PartiSalvataggio FrmConfigura::parti() {
    return {Griglia->Layouts(),
            *viste_,
            [this] { return controls::fromWx(txtNome->GetValue()); },
            [this](const std::string& nome) { txtNome->ChangeValue(controls::toWx(nome)); },
            [this] { return ChkPredefinito->GetValue(); },
            [this](bool si) { ChkPredefinito->SetValue(si); },
            [this] { caricaColonne(); },
            [this] {
                ChkColonne_Click();
                ChkSposta_Click();
            },
            [this] { togliBarraFiltri(); },
            [this] { Scarica(); }};
}

void FrmConfigura::togliBarraFiltri() {
    Griglia->SplitAt(0).FilterBar = false;
    Griglia->Changed();
}

void FrmConfigura::aggiornaPulsantiViste() {
    const bool scelta = viste_->ListIndex() >= 0;
    abilita(*CmdAttiva, scelta, *Lista);
    abilita(*CmdEliminaVista, scelta, *Lista);
}

} // namespace norvel::views
