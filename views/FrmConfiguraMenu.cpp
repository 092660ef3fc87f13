// The side menu and the pages.
#include "component/VariabiliGlobali.h"
#include "platform/controls/ExplorerBar.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/MessageBox.h"
#include "views/FrmConfigura.h"
#include "views/VociExplorer.h"

#include <wx/frame.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

namespace norvel::views {

std::vector<controls::ExplorerGroup> gruppiExplorer() {
    std::vector<controls::ExplorerGroup> gruppi;
    for (const GruppoMenu& gruppo : gruppiMenu()) {
        controls::ExplorerGroup& nuovo = gruppi.emplace_back();
        nuovo.Key = gruppo.chiave;
        nuovo.IconKey = gruppo.immagine;
        nuovo.Caption = gruppo.testo;
        nuovo.SecondTitle = gruppo.secondoTitolo;
        nuovo.Description = gruppo.descrizione;
        nuovo.Special = gruppo.speciale;
        for (const VoceMenu& voce : gruppo.voci)
            nuovo.Items.push_back(
                {voce.chiave, voce.immagine, voce.testo, voce.descrizione, voce.nota});
    }
    return gruppi;
}

void FrmConfigura::suTimer1() {
    Timer1->Stop();
    try {
        CreaMenu();
        CaricaElencoViste(variabiliGlobali(), *viste_);
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
    if (!scaricata_) aggiornaPulsantiViste();
}

void FrmConfigura::CreaMenu() {
    MenuBar->StopRedraw();
    MenuBar->Clear();
    for (controls::ExplorerGroup& gruppo : gruppiExplorer())
        MenuBar->AddGroup(std::move(gruppo));
    MenuBar->SetSelectedKey(voceDiPagina(pagina_).chiave);
    MenuBar->ResumeRedraw();
    caricaColonne();
}

void FrmConfigura::suVoce(const std::string& chiave) {
    try {
        const std::optional<int> pagina = paginaVoce(chiave);
        if (!pagina) return Scarica();
        if (*pagina == paginaSalvataggio && txtNome->IsEmpty())
            txtNome->ChangeValue(controls::toWx(nomeProposto(variabiliGlobali())));
        mostraPagina(*pagina);
    } catch (...) {
        mostraErroreModulo(erroreInCorso());
    }
}

// On the first page the operator gives the columns their places and sizes, whatever the style lets
// operators of the search do.
void FrmConfigura::mostraPagina(int pagina) {
    pagina_ = pagina;
    for (wxWindow* frame : FrmDimensioni)
        frame->Hide();
    FrmDimensioni[static_cast<std::size_t>(pagina)]->Show();
    Griglia->SetColumnsFree(pagina == 0);
    if (!MenuBar->Groups().empty()) MenuBar->SetSelectedKey(voceDiPagina(pagina).chiave);
}

} // namespace norvel::views
