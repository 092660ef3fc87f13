// A print job as the toolkit prints it.
#pragma once

#include "platform/grid/preview/PagePainter.h"
#include "platform/grid/print/PrintJob.h"

#include <wx/print.h>

#include <functional>
#include <optional>
#include <string>

namespace norvel::grid {

// Lays the pages out for the paper that was chosen in the print dialog, whatever the preview
// showed. Reads each page's rows when the page is printed.
class Printout : public wxPrintout {
  public:
    // job: a copy of the preview's, so that the preview keeps its own layout.
    Printout(const std::string& title, PrintJob job, PagePainter& painter);

    // Asked before each page, with how many were printed and how many there are; false ends it.
    std::function<bool(adodb::RowCount page, adodb::RowCount pages)> OnPage;
    // Why a page could not be read; those behind it were not printed.
    const std::optional<Errore>& Error() const { return error_; }
    // The page range that the dialog offers.
    int Pages() const;

    void OnPreparePrinting() override;
    void GetPageInfo(int* first, int* last, int* from, int* to) override;
    bool HasPage(int page) override;
    bool OnPrintPage(int page) override;

  private:
    PrintJob job_;
    PagePainter& painter_;
    std::optional<Errore> error_;
};

} // namespace norvel::grid
