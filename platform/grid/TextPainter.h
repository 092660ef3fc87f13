// Draws many short texts quickly.
#pragma once

#include "platform/grid/model/Model.h"

#include <wx/dc.h>
#include <wx/font.h>
#include <wx/gdicmn.h>

#include <memory>
#include <string_view>

namespace norvel::grid {

// What becomes of a text that is wider than its box: the end becomes "…"; or, where a part of the
// text would be a wrong value, the box fills with "#".
enum class Overflow { Ellipsis, Hashes };

// One line of text in a box: centred vertically, aligned and cut horizontally. Sizes are logical
// pixels. Texts are UTF-8 without line breaks.
class TextPainter {
  public:
    virtual ~TextPainter() = default;
    virtual void SetFont(const wxFont& font, wxWindow& window) = 0;
    virtual int Height() const = 0; // of a line
    virtual int Width(std::string_view text) = 0;

    // Texts drawn between Begin and End may reach the screen only at End; clip holds for them all.
    virtual void Begin(wxDC& dc, const wxRect& clip) = 0;
    virtual void Draw(std::string_view text, const wxRect& box, Alignment align, Overflow overflow,
                      const wxColour& colour) = 0;
    virtual void End() = 0;
};

// The quickest one that the platform has.
std::unique_ptr<TextPainter> makeTextPainter();
// The one that draws by the toolkit alone.
std::unique_ptr<TextPainter> makePlainTextPainter();

} // namespace norvel::grid
