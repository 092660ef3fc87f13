// Editing in the grid: the button "Modifica", and what happens to a cell that is being edited when
// the operator turns to something else.
#include "component/VariabiliGlobali.h"
#include "platform/controls/ToolBar.h"
#include "platform/grid/Grid.h"
#include "platform/grid/model/RowEdit.h"
#include "search_window/CampiModificabili.h"
#include "search_window/FrmRicerca.h"
#include "search_window/Testi.h"

namespace norvel::search_window {

namespace {

void bloccaSeNonInElenco(grid::Column& colonna) {
    const auto& campi = variabiliGlobali().gCampiModificabili;
    colonna.Locked = !campoModificabile(campi, colonna.DataField);
}

} // namespace

// A row is saved when all rows have come, which its saving waits for: with a way to give up. The
// button holds for other fields, too, that the recordset may get while it is pressed.
void FrmRicerca::collegaModifica() {
    Griglia->OnColumnMade = bloccaSeNonInElenco;
    Griglia->OnBeforeUpdate = [this] {
        if (!attendiRighe()) return false;
        const adodb::Recordset& recordset = *DBRicerca.Recordset();
        if (const auto interrotta = recordset.FetchError())
            mostraMessaggio(messaggioLetturaInterrotta(*interrotta, recordset.RecordCount()));
        return true;
    };
}

// While the button is pressed the fields of gCampiModificabili can be edited. Over rows that nobody
// can change it says so and comes up again.
void FrmRicerca::suModifica(const controls::Button& pulsante) {
    const bool premuto = pulsante.Value == 1;
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (premuto && !recordset) throw erroreOggettoNonImpostato();
    if (premuto && !recordset->Supports(adodb::adUpdate)) {
        rilascia(pulsante);
        mostraMessaggio(messaggioRifiuto(grid::readOnlyRows));
        return;
    }
    for (int i = 0; i < Griglia->Columns().Count(); ++i)
        bloccaSeNonInElenco(Griglia->Columns().Item(i));
    Griglia->SetAllowUpdate(premuto);
}

// A button that was pressed in vain is as it was before.
void FrmRicerca::rilascia(const controls::Button& pulsante) {
    if (pulsante.Style != controls::ButtonStyle::Check) return;
    BarraBase->Change(pulsante.Key, [](controls::Button& b) { b.Value = 1 - b.Value; });
}

// Before any other command: what is half typed is saved, or refused, and then the command is not
// given.
bool FrmRicerca::fineModifica(const controls::Button& pulsante) {
    if (Griglia->EndEdit()) return true;
    rilascia(pulsante);
    return false;
}

// A window with a refused cell stays: Esc takes back what is in it.
void FrmRicerca::chiudi(ModoScarico modo) {
    if (Griglia->EndEdit()) Scarica(modo);
}

} // namespace norvel::search_window
