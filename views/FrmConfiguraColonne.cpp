// The column editor's page.
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "views/EditorColonne.h"
#include "views/FrmConfigura.h"
#include "views/Tastiera.h"

#include <wx/button.h>
#include <wx/listbox.h>

namespace norvel::views {

void FrmConfigura::collegaColonne() {
    const auto nascondi = [this] { spostaColonne(spostaScelta, false); };
    const auto mostra = [this] { spostaColonne(spostaScelta, true); };
    CmdSportaI->Bind(wxEVT_BUTTON, [nascondi](wxCommandEvent&) { nascondi(); });
    Command3->Bind(wxEVT_BUTTON, [mostra](wxCommandEvent&) { mostra(); });
    CmdRimuoviTutti->Bind(wxEVT_BUTTON,
                          [this](wxCommandEvent&) { spostaColonne(spostaTutte, false); });
    suDoppioClicOInvio(*List1, nascondi);
    suDoppioClicOInvio(*List2, mostra);
    for (wxListBox* lista : {List1, List2})
        lista->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { aggiornaPulsantiColonne(); });
}

void FrmConfigura::caricaColonne() {
    CaricaColonne(Griglia->Columns(), *visibili_, *nascoste_);
    aggiornaPulsantiColonne();
    mostraStile();
}

void FrmConfigura::spostaColonne(void (*come)(ListaVoci&, ListaVoci&, grid::Columns&, bool),
                                 bool visibile) {
    try {
        ListaVoci& da = visibile ? *nascoste_ : *visibili_;
        ListaVoci& a = visibile ? *visibili_ : *nascoste_;
        come(da, a, Griglia->Columns(), visibile);
        Griglia->Changed();
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
    aggiornaPulsantiColonne();
}

void FrmConfigura::aggiornaPulsantiColonne() {
    abilita(*CmdSportaI, visibili_->ListIndex() >= 0, *List1);
    abilita(*Command3, nascoste_->ListIndex() >= 0, *List2);
    abilita(*CmdRimuoviTutti, visibili_->ListCount() > 0, *List2);
}

} // namespace norvel::views
