// The tip of a part of a window that draws several.
#pragma once

#include <wx/gdicmn.h>

#include <string>

class wxWindow;

namespace norvel::controls {

// The window's tip from now on, for the part under the mouse; empty: none. area: that part, in
// client pixels. A tip that is on show goes and comes again beside the new part.
void setTip(wxWindow& window, const std::string& text, const wxRect& area);

} // namespace norvel::controls
