// Pages painted by the toolkit's own drawing context, whose logical unit becomes the twip.
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

wxRect toRect(const Box& box) {
    const int x = whole(box.x);
    const int y = whole(box.y);
    return {x, y, whole(box.Right()) - x, whole(box.Bottom()) - y};
}

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
    explicit PlainPagePainter(const PageFontSet& fonts) : bitmap_(1, 1), measuring_(bitmap_) {
        for (std::size_t i = 0; i < pageFonts; ++i)
            fonts_[i] = inTwips(fonts[i]);
    }
    PageTextSizes Sizes() override;
    void PaintOnScreen(wxDC& dc, const PageContents& page, double zoom, wxPoint origin,
                       const wxRect& part) override;
    void PaintOnPaper(const wxPrintout& printout, const PageContents& page) override;

  private:
    const wxFont& fontOf(PageFont font) const { return fonts_[static_cast<std::size_t>(font)]; }
    void paint(wxDC& dc, const PageContents& page, double zoom, const wxRect& part);
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

void drawCheck(wxDC& dc, const PageCheck& shown, double pixel) {
    const Box& box = shown.box;
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(wxPen(toColour(pageInk), whole(std::max(box.width / 12, pixel))));
    dc.DrawRectangle(toRect(box));
    if (!shown.checked) return;
    dc.SetPen(wxPen(toColour(pageInk), whole(std::max(box.width / 7, pixel))));
    std::array<wxPoint, checkMark.size()> corners;
    for (std::size_t i = 0; i < corners.size(); ++i)
        corners[i] = {whole(box.x + checkMark[i][0] * box.width),
                      whole(box.y + checkMark[i][1] * box.height)};
    dc.DrawLines(static_cast<int>(corners.size()), corners.data());
}

// zoom: pixels a twip; part: twips, empty for all.
void PlainPagePainter::paint(wxDC& dc, const PageContents& page, double zoom, const wxRect& part) {
    const auto reaches = [&](const Box& box) {
        return part.IsEmpty() || part.Intersects(toRect(box));
    };
    const double pixel = 1 / zoom;
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (const PageFill& area : page.fills) {
        dc.SetBrush(toColour(area.colour));
        if (reaches(area.box)) dc.DrawRectangle(toRect(area.box));
    }
    dc.SetBrush(toColour(pageLineColour));
    const int thick = whole(std::ceil(std::max(pageLineWidth, pixel)));
    for (const PageLine& thin : page.lines) {
        const int length = whole(thin.length) + thick;
        dc.DrawRectangle(whole(thin.x), whole(thin.y), thin.across ? length : thick,
                         thin.across ? thick : length);
    }
    dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
    dc.SetTextForeground(toColour(pageInk));
    for (const PageText& shown : page.texts)
        if (reaches(shown.box)) text(dc, shown);
    for (const PageCheck& shown : page.checks)
        if (reaches(shown.box)) drawCheck(dc, shown, pixel);
}

void PlainPagePainter::PaintOnScreen(wxDC& dc, const PageContents& page, double zoom,
                                     wxPoint origin, const wxRect& part) {
    const wxDCClipper clip(dc, part);
    dc.SetDeviceOrigin(origin.x, origin.y);
    dc.SetUserScale(zoom, zoom);
    wxRect twips(dc.DeviceToLogicalX(part.x), dc.DeviceToLogicalY(part.y),
                 dc.DeviceToLogicalXRel(part.width) + 1, dc.DeviceToLogicalYRel(part.height) + 1);
    paint(dc, page, zoom, twips);
    dc.SetUserScale(1, 1);
    dc.SetDeviceOrigin(0, 0);
}

// A printer's origin is the corner of what it can print on; pages begin in the paper's.
void PlainPagePainter::PaintOnPaper(const wxPrintout& printout, const PageContents& page) {
    wxDC& dc = *printout.GetDC();
    int across = 0;
    int down = 0;
    printout.GetPPIPrinter(&across, &down);
    const wxRect paper = printout.GetPaperRectPixels();
    dc.SetDeviceOrigin(paper.x, paper.y);
    dc.SetUserScale(across / 1440.0, down / 1440.0);
    paint(dc, page, across / 1440.0, {});
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
