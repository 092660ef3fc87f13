// The commands that take the rows elsewhere: clipboard, workbook, files.
#include "component/VariabiliGlobali.h"
#include "output/Esportazioni.h"
#include "platform/controls/Clipboard.h"
#include "platform/controls/ToolBar.h"
#include "platform/controls/WxText.h"
#include "platform/grid/Grid.h"
#include "search_window/Avanzamento.h"
#include "search_window/FrmRicerca.h"
#include "search_window/RecordsetPrivato.h"

#include <wx/frame.h>
#include <wx/utils.h>

namespace norvel::search_window {

output::AreaSelezionata FrmRicerca::areaSelezionata() {
    output::AreaSelezionata area;
    area.presente = Griglia->HasSelectedArea();
    area.prima = Griglia->SelStartCol();
    area.ultima = Griglia->SelEndCol();
    area.righe = [this] { return Griglia->SelBookmarks().Count(); };
    area.bookmark = [this](adodb::RowCount i) { return Griglia->SelBookmarks().Item(i); };
    return area;
}

void FrmRicerca::esporta(void (*comando)(const output::ParteEsportazione&)) {
    const adodb::RecordsetRef recordset = DBRicerca.Recordset();
    output::ParteEsportazione parte{variabiliGlobali(), Griglia->Columns(), Griglia->Style(),
                                    recordset};
    parte.titolo = controls::fromWx(Finestra->GetTitle());
    parte.area = areaSelezionata();
    parte.finestra = Finestra->GetHandle();
    parte.attendiRighe = [this] { return attendiRighe(); };
    parte.esegui = [this](output::Lavoro& lavoro) {
        return eseguiConAvanzamento(*Finestra, lavoro);
    };
    parte.clessidra = [](bool accesa) { accesa ? wxBeginBusyCursor() : wxEndBusyCursor(); };
    parte.svuotaAppunti = [] { controls::setClipboardText({}); };
    parte.scriviAppunti = controls::setClipboardText;
    parte.recordsetEsportazione = [this, &recordset](int& opzioni) {
        if (!esportazione_.recordset) esportazione_ = creaRecordsetPrivato(*recordset);
        opzioni = esportazione_.opzioni;
        return esportazione_.recordset;
    };
    comando(parte);
}

void FrmRicerca::suCopiaAppunti(const controls::Button&) {
    esporta(output::copiaAppunti);
}

void FrmRicerca::suEsportaExcel(const controls::Button&) {
    esporta(output::esportaExcel);
}

void FrmRicerca::suEsportaHtml(const controls::Button&) {
    esporta([](const auto& parte) { output::esportaFile(parte, output::FormatoFile::Html); });
}

void FrmRicerca::suEsportaCsv(const controls::Button&) {
    esporta([](const auto& parte) { output::esportaFile(parte, output::FormatoFile::Csv); });
}

} // namespace norvel::search_window
