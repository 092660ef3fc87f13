// How high rows get when an operator sizes them. Sizes in twips.
#pragma once

#include "platform/runtime/Api.h"

namespace norvel::grid {

struct RowHeights {
    double font = 0;  // what rows have by themselves
    double least = 0; // a line of text is whole
    double most = 0;  // a row is whole in view
};

// GridStyle::RowHeight for a wanted height: kept within what is possible; 0, the font's own, within
// half a step of it.
NR_API double chosenRowHeight(double wanted, const RowHeights& heights);

// The next height by keys: a step up or down from what there is, the font's own among the steps.
NR_API double nextRowHeight(double now, bool higher, const RowHeights& heights);

// By how much a key sizes rows and columns.
inline constexpr double rowHeightStep = 60;
inline constexpr double columnWidthStep = 120;

} // namespace norvel::grid
