// GTK runs the print: it asks for each page from its main loop.
#include "platform/grid/preview/PrintProgress.h"
#include "platform/grid/preview/PrintRun.h"

#include <wx/gtk/print.h>
#include <wx/print.h>

#include <dlfcn.h>

namespace norvel::grid {

namespace {

// The one call of GTK's printing that the toolkit does not offer; GTK is in the process, its
// headers are no part of the toolkit's development package.
void cancelPrint(wxPrintDialogData& data) {
    using Cancel = void (*)(GtkPrintOperation*);
    static const auto cancel =
        reinterpret_cast<Cancel>(dlsym(RTLD_DEFAULT, "gtk_print_operation_cancel"));
    auto* native = dynamic_cast<wxGtkPrintNativeData*>(data.GetPrintData().GetNativeData());
    if (cancel != nullptr && native != nullptr && native->GetPrintJob() != nullptr)
        cancel(native->GetPrintJob());
}

} // namespace

PrintOutcome runPrint(wxWindow& parent, Printout& printout, wxPrintDialogData& data, bool ask) {
    const QuietLog log;
    wxPrinter printer(&data);
    std::unique_ptr<PrintProgress> progress;
    bool cancelled = false;
    printout.OnPage = [&](adodb::RowCount page, adodb::RowCount pages) {
        if (!progress) progress = std::make_unique<PrintProgress>(parent);
        progress->Tell(page, pages);
        if (!progress->Cancelled()) return true;
        if (!cancelled) cancelPrint(printer.GetPrintDialogData());
        cancelled = true;
        return false;
    };
    const bool printed = printer.Print(&parent, &printout, ask);
    printout.OnPage = nullptr;
    if (printout.Error()) return {false, printout.Error()->descrizione()};
    if (cancelled || (!printed && wxPrinter::GetLastError() == wxPRINTER_CANCELLED)) return {};
    if (!printed) return {false, log.Said()};
    data = printer.GetPrintDialogData();
    return {true, {}};
}

} // namespace norvel::grid
