// What the operator does to the search window.
#include "platform/controls/ToolBar.h"
#include "tests/views/passeggiata/Operatore.h"

namespace norvel::views {

using search_window::frmRicercaReale;

void Operatore::barra() {
    static const char* const chiavi[] = {"primo",      "ultimo", "indietro", "avanti",
                                         "Facilitata", "Drop",   "Aggiorna", "Taglia"};
    controls::ToolBar& barra = *frmRicercaReale()->BarraBase;
    const char* chiave = chiavi[A_caso(8)];
    if (!barra.Item(chiave).Enabled) return;
    barra.Change(chiave, [](controls::Button& pulsante) {
        if (pulsante.Style == controls::ButtonStyle::Check) pulsante.Value = 1 - pulsante.Value;
    });
    barra.OnButtonClick(controls::Button(barra.Item(chiave)));
}

void Operatore::menuViste() {
    controls::ToolBar& barra = *frmRicercaReale()->BarraBase;
    const auto menu = barra.Item("Apri").ButtonMenus;
    if (menu.empty()) return;
    const int voce = A_caso(static_cast<int>(menu.size()));
    barra.OnButtonMenuClick(controls::Button(barra.Item("Apri")),
                            menu[static_cast<std::size_t>(voce)]);
}

void Operatore::filtro() {
    static const char* const testi[] = {"", "", "1", "ros", "*", "a'b", ">3", "zzz"};
    grid::Grid& griglia = *frmRicercaReale()->Griglia;
    const int colonna = A_caso(griglia.Columns().Count());
    griglia.SetFilterText(colonna, testi[A_caso(8)]);
    griglia.OnFilterChange(colonna);
}

void Operatore::intestazione() {
    grid::Grid& griglia = *frmRicercaReale()->Griglia;
    griglia.OnHeadClick(A_caso(griglia.Columns().Count()));
}

void Operatore::apreConfigura() {
    controls::ToolBar& barra = *frmRicercaReale()->BarraBase;
    barra.OnButtonClick(controls::Button(barra.Item("configura")));
}

void Operatore::chiudeRicerca() {
    frmRicercaReale()->Finestra->Close();
}

} // namespace norvel::views
