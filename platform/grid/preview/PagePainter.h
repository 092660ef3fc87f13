// Paints pages on a window and on a printer, the same on both.
#pragma once

#include "platform/grid/print/PageContents.h"

#include <wx/dc.h>
#include <wx/font.h>

#include <array>
#include <memory>

class wxPrintout;

namespace norvel::grid {

using PageFontSet = std::array<wxFont, pageFonts>;

class PagePainter {
  public:
    virtual ~PagePainter() = default;
    // Widths and heights of texts on paper, whatever is painted on. They live as long as this.
    virtual PageTextSizes Sizes() = 0;
    // zoom: logical pixels a twip; origin: where the paper's top left corner stands, logical
    // pixels. Only what reaches into the part is painted.
    virtual void PaintOnScreen(wxDC& dc, const PageContents& page, double zoom, wxPoint origin,
                               const wxRect& part) = 0;
    // On the page that the printout has begun.
    virtual void PaintOnPaper(const wxPrintout& printout, const PageContents& page) = 0;
};

// The best one that the platform has.
std::unique_ptr<PagePainter> makePagePainter(const PageFontSet& fonts);
// The one that draws by the toolkit alone.
std::unique_ptr<PagePainter> makePlainPagePainter(const PageFontSet& fonts);

// Colours and measures that both share.
inline constexpr std::uint32_t pageLineColour = 0x00B0B0B0, pageInk = 0x00000000;
inline constexpr double pageLineWidth = 8; // twips
// The corners of a check mark in a square of side 1.
inline constexpr std::array<std::array<double, 2>, 3> checkMark{
    {{0.2, 0.52}, {0.42, 0.75}, {0.82, 0.25}}};

} // namespace norvel::grid
