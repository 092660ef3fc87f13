// The grid's colours: the system's own, and shades between them, so that light, dark and
// high-contrast themes all give a readable grid.
#pragma once

#include "platform/grid/model/Model.h"

#include <wx/colour.h>

namespace norvel::grid {

struct Palette {
    wxColour back, text, greyText;                 // of a data cell
    wxColour face, faceText, faceHot, facePressed; // headings, record selectors
    wxColour line, faceLine, focus;    // between cells, between headings, of the focus ring
    wxColour frozenLine;               // behind the frozen columns, between splits
    wxColour selection, selectionText; // with focus
    wxColour idleSelection, idleSelectionText;
    wxColour currentBack, idleCurrentBack; // the current row
    wxColour filterBack, filterHint;
    wxColour error, errorBack; // of a filter cell whose text is no filter
    bool dark = false;
};

// Reads the system's colours; ask again when the theme changes.
Palette systemPalette();

// a at weight 0, b at weight 1.
wxColour blend(const wxColour& a, const wxColour& b, double weight);
// The contrast of two colours, 1 to 21, as the Web Content Accessibility Guidelines define it.
double contrast(const wxColour& a, const wxColour& b);

// The colours of a row of the alternating style: the split's own; the default ones become shades
// of the theme, and a text that would not be readable on a colour becomes black or white.
struct RowColours {
    wxColour back, text;
};
RowColours alternateColours(const Palette& palette, const Split& split, bool evenRow);

// Of the current cell's frame on a row of that colour: the theme's own where it can be seen.
wxColour frameColour(const Palette& palette, const wxColour& back);

} // namespace norvel::grid
