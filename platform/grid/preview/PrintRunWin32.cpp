// The pages go to the printer one after the other; the toolkit's own loop would show a box of its
// own words.
#include "platform/grid/preview/PrintProgress.h"
#include "platform/grid/preview/PrintRun.h"

#include <wx/app.h>
#include <wx/dcprint.h>
#include <wx/evtloop.h>
#include <wx/print.h>

#include <algorithm>

namespace norvel::grid {

namespace {

struct PageRange {
    int first, last, copies;
};

PageRange rangeOf(wxPrintDialogData& data, const Printout& printout, bool asked) {
    PageRange range{1, printout.Pages(), 1};
    if (!data.GetAllPages() && !data.GetSelection()) {
        range.first = std::max(1, data.GetFromPage());
        range.last = std::min(range.last, data.GetToPage());
    }
    // A printer that makes the copies itself has been told in its dialog.
    if (!asked || data.GetPrintData().GetNoCopies() == 0)
        range.copies = std::max(1, data.GetNoCopies());
    return range;
}

// False when it ended before the last page.
bool printRange(wxDC& dc, Printout& printout, const PageRange& range) {
    if (!printout.OnBeginDocument(range.first, range.last)) return false;
    bool all = true;
    for (int page = range.first; all && page <= range.last; ++page) {
        dc.StartPage();
        all = printout.OnPrintPage(page);
        dc.EndPage();
    }
    printout.OnEndDocument();
    return all;
}

} // namespace

PrintOutcome runPrint(wxWindow& parent, Printout& printout, wxPrintDialogData& data, bool ask) {
    const QuietLog log;
    wxPrinter printer(&data);
    std::unique_ptr<wxDC> dc(ask ? printer.PrintDialog(&parent)
                                 : new wxPrinterDC(data.GetPrintData()));
    if (!dc) {
        if (wxPrinter::GetLastError() == wxPRINTER_CANCELLED) return {};
        return {false, log.Said()};
    }
    if (ask) data = printer.GetPrintDialogData();
    if (!dc->IsOk() || !printout.SetUp(*dc)) return {false, log.Said()};
    printout.OnPreparePrinting();
    PrintProgress progress(parent);
    printout.OnPage = [&](adodb::RowCount page, adodb::RowCount pages) {
        progress.Tell(page, pages);
        wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_UI | wxEVT_CATEGORY_USER_INPUT);
        return !progress.Cancelled();
    };
    const PageRange range = rangeOf(data, printout, ask);
    bool all = true;
    for (int copy = 0; all && copy < range.copies; ++copy)
        all = printRange(*dc, printout, range);
    printout.OnPage = nullptr;
    printout.SetDC(nullptr);
    if (printout.Error()) return {false, printout.Error()->descrizione()};
    if (progress.Cancelled()) return {};
    return {all, all ? std::string() : log.Said()};
}

} // namespace norvel::grid
