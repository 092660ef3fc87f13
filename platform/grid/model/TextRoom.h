// Whether a line of text is seen whole.
#pragma once

#include "platform/grid/model/Model.h"

namespace norvel::grid {

struct Span {
    int from = 0, length = 0; // pixels
};

// box: what the text has to itself; a wider one is cut at its end. pane: what is seen of the box,
// which may be scrolled partly out of it.
NR_API bool isTextCut(int textWidth, const Span& box, Alignment align, const Span& pane);

} // namespace norvel::grid
