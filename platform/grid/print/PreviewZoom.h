// How large the preview shows a page.
#pragma once

#include "platform/grid/print/PageLayout.h"

namespace norvel::grid {

enum class ZoomMode { Page, Width, Fixed };

inline constexpr double leastZoom = 0.1, mostZoom = 5.0;

// The next step of the usual ones, larger or smaller; 1 is the paper's own size.
NR_API double nextZoom(double zoom, bool larger);

// The zoom that shows a paper whole, or in its whole width, in so many twips; within the limits.
NR_API double fittingZoom(ZoomMode mode, const PaperSize& paper, double width, double height);

} // namespace norvel::grid
