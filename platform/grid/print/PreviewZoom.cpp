#include "platform/grid/print/PreviewZoom.h"

#include <algorithm>
#include <array>

namespace norvel::grid {

namespace {

constexpr std::array steps{0.1,  0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1.0, 1.1,
                           1.25, 1.5,  1.75, 2.0, 2.5,  3.0,  4.0, 5.0};

} // namespace

double nextZoom(double zoom, bool larger) {
    constexpr double same = 0.005; // so near a step is on it
    if (larger) {
        const auto* next = std::ranges::upper_bound(steps, zoom + same);
        return next == steps.end() ? mostZoom : *next;
    }
    const auto* here = std::ranges::lower_bound(steps, zoom - same);
    return here == steps.begin() ? leastZoom : *(here - 1);
}

double fittingZoom(ZoomMode mode, const PaperSize& paper, double width, double height) {
    const double across = width / paper.Width;
    const double down = height / paper.Height;
    return std::clamp(mode == ZoomMode::Width ? across : std::min(across, down), leastZoom,
                      mostZoom);
}

} // namespace norvel::grid
