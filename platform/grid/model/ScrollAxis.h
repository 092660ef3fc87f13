// One direction of scrolling, exact over any length: positions are pixels in 64 bits, and a native
// scroll bar, which counts in 32, is given a scaled copy.
#pragma once

#include "platform/runtime/Api.h"

#include <cstdint>

namespace norvel::grid {

using Pixels = std::int64_t;

// What a native scroll bar is told, in its own units.
struct ScrollBarValues {
    int position = 0;
    int thumb = 0; // what one page shows
    int range = 0;
    bool operator==(const ScrollBarValues&) const = default;
};

class NR_API ScrollAxis {
  public:
    // length: of the content; page: of what is seen of it; end: where the last position begins.
    void SetExtent(Pixels length, Pixels page, Pixels end);
    void SetExtent(Pixels length, Pixels page) { SetExtent(length, page, length - page); }

    Pixels Position() const { return position_; }
    Pixels End() const { return end_; }
    Pixels Page() const { return page_; }
    bool Needed() const { return end_ > 0; }
    // Kept within 0 and End(); true when it changed.
    bool SetPosition(Pixels position);

    ScrollBarValues Bar() const;
    // The position that a bar's own position means; the bar's last one is End() exactly.
    Pixels FromBar(int barPosition) const;

  private:
    Pixels unit() const; // pixels to one unit of the bar
    Pixels length_ = 0;
    Pixels page_ = 0;
    Pixels end_ = 0;
    Pixels position_ = 0;
};

// Turns wheel and touchpad rotations into whole pixels and keeps what is left over, so that many
// small rotations move as far as a large one.
class NR_API WheelSteps {
  public:
    // rotation: as the toolkit reports it; notch: how much of it is one notch; notchPixels: what a
    // notch scrolls. A turn in the other direction forgets what was left over.
    Pixels Add(int rotation, int notch, double notchPixels);

  private:
    double rest_ = 0;
};

} // namespace norvel::grid
