// Pages painted by Pango and Cairo. Texts are measured without regard to pixels, so that they are
// as wide at every zoom as on paper.
#include "platform/grid/preview/PagePainter.h"

#include <cairo.h>
#include <pango/pangocairo.h>
#include <wx/fontutil.h>
#include <wx/graphics.h>
#include <wx/print.h>

#include <algorithm>
#include <cmath>

namespace norvel::grid {

namespace {

struct GObjectFree {
    template <class T>
    void operator()(T* object) const {
        g_object_unref(object);
    }
};
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectFree>;

constexpr double twipsPerUnit = 1.0 / PANGO_SCALE; // with a resolution of 1440 to the inch

// One page on one Cairo context, whose unit becomes the twip.
struct Target {
    cairo_t* cairo;
    double pixel; // twips to a pixel; 0 on paper, where lines need no rounding
    Box part;     // what is asked for; empty: all
};

bool reaches(const Box& box, const Target& target) {
    const Box& part = target.part;
    return part.width <= 0 || (box.x < part.Right() && part.x < box.Right() &&
                               box.y < part.Bottom() && part.y < box.Bottom());
}

void setColour(cairo_t* cairo, std::uint32_t colour) {
    cairo_set_source_rgb(cairo, (colour & 0xFF) / 255.0, (colour >> 8 & 0xFF) / 255.0,
                         (colour >> 16 & 0xFF) / 255.0);
}

// To the nearest pixel's edge.
double onPixel(double twips, const Target& target) {
    return target.pixel > 0 ? std::round(twips / target.pixel) * target.pixel : twips;
}

void fill(const Target& target, const PageFill& area) {
    setColour(target.cairo, area.colour);
    const double x = onPixel(area.box.x, target);
    const double y = onPixel(area.box.y, target);
    cairo_rectangle(target.cairo, x, y, onPixel(area.box.Right(), target) - x,
                    onPixel(area.box.Bottom(), target) - y);
    cairo_fill(target.cairo);
}

// At least a pixel wide and a whole number of them.
void line(const Target& target, const PageLine& thin) {
    double width = pageLineWidth;
    if (target.pixel > 0)
        width = std::max(1.0, std::round(pageLineWidth / target.pixel)) * target.pixel;
    const double x = onPixel(thin.x, target);
    const double y = onPixel(thin.y, target);
    const double end = onPixel((thin.across ? thin.x : thin.y) + thin.length, target);
    if (thin.across)
        cairo_rectangle(target.cairo, x, y, end - x + width, width);
    else
        cairo_rectangle(target.cairo, x, y, width, end - y + width);
}

void check(const Target& target, const PageCheck& shown) {
    cairo_t* cairo = target.cairo;
    const Box& box = shown.box;
    setColour(cairo, pageInk);
    cairo_set_line_width(cairo, std::max(box.width / 12, target.pixel));
    cairo_rectangle(cairo, box.x, box.y, box.width, box.height);
    cairo_stroke(cairo);
    if (!shown.checked) return;
    cairo_set_line_width(cairo, std::max(box.width / 7, target.pixel));
    for (const auto& [x, y] : checkMark)
        cairo_line_to(cairo, box.x + x * box.width, box.y + y * box.height);
    cairo_stroke(cairo);
}

class PangoPagePainter : public PagePainter {
  public:
    explicit PangoPagePainter(const PageFontSet& fonts);
    PageTextSizes Sizes() override;
    void PaintOnScreen(wxDC& dc, const PageContents& page, double zoom, wxPoint origin,
                       const wxRect& part) override;
    void PaintOnPaper(const wxPrintout& printout, const PageContents& page) override;

  private:
    struct Font {
        GObjectPtr<PangoLayout> layout;
        double ascent = 0, height = 0; // twips
    };
    Font& fontOf(PageFont font) { return fonts_[static_cast<std::size_t>(font)]; }
    double setText(PageFont font, std::string_view text);
    void text(const Target& target, const PageText& shown);
    void paint(const Target& target, const PageContents& page);

    GObjectPtr<PangoContext> context_;
    std::array<Font, pageFonts> fonts_;
};

PangoPagePainter::PangoPagePainter(const PageFontSet& fonts)
    : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
    pango_cairo_context_set_resolution(context_.get(), 1440);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context_.get(), options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context_.get(), FALSE);
    for (std::size_t i = 0; i < pageFonts; ++i) {
        const PangoFontDescription* description = fonts[i].GetNativeFontInfo()->description;
        fonts_[i].layout.reset(pango_layout_new(context_.get()));
        PangoLayout* layout = fonts_[i].layout.get();
        pango_layout_set_font_description(layout, description);
        pango_layout_set_single_paragraph_mode(layout, TRUE);
        PangoFontMetrics* metrics = pango_context_get_metrics(context_.get(), description, nullptr);
        fonts_[i].ascent = pango_font_metrics_get_ascent(metrics) * twipsPerUnit;
        fonts_[i].height =
            fonts_[i].ascent + pango_font_metrics_get_descent(metrics) * twipsPerUnit;
        pango_font_metrics_unref(metrics);
    }
}

PageTextSizes PangoPagePainter::Sizes() {
    PageTextSizes sizes;
    sizes.width = [this](PageFont font, std::string_view text) { return setText(font, text); };
    for (std::size_t i = 0; i < pageFonts; ++i)
        sizes.lineHeight[i] = fonts_[i].height;
    return sizes;
}

// Gives the font's layout the text; its width.
double PangoPagePainter::setText(PageFont font, std::string_view text) {
    PangoLayout* layout = fontOf(font).layout.get();
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    return width * twipsPerUnit;
}

void PangoPagePainter::text(const Target& target, const PageText& shown) {
    const Font& font = fontOf(shown.font);
    const double width = setText(shown.font, shown.text);
    double x = shown.box.x;
    if (shown.align == Alignment::Right) x += shown.box.width - width;
    if (shown.align == Alignment::Center) x += (shown.box.width - width) / 2;
    const double top = shown.box.y + (shown.box.height - font.height) / 2;
    cairo_move_to(target.cairo, x, onPixel(top + font.ascent, target));
    pango_cairo_show_layout_line(target.cairo,
                                 pango_layout_get_line_readonly(font.layout.get(), 0));
}

void PangoPagePainter::paint(const Target& target, const PageContents& page) {
    pango_cairo_update_context(target.cairo, context_.get());
    for (Font& font : fonts_)
        pango_layout_context_changed(font.layout.get());
    for (const PageFill& area : page.fills)
        if (reaches(area.box, target)) fill(target, area);
    setColour(target.cairo, pageLineColour);
    for (const PageLine& thin : page.lines)
        line(target, thin);
    cairo_fill(target.cairo);
    setColour(target.cairo, pageInk);
    for (const PageText& shown : page.texts)
        if (reaches(shown.box, target)) text(target, shown);
    for (const PageCheck& shown : page.checks)
        if (reaches(shown.box, target)) check(target, shown);
}

void PangoPagePainter::PaintOnScreen(wxDC& dc, const PageContents& page, double zoom,
                                     wxPoint origin, const wxRect& part) {
    auto* cairo = static_cast<cairo_t*>(dc.GetGraphicsContext()->GetNativeContext());
    cairo_save(cairo);
    cairo_rectangle(cairo, part.x, part.y, part.width, part.height);
    cairo_clip(cairo);
    cairo_translate(cairo, origin.x, origin.y);
    cairo_scale(cairo, zoom, zoom);
    const double pixel = 1 / (zoom * dc.GetContentScaleFactor());
    paint({cairo,
           pixel,
           {(part.x - origin.x) / zoom, (part.y - origin.y) / zoom, part.width / zoom,
            part.height / zoom}},
          page);
    cairo_restore(cairo);
}

// The toolkit's printing puts the context's origin into the corner of the paper, but on a paper
// that lies it takes the margins for those of an upright one. The paper's corners tell: the device
// begins at the first of them, turned or not.
void startInCorner(cairo_t* cairo, const wxRect& paper) {
    double left = 0;
    double top = 0;
    bool first = true;
    for (double x : {paper.x, paper.x + paper.width}) {
        for (double y : {paper.y, paper.y + paper.height}) {
            double deviceX = x;
            double deviceY = y;
            cairo_user_to_device(cairo, &deviceX, &deviceY);
            left = first ? deviceX : std::min(left, deviceX);
            top = first ? deviceY : std::min(top, deviceY);
            first = false;
        }
    }
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    matrix.x0 -= left;
    matrix.y0 -= top;
    cairo_set_matrix(cairo, &matrix);
}

// The toolkit's printing makes the context's unit the printer's dot.
void PangoPagePainter::PaintOnPaper(const wxPrintout& printout, const PageContents& page) {
    auto* cairo = static_cast<cairo_t*>(printout.GetDC()->GetImpl()->GetCairoContext());
    cairo_save(cairo);
    startInCorner(cairo, printout.GetPaperRectPixels());
    int across = 0;
    int down = 0;
    printout.GetPPIPrinter(&across, &down);
    cairo_scale(cairo, across / 1440.0, down / 1440.0);
    paint({cairo, 0, {}}, page);
    cairo_restore(cairo);
}

} // namespace

std::unique_ptr<PagePainter> makePagePainter(const PageFontSet& fonts) {
    return std::make_unique<PangoPagePainter>(fonts);
}

} // namespace norvel::grid
