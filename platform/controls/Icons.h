// The system's own icons, drawn as shapes so that they are sharp at every scale.
#pragma once

#include <wx/colour.h>
#include <wx/geometry.h>

#include <string_view>
#include <vector>

class wxGraphicsContext;

namespace norvel::controls {

// The two tones of an icon, and what reads on the second.
struct IconColours {
    wxColour line;     // outlines
    wxColour accent;   // what the icon is about
    wxColour onAccent; // marks over an area of the accent
};

// The tones that read on a background: dark on light, light on dark; pale for what is disabled.
IconColours iconColours(const wxColour& background, const wxColour& text, bool enabled = true);
// True where a background needs light marks.
bool isDark(const wxColour& background);
// a towards b: 0 is a, 1 is b.
wxColour blend(const wxColour& a, const wxColour& b, double share);

// Draws the icon of a key (case-blind; a key without one gets a neutral icon) into a square.
// where: logical pixels, best with whole numbers. deviceScale: device pixels to a logical one.
// The context's half-pixel offset is off afterwards.
void drawIcon(wxGraphicsContext& context, std::string_view key, const wxRect2DDouble& where,
              const IconColours& colours, double deviceScale);

// The keys that have an icon of their own, in the order of the table.
std::vector<std::string_view> iconKeys();

} // namespace norvel::controls
