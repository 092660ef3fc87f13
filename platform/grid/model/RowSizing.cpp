#include "platform/grid/model/RowSizing.h"

#include <algorithm>
#include <cmath>

namespace norvel::grid {

double chosenRowHeight(double wanted, const RowHeights& heights) {
    if (std::abs(wanted - heights.font) < rowHeightStep / 2) return 0;
    return std::clamp(wanted, heights.least, std::max(heights.least, heights.most));
}

// From a height between two steps to the next one.
double nextRowHeight(double now, bool higher, const RowHeights& heights) {
    constexpr double hair = 1; // rounding to pixels and back
    const double steps = (now - heights.font) / rowHeightStep;
    const double part = hair / rowHeightStep;
    const double next = higher ? std::floor(steps + part) + 1 : std::ceil(steps - part) - 1;
    return chosenRowHeight(heights.font + next * rowHeightStep, heights);
}

} // namespace norvel::grid
