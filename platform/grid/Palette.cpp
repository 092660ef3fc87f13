#include "platform/grid/Palette.h"

#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace norvel::grid {

namespace {

double luminance(const wxColour& colour) {
    const auto linear = [](unsigned char channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.Red()) + 0.7152 * linear(colour.Green()) +
           0.0722 * linear(colour.Blue());
}

wxColour fromValue(std::uint32_t value) {
    return {static_cast<unsigned char>(value & 0xFF), static_cast<unsigned char>(value >> 8 & 0xFF),
            static_cast<unsigned char>(value >> 16 & 0xFF)};
}

wxColour system(wxSystemColour which) {
    const wxColour colour = wxSystemSettings::GetColour(which);
    return {colour.Red(), colour.Green(), colour.Blue()};
}

constexpr double readable = 4.5; // the least contrast for text

// The preferred colour where it can be read; a pair that the theme itself made gets by with less.
wxColour readableOn(const wxColour& back, const wxColour& preferred, double least = readable) {
    if (contrast(back, preferred) >= least) return preferred;
    return contrast(back, *wxBLACK) >= contrast(back, *wxWHITE) ? *wxBLACK : *wxWHITE;
}

// The colour, moved towards the text's as far as a line needs to be seen.
wxColour visibleOn(const wxColour& back, const wxColour& preferred, const wxColour& text) {
    constexpr double lineContrast = 3;
    double weight = 0;
    while (weight < 1 && contrast(back, blend(preferred, text, weight)) < lineContrast)
        weight += 0.1;
    return blend(preferred, text, std::min(1.0, weight));
}

} // namespace

wxColour blend(const wxColour& a, const wxColour& b, double weight) {
    const auto mix = [&](unsigned char x, unsigned char y) {
        return static_cast<unsigned char>(std::lround(x + (y - x) * weight));
    };
    return {mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue())};
}

double contrast(const wxColour& a, const wxColour& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Palette systemPalette() {
    Palette p;
    p.back = system(wxSYS_COLOUR_LISTBOX);
    p.text = readableOn(p.back, system(wxSYS_COLOUR_LISTBOXTEXT));
    p.dark = luminance(p.back) < luminance(p.text);
    p.greyText = blend(p.back, p.text, 0.55);
    p.face = system(wxSYS_COLOUR_BTNFACE);
    if (contrast(p.face, p.back) < 1.04) p.face = blend(p.back, p.text, 0.07);
    p.faceText = readableOn(p.face, system(wxSYS_COLOUR_BTNTEXT));
    p.faceHot = blend(p.face, p.faceText, 0.06);
    p.facePressed = blend(p.face, p.faceText, 0.16);
    p.line = blend(p.back, p.text, 0.13);
    p.faceLine = blend(p.face, p.faceText, 0.26);
    p.frozenLine = blend(p.face, p.faceText, 0.5);
    p.selection = system(wxSYS_COLOUR_HIGHLIGHT);
    p.selectionText = readableOn(p.selection, system(wxSYS_COLOUR_HIGHLIGHTTEXT), 2.5);
    p.focus = visibleOn(p.back, p.selection, p.text);
    p.idleSelection = blend(p.back, blend(p.selection, p.text, 0.35), 0.3);
    p.idleSelectionText = readableOn(p.idleSelection, p.text);
    p.currentBack = blend(p.back, p.selection, p.dark ? 0.3 : 0.16);
    p.idleCurrentBack = blend(p.back, p.text, 0.07);
    p.filterBack = p.back;
    p.filterHint = blend(p.back, p.text, 0.4);
    p.error = p.dark ? wxColour(255, 110, 110) : wxColour(200, 20, 20);
    p.errorBack = blend(p.filterBack, p.error, p.dark ? 0.3 : 0.13);
    return p;
}

RowColours alternateColours(const Palette& palette, const Split& split, bool evenRow) {
    const Style& style = evenRow ? split.EvenRowStyle : split.OddRowStyle;
    const Style& usual = evenRow ? defaultEvenRowStyle : defaultOddRowStyle;
    if (style.BackColor != usual.BackColor) {
        const wxColour back = fromValue(style.BackColor);
        return {back, readableOn(back, palette.text)};
    }
    const wxColour tinted = palette.dark ? blend(palette.back, palette.text, 0.05)
                                         : fromValue(defaultEvenRowStyle.BackColor);
    const wxColour back = evenRow ? tinted : palette.back;
    return {back, readableOn(back, palette.text)};
}

wxColour frameColour(const Palette& palette, const wxColour& back) {
    return visibleOn(back, palette.focus, readableOn(back, palette.text));
}

} // namespace norvel::grid
