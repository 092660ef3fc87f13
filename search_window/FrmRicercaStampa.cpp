// The toolbar's print command.
#include "output/AnteprimaStampa.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "search_window/FrmRicerca.h"

#include <wx/frame.h>

namespace norvel::search_window {

// All rows are printed: those still coming are waited for, and a fetch that broke off is told like
// any error of the toolbar, since what came is not all. Every other error is ignored.
void FrmRicerca::suStampa(const controls::Button&) {
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    if (!recordset || (recordset->State() & adodb::adStateOpen) == 0 || !attendiRighe()) return;
    if (const auto interrotta = recordset->FetchError()) throw *interrotta;
    output::anteprimaStampa(Griglia->PrintInfo(), controls::fromWx(Finestra->GetTitle()));
}

} // namespace norvel::search_window
