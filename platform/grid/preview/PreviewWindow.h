// The print preview: pages on screen, and from there to the printer.
#pragma once

#include "platform/controls/Toolkit.h"
#include "platform/grid/preview/PreviewCanvas.h"
#include "platform/grid/print/PrintInfo.h"

#include <wx/dialog.h>
#include <wx/print.h>

#include <memory>
#include <string_view>

class wxTextCtrl;

namespace norvel::controls {
class StatusBar;
class ToolBar;
} // namespace norvel::controls

namespace norvel::grid {

// Modal. PgUp and PgDn turn the page, Home and End lead to the first and the last, the arrows
// scroll; Ctrl with + and - zooms, with 0 shows the page whole, with 1 at its own size, with 2 in
// its whole width, with R turns the paper, with P prints, with G leads to the page's number; Esc
// closes.
class PreviewWindow : public wxDialog {
  public:
    // info: gets the orientation that the operator chose; outlives the window.
    PreviewWindow(wxWindow* parent, PrintInfo& info, PrintJob job,
                  std::unique_ptr<PagePainter> painter);

    // Returns once it is closed; the window is off the screen then.
    void Run();

    // The parts, for tests that use them as an operator does.
    PreviewCanvas* Canvas = nullptr;
    controls::ToolBar* Bar = nullptr;
    controls::StatusBar* Counter = nullptr;
    wxTextCtrl* PageField = nullptr;
    // What the print dialog begins with: what the operator left in it last.
    wxPrintDialogData& Printer() { return printer_; }
    const PrintJob& Job() const { return job_; }

  private:
    void makeBar();
    void placeParts();
    void bind();
    void onButton(std::string_view key);
    void onCharHook(wxKeyEvent& event);
    bool pageKey(int key);
    bool controlKey(int key);
    void goToField();
    void tell();
    void turnPaper();
    void print();
    void close();

    PrintInfo& info_;
    std::unique_ptr<PagePainter> painter_;
    PrintJob job_;
    wxPrintDialogData printer_;
    controls::ModalLoop loop_;
};

} // namespace norvel::grid
