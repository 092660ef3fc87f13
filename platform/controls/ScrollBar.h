// The scroll bar of a control that draws itself.
#pragma once

#include "platform/runtime/Api.h"

#include <wx/event.h>
#include <wx/gdicmn.h>

#include <functional>

class wxScrollBar;

namespace norvel::controls {

// Hidden at first, and no stop for the keyboard. onScroll: is told of whatever the operator does to
// it.
NR_API wxScrollBar* makeScrollBar(wxWindow& in, bool vertical,
                                  const std::function<void(wxScrollEvent&)>& onScroll);

// Gives the bar its place, and shows it where it is needed and has room for its thumb: a shorter
// one scrolls nothing, and is an error to the toolkit. Keys and wheel scroll all the same.
NR_API void placeScrollBar(wxScrollBar& bar, const wxRect& place, bool needed);

} // namespace norvel::controls
