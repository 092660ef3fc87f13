// Texts drawn by the toolkit's own drawing context: for platforms where that is quick.
#include "platform/grid/TextPainter.h"

#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/window.h>

#include <algorithm>

namespace norvel::grid {

namespace {

class PlainTextPainter : public TextPainter {
  public:
    void SetFont(const wxFont& font, wxWindow& window) override {
        font_ = font;
        window_ = &window;
        window.GetTextExtent("Ag", nullptr, &height_, nullptr, nullptr, &font_);
        window.GetTextExtent("#", &hash_, nullptr, nullptr, nullptr, &font_);
    }
    int Height() const override { return height_; }
    int Width(std::string_view text) override {
        int width = 0;
        window_->GetTextExtent(wide(text), &width, nullptr, nullptr, nullptr, &font_);
        return width;
    }
    void Begin(wxDC& dc, const wxRect& clip) override {
        dc_ = &dc;
        dc.SetFont(font_);
        dc.SetBackgroundMode(wxBRUSHSTYLE_TRANSPARENT);
        clipper_ = std::make_unique<wxDCClipper>(dc, clip);
    }
    void Draw(std::string_view text, const wxRect& box, Alignment align, Overflow overflow,
              const wxColour& colour) override;
    void End() override {
        clipper_.reset();
        dc_ = nullptr;
    }

  private:
    static wxString wide(std::string_view text) {
        return wxString::FromUTF8(text.data(), text.size());
    }
    wxFont font_;
    wxWindow* window_ = nullptr;
    wxDC* dc_ = nullptr;
    std::unique_ptr<wxDCClipper> clipper_;
    int height_ = 0;
    int hash_ = 1;
};

void PlainTextPainter::Draw(std::string_view text, const wxRect& box, Alignment align,
                            Overflow overflow, const wxColour& colour) {
    if (text.empty() || box.width <= 0) return;
    wxString shown = wide(text);
    int width = dc_->GetTextExtent(shown).x;
    if (width > box.width) {
        shown = overflow == Overflow::Hashes
                    ? wxString('#', static_cast<std::size_t>(std::max(1, box.width / hash_)))
                    : wxControl::Ellipsize(shown, *dc_, wxELLIPSIZE_END, box.width, 0);
        width = dc_->GetTextExtent(shown).x;
    }
    int x = box.x;
    if (align == Alignment::Right) x += std::max(0, box.width - width);
    if (align == Alignment::Center) x += std::max(0, (box.width - width) / 2);
    if (dc_->GetTextForeground() != colour) dc_->SetTextForeground(colour);
    dc_->DrawText(shown, x, box.y + (box.height - height_) / 2);
}

} // namespace

std::unique_ptr<TextPainter> makePlainTextPainter() {
    return std::make_unique<PlainTextPainter>();
}

#ifndef NR_PANGO
std::unique_ptr<TextPainter> makeTextPainter() {
    return makePlainTextPainter();
}
#endif

} // namespace norvel::grid
