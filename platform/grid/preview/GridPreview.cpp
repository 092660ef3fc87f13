#include "platform/grid/preview/GridPreview.h"

#include "platform/grid/Grid.h"
#include "platform/grid/StyledFont.h"
#include "platform/grid/export/ExportRows.h"
#include "platform/grid/preview/PreviewWindow.h"
#include "platform/grid/preview/Printers.h"

#include <wx/weakref.h>

#include <memory>
#include <utility>

namespace norvel::grid {

void openPreview(Grid& grid, PrintInfo& info) {
    if (printerAvailable()) showPreview(grid, info);
}

void showPreview(Grid& grid, PrintInfo& info) {
    const auto host = grid.DataSource() ? grid.DataSource()->Recordset() : nullptr;
    if (!host) throw erroreOggettoNonImpostato();
    const ExportTable shown = exportTable(grid.Columns(), grid.Style(), host->Sort());
    const auto rows = std::make_shared<ExportRows>(*host, shown);
    const wxFont font = grid.GetFont();
    std::unique_ptr<PagePainter> painter = makePagePainter(
        {font, styledFont(font, info.PageHeaderFont), styledFont(font, info.PageFooterFont)});
    PrintJob job(
        printTable(shown, grid.SplitAt(0), grid.Style(), info), rows->Count(),
        [rows](adodb::RowCount first, adodb::RowCount count) { return rows->Values(first, count); },
        painter->Sizes());
    const wxWeakRef<PreviewWindow> window(
        new PreviewWindow(wxGetTopLevelParent(&grid), info, std::move(job), std::move(painter)));
    window->Run();
    if (window) window->Destroy(); // unless it went with the grid's own window
}

} // namespace norvel::grid
