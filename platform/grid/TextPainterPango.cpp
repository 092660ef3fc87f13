// Texts shaped by Pango without a layout, and drawn by Cairo in one go for each colour. Texts that
// need more than glyphs side by side (other scripts, right-to-left, combining marks, characters
// that the font lacks) take the long way through a layout.
#include "platform/grid/TextPainter.h"

#include <cairo.h>
#include <pango/pangocairo.h>
#include <wx/dc.h>
#include <wx/fontutil.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include <algorithm>
#include <bitset>
#include <cmath>
#include <string>
#include <vector>

namespace norvel::grid {

namespace {

template <class T>
struct GObjectFree {
    void operator()(T* object) const { g_object_unref(object); }
};
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectFree<T>>;
struct ItemFree {
    void operator()(PangoItem* item) const { pango_item_free(item); }
};
struct GlyphsFree {
    void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};
struct DescriptionFree {
    void operator()(PangoFontDescription* d) const { pango_font_description_free(d); }
};
using GlyphsPtr = std::unique_ptr<PangoGlyphString, GlyphsFree>;

constexpr std::size_t simpleLimit = 0x2100; // characters below may be simple

// Characters that stand side by side, each by its own glyph: Latin letters of Europe, digits,
// punctuation, the euro.
bool mayBeSimple(gunichar c) {
    if (c >= 0x20 && c <= 0x7E) return true;
    if (c >= 0xA0 && c <= 0x24F) return c != 0xAD;
    return c == 0x2013 || c == 0x2014 || (c >= 0x2018 && c <= 0x201E) || c == 0x2022 ||
           c == 0x2026 || c == 0x20AC;
}

class PangoTextPainter : public TextPainter {
  public:
    PangoTextPainter();
    void SetFont(const wxFont& font, wxWindow& window) override;
    int Height() const override { return height_; }
    int Width(std::string_view text) override;
    void Begin(wxDC& dc, const wxRect& clip) override;
    void Draw(std::string_view text, const wxRect& box, Alignment align, Overflow overflow,
              const wxColour& colour) override;
    void End() override;

  private:
    struct Batch { // of one colour
        wxColour colour;
        std::vector<cairo_glyph_t> glyphs;
    };
    void prepareFont();
    void calibrate(const wxFont& font, wxWindow& window);
    bool isSimple(std::string_view text) const;
    const PangoGlyphString& shape(std::string_view text);
    void shapeInto(std::string_view text, PangoGlyphString& glyphs);
    int layoutWidth(std::string_view text);
    void drawLayout(std::string_view text, const wxRect& box, Alignment align,
                    const wxColour& colour);
    void emit(const PangoGlyphString& glyphs, int count, int x, int baseline,
              std::vector<cairo_glyph_t>& into) const;
    std::vector<cairo_glyph_t>& batchOf(const wxColour& colour);
    int baselineIn(const wxRect& box) const { return box.y + (box.height - height_) / 2 + ascent_; }

    GObjectPtr<PangoContext> context_;
    std::unique_ptr<PangoFontDescription, DescriptionFree> description_;
    std::unique_ptr<PangoItem, ItemFree>
        item_; // what shaping needs to know: font, script, language
    GlyphsPtr shaped_, ellipsis_, hash_;
    GObjectPtr<PangoLayout> layout_;
    std::bitset<simpleLimit> covered_;
    int height_ = 1, ascent_ = 1, ellipsisWidth_ = 0, hashWidth_ = 1;

    cairo_t* cairo_ = nullptr;
    std::vector<Batch> batches_;
};

// Pango's units to whole pixels, upwards.
int toPixels(int units) {
    return (units + PANGO_SCALE - 1) / PANGO_SCALE;
}

int widthOf(const PangoGlyphString& glyphs) {
    int width = 0;
    for (int i = 0; i < glyphs.num_glyphs; ++i)
        width += glyphs.glyphs[i].geometry.width;
    return width;
}

// The font is not asked to suit the surface drawn on: the widths measured before anything was drawn
// hold, and they are the toolkit's own.
PangoTextPainter::PangoTextPainter()
    : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())),
      shaped_(pango_glyph_string_new()), ellipsis_(pango_glyph_string_new()),
      hash_(pango_glyph_string_new()) {}

void PangoTextPainter::SetFont(const wxFont& font, wxWindow& window) {
    description_.reset(pango_font_description_copy(font.GetNativeFontInfo()->description));
    calibrate(font, window);
    prepareFont();
}

// The desktop's text resolution, which the toolkit applies and does not tell: found by comparing
// the width of a text, at a size where whole pixels hardly matter.
void PangoTextPainter::calibrate(const wxFont& font, wxWindow& window) {
    constexpr double usual = 96.0;
    wxFont large(font);
    large.SetPointSize(200);
    const std::string sample = "Hannover";
    int theirs = 0;
    window.GetTextExtent(sample, &theirs, nullptr, nullptr, nullptr, &large);
    pango_cairo_context_set_resolution(context_.get(), usual);
    layout_.reset(pango_layout_new(context_.get()));
    pango_layout_set_font_description(layout_.get(), large.GetNativeFontInfo()->description);
    const int ours = layoutWidth(sample);
    const double ratio = ours > 0 && theirs > 0 ? static_cast<double>(theirs) / ours : 1.0;
    pango_cairo_context_set_resolution(context_.get(), std::round(usual * ratio));
}

void PangoTextPainter::prepareFont() {
    pango_context_set_font_description(context_.get(), description_.get());
    layout_.reset(pango_layout_new(context_.get()));
    pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    PangoAttrList* none = pango_attr_list_new();
    GList* items = pango_itemize(context_.get(), "nA", 0, 2, none, nullptr);
    pango_attr_list_unref(none);
    item_.reset(static_cast<PangoItem*>(items->data));
    for (GList* rest = items->next; rest; rest = rest->next)
        pango_item_free(static_cast<PangoItem*>(rest->data));
    g_list_free(items);
    PangoFont* font = item_->analysis.font;
    covered_.reset();
    for (gunichar c = 0x20; c < simpleLimit; ++c)
        if (mayBeSimple(c) && pango_font_has_char(font, c)) covered_.set(c);
    PangoFontMetrics* metrics = pango_font_get_metrics(font, nullptr);
    ascent_ = toPixels(pango_font_metrics_get_ascent(metrics));
    height_ = ascent_ + toPixels(pango_font_metrics_get_descent(metrics));
    pango_font_metrics_unref(metrics);
    const char* end = covered_.test(0x2026) ? "\xE2\x80\xA6" : "...";
    shapeInto(end, *ellipsis_);
    ellipsisWidth_ = widthOf(*ellipsis_);
    shapeInto("#", *hash_);
    hashWidth_ = std::max(1, widthOf(*hash_));
}

bool PangoTextPainter::isSimple(std::string_view text) const {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) {
            if (!covered_.test(byte)) return false;
            ++i;
            continue;
        }
        const gunichar c =
            g_utf8_get_char_validated(text.data() + i, static_cast<gssize>(text.size() - i));
        if (c >= simpleLimit || !covered_.test(c)) return false;
        i += c < 0x800 ? 2 : 3;
    }
    return true;
}

const PangoGlyphString& PangoTextPainter::shape(std::string_view text) {
    shapeInto(text, *shaped_);
    return *shaped_;
}

// Whole pixels, as a layout gives them.
void PangoTextPainter::shapeInto(std::string_view text, PangoGlyphString& glyphs) {
    pango_shape_with_flags(text.data(), static_cast<int>(text.size()), nullptr, 0, &item_->analysis,
                           &glyphs, PANGO_SHAPE_ROUND_POSITIONS);
}

int PangoTextPainter::layoutWidth(std::string_view text) {
    pango_layout_set_width(layout_.get(), -1);
    pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
    int width = 0;
    pango_layout_get_pixel_size(layout_.get(), &width, nullptr);
    return width;
}

int PangoTextPainter::Width(std::string_view text) {
    if (text.empty()) return 0;
    return isSimple(text) ? toPixels(widthOf(shape(text))) : layoutWidth(text);
}

// --- drawing ---

void PangoTextPainter::Begin(wxDC& dc, const wxRect& clip) {
    cairo_ = static_cast<cairo_t*>(dc.GetGraphicsContext()->GetNativeContext());
    cairo_save(cairo_);
    cairo_rectangle(cairo_, clip.x, clip.y, clip.width, clip.height);
    cairo_clip(cairo_);
    for (Batch& batch : batches_)
        batch.glyphs.clear();
}

std::vector<cairo_glyph_t>& PangoTextPainter::batchOf(const wxColour& colour) {
    for (Batch& batch : batches_)
        if (batch.colour == colour) return batch.glyphs;
    if (batches_.size() > 16) batches_.clear(); // another theme's colours
    return batches_.emplace_back(Batch{colour, {}}).glyphs;
}

void PangoTextPainter::emit(const PangoGlyphString& glyphs, int count, int x, int baseline,
                            std::vector<cairo_glyph_t>& into) const {
    int pen = x * PANGO_SCALE;
    for (int i = 0; i < count; ++i) {
        const PangoGlyphInfo& info = glyphs.glyphs[i];
        if (info.glyph != PANGO_GLYPH_EMPTY && !(info.glyph & PANGO_GLYPH_UNKNOWN_FLAG)) {
            into.push_back({info.glyph,
                            static_cast<double>(pen + info.geometry.x_offset) / PANGO_SCALE,
                            baseline + static_cast<double>(info.geometry.y_offset) / PANGO_SCALE});
        }
        pen += info.geometry.width;
    }
}

void PangoTextPainter::Draw(std::string_view text, const wxRect& box, Alignment align,
                            Overflow overflow, const wxColour& colour) {
    if (text.empty() || box.width <= 0) return;
    if (!isSimple(text)) return drawLayout(text, box, align, colour);
    const PangoGlyphString& glyphs = shape(text);
    const int room = box.width * PANGO_SCALE;
    const int width = widthOf(glyphs);
    auto& into = batchOf(colour);
    const int baseline = baselineIn(box);
    if (width <= room) {
        int x = box.x;
        if (align == Alignment::Right) x += box.width - toPixels(width);
        if (align == Alignment::Center) x += (box.width - toPixels(width)) / 2;
        return emit(glyphs, glyphs.num_glyphs, x, baseline, into);
    }
    if (overflow == Overflow::Hashes) {
        for (int i = 0; i < std::max(1, room / hashWidth_); ++i)
            emit(*hash_, 1, box.x + i * hashWidth_ / PANGO_SCALE, baseline, into);
        return;
    }
    int kept = 0;
    int used = 0;
    while (kept < glyphs.num_glyphs &&
           used + glyphs.glyphs[kept].geometry.width + ellipsisWidth_ <= room)
        used += glyphs.glyphs[kept++].geometry.width;
    emit(glyphs, kept, box.x, baseline, into);
    emit(*ellipsis_, ellipsis_->num_glyphs, box.x + used / PANGO_SCALE, baseline, into);
}

void PangoTextPainter::drawLayout(std::string_view text, const wxRect& box, Alignment align,
                                  const wxColour& colour) {
    PangoLayout* layout = layout_.get();
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    pango_layout_set_width(layout, box.width * PANGO_SCALE);
    pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
    pango_layout_set_alignment(layout, align == Alignment::Right    ? PANGO_ALIGN_RIGHT
                                       : align == Alignment::Center ? PANGO_ALIGN_CENTER
                                                                    : PANGO_ALIGN_LEFT);
    cairo_set_source_rgb(cairo_, colour.Red() / 255.0, colour.Green() / 255.0,
                         colour.Blue() / 255.0);
    const double top =
        baselineIn(box) - static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE;
    cairo_move_to(cairo_, box.x, std::round(top));
    pango_cairo_show_layout(cairo_, layout);
}

void PangoTextPainter::End() {
    cairo_scaled_font_t* font =
        pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(item_->analysis.font));
    cairo_set_scaled_font(cairo_, font);
    for (const Batch& batch : batches_) {
        if (batch.glyphs.empty()) continue;
        cairo_set_source_rgb(cairo_, batch.colour.Red() / 255.0, batch.colour.Green() / 255.0,
                             batch.colour.Blue() / 255.0);
        cairo_show_glyphs(cairo_, batch.glyphs.data(), static_cast<int>(batch.glyphs.size()));
    }
    cairo_restore(cairo_);
    cairo_ = nullptr;
}

} // namespace

std::unique_ptr<TextPainter> makeTextPainter() {
    return std::make_unique<PangoTextPainter>();
}

} // namespace norvel::grid
