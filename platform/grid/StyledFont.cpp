#include "platform/grid/StyledFont.h"

#include "platform/controls/WxText.h"

namespace norvel::grid {

wxFont styledFont(wxFont font, const FontStyle& style) {
    if (!style.Name.empty()) font.SetFaceName(controls::toWx(style.Name));
    if (style.Size > 0) font.SetFractionalPointSize(style.Size);
    if (style.Bold) font.SetWeight(wxFONTWEIGHT_BOLD);
    if (style.Italic) font.SetStyle(wxFONTSTYLE_ITALIC);
    return font;
}

} // namespace norvel::grid
