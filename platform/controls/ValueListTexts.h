// How the entries of a value list are written on one line.
#pragma once

#include <wx/string.h>

#include <string_view>

namespace norvel::controls {

inline constexpr int textMargin = 6; // left and right of an entry's text, 1/96 inch

// The beginning of an entry, as much as a line can show, without line breaks.
wxString shownText(std::string_view entry);

} // namespace norvel::controls
