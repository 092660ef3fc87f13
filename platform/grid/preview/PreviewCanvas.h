// One page on screen, at any zoom.
#pragma once

#include "platform/grid/preview/PagePainter.h"
#include "platform/grid/print/PreviewZoom.h"
#include "platform/grid/print/PrintJob.h"

#include <wx/scrolwin.h>

#include <functional>

namespace norvel::grid {

// Painted anew from its contents at each zoom, so that it is sharp. The wheel scrolls, and turns
// the page where there is nothing to scroll; Ctrl+wheel zooms; the arrows scroll likewise.
class PreviewCanvas : public wxScrolledCanvas {
  public:
    PreviewCanvas(wxWindow* parent, PrintJob& job, PagePainter& painter);

    adodb::RowCount Page() const { return page_; }
    // Pages beyond the ends are the first and the last. bottom: scrolled to the page's end.
    void ShowPage(adodb::RowCount page, bool bottom = false);
    // After the job's pages were laid out anew; the first row on show stays.
    void ShowRow(adodb::RowCount row);

    double Zoom() const { return zoom_; } // 1: the paper's own size
    ZoomMode Mode() const { return mode_; }
    void SetZoom(ZoomMode mode, double zoom = 1);
    // One step larger or smaller; the point stays where it is.
    void StepZoom(bool larger, wxPoint around);
    wxPoint Centre() const;
    // What stays where it is when keys zoom: the centre; a page seen from its top stays at its top.
    wxPoint Anchor() const;
    // Where the paper stands, logical pixels of the client area.
    wxRect PaperRect() const;

    std::function<void()> OnChange; // another page or zoom is shown

  private:
    double pixelsPerTwip() const;
    wxSize paperSize() const;
    void layOut();
    void scrollTo(int x, int y);
    void zoomTo(ZoomMode mode, double zoom, wxPoint around);
    void paint();
    void onWheel(wxMouseEvent& event);
    void onKey(wxKeyEvent& event);
    void scrollBy(int x, int y);
    bool turnPage(int direction);
    void changed();

    PrintJob& job_;
    PagePainter& painter_;
    adodb::RowCount page_ = 1;
    ZoomMode mode_ = ZoomMode::Page;
    double zoom_ = 1;
    int wheel_ = 0; // turned, and not yet used
};

} // namespace norvel::grid
