// Pages painted by the toolkit's own drawing context; for texts its logical unit becomes the twip.
#include "platform/controls/WxText.h"
#include "platform/grid/preview/PagePainter.h"

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/print.h>

#include <algorithm>
#include <cmath>

namespace norvel::grid {

namespace {

int whole(double twips) {
    return static_cast<int>(std::lround(twips));
}

// Where a page lies on a context, in the context's own pixels. Shapes are drawn in these, so that
// their edges are whole pixels and no thin line falls between two; only texts are left to the
// context's own scale.
struct Placing {
    double across, down; // pixels a twip
    wxPoint origin;
    int X(double twips) const { return origin.x + whole(twips * across); }
    int Y(double twips) const { return origin.y + whole(twips * down); }
    wxRect Rect(const Box& box) const {
        return {X(box.x), Y(box.y), X(box.Right()) - X(box.x), Y(box.Bottom()) - Y(box.y)};
    }
    int Thickness(double twips) const { return std::max(1, whole(twips * across)); }
};

wxColour toColour(std::uint32_t colour) {
    return {static_cast<unsigned char>(colour & 0xFF),
            static_cast<unsigned char>(colour >> 8 & 0xFF),
            static_cast<unsigned char>(colour >> 16 & 0xFF)};
}

// A font whose pixel is the twip.
wxFont inTwips(const wxFont& font) {
    wxFont large(font);
    large.SetPixelSize(wxSize(0, whole(font.GetFractionalPointSize() * 20)));
    return large;
}

class PlainPagePainter : public PagePainter {
  public:
    explicit PlainPagePainter(const PageFontSet& fonts) {
        bitmap_.Create(1, 1);
        measuring_.SelectObject(bitmap_);
        for (std::size_t i = 0; i < pageFonts; ++i)
            fonts_[i] = inTwips(fonts[i]);
    }
    PageTextSizes Sizes() override;
    void PaintOnScreen(wxDC& dc, const PageContents& page, double zoom, wxPoint origin,
                       const wxRect& part) override;
    void PaintOnPaper(const wxPrintout& printout, const PageContents& page) override;

  private:
    const wxFont& fontOf(PageFont font) const { return fonts_[static_cast<std::size_t>(font)]; }
    void paint(wxDC& dc, const PageContents& page, const Placing& placing, const wxRect& part);
    void text(wxDC& dc, const PageText& shown);

    PageFontSet fonts_;
    wxBitmap bitmap_;
    wxMemoryDC measuring_;
};

// At the fonts' twip size, at which rounding to pixels does not matter.
PageTextSizes PlainPagePainter::Sizes() {
    PageTextSizes sizes;
    sizes.width = [this](PageFont font, std::string_view text) -> double {
        int width = 0;
        measuring_.GetTextExtent(controls::toWx(text), &width, nullptr, nullptr, nullptr,
                                 &fontOf(font));
        return width;
    };
    for (std::size_t i = 0; i < pageFonts; ++i) {
        int height = 0;
        measuring_.GetTextExtent("Ag", nullptr, &height, nullptr, nullptr, &fonts_[i]);
        sizes.lineHeight[i] = height;
    }
    return sizes;
}

void PlainPagePainter::text(wxDC& dc, const PageText& shown) {
    if (dc.GetFont() != fontOf(shown.font)) dc.SetFont(fontOf(shown.font));
    const wxString text = controls::toWx(shown.text);
    const wxSize size = dc.GetTextExtent(text);
    double x = shown.box.x;
    if (shown.align == Alignment::Right) x += shown.box.width - size.x;
    if (shown.align == Alignment::Center) x += (shown.box.width - size.x) / 2;
    dc.DrawText(text, whole(x), whole(shown.box.y + (shown.box.height - size.y) / 2));
}

void drawCheck(wxDC& dc, const PageCheck& shown, const Placing& placing) {
    const Box& box = shown.box;
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(wxPen(toColour(pageInk), placing.Thickness(box.width / 12)));
    dc.DrawRectangle(placing.Rect(box));
    if (!shown.checked) return;
    dc.SetPen(wxPen(toColour(pageInk), placing.Thickness(box.width / 7)));
    std::array<wxPoint, checkMark.size()> corners;
    for (std::size_t i = 0; i < corners.size(); ++i)
        corners[i] = {placing.X(box.x + checkMark[i][0] * box.width),
                      placing.Y(box.y + checkMark[i][1] * box.height)};
    dc.DrawLines(static_cast<int>(corners.size()), corners.data());
}

void drawLine(wxDC& dc, const PageLine& thin, const Placing& placing) {
    const int thick = placing.Thickness(pageLineWidth);
    const int x = placing.X(thin.x);
    const int y = placing.Y(thin.y);
    if (thin.across)
        dc.DrawRectangle(x, y, placing.X(thin.x + thin.length) - x + thick, thick);
    else
        dc.DrawRectangle(x, y, thick, placing.Y(thin.y + thin.length) - y + thick);
}

// part: pixels, empty for all.
void PlainPagePainter::paint(wxDC& dc, const PageContents& page, const Placing& placing,
                             const wxRect& part) {
    const auto reaches = [&](const Box& box) {
        return part.IsEmpty() || part.Intersects(placing.Rect(box));
    };
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (const PageFill& area : page.fills) {
        dc.SetBrush(toColour(area.colour));
        if (reaches(area.box)) dc.DrawRectangle(placing.Rect(area.box));
    }
    dc.SetBrush(toColour(pageLineColour));
    for (const PageLine& thin : page.lines)
        drawLine(dc, thin, placing);
    for (const PageCheck& shown : page.checks)
        if (reaches(shown.box)) drawCheck(dc, shown, placing);
    dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
    dc.SetTextForeground(toColour(pageInk));
    dc.SetDeviceOrigin(placing.origin.x, placing.origin.y);
    dc.SetUserScale(placing.across, placing.down);
    for (const PageText& shown : page.texts)
        if (reaches(shown.box)) text(dc, shown);
    dc.SetUserScale(1, 1);
    dc.SetDeviceOrigin(0, 0);
}

void PlainPagePainter::PaintOnScreen(wxDC& dc, const PageContents& page, double zoom,
                                     wxPoint origin, const wxRect& part) {
    const wxDCClipper clip(dc, part);
    paint(dc, page, {zoom, zoom, origin}, part);
}

// A printer's origin is the corner of what it can print on; pages begin in the paper's.
void PlainPagePainter::PaintOnPaper(const wxPrintout& printout, const PageContents& page) {
    int across = 0;
    int down = 0;
    printout.GetPPIPrinter(&across, &down);
    paint(*printout.GetDC(), page,
          {across / 1440.0, down / 1440.0, printout.GetPaperRectPixels().GetTopLeft()}, {});
}

} // namespace

std::unique_ptr<PagePainter> makePlainPagePainter(const PageFontSet& fonts) {
    return std::make_unique<PlainPagePainter>(fonts);
}

#ifndef NR_PANGO
std::unique_ptr<PagePainter> makePagePainter(const PageFontSet& fonts) {
    return makePlainPagePainter(fonts);
}
#endif

} // namespace norvel::grid
