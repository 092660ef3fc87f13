#include "platform/grid/model/ScrollAxis.h"

#include <algorithm>
#include <cmath>

namespace norvel::grid {

namespace {

// Room below the largest int, which some native scroll bars need for sums of range and page.
constexpr Pixels barLimit = Pixels{1} << 30;

} // namespace

void ScrollAxis::SetExtent(Pixels length, Pixels page, Pixels end) {
    length_ = std::max<Pixels>(0, length);
    page_ = std::max<Pixels>(0, page);
    end_ = std::max<Pixels>(0, end);
    SetPosition(position_);
}

bool ScrollAxis::SetPosition(Pixels position) {
    const Pixels old = position_;
    position_ = std::clamp<Pixels>(position, 0, end_);
    return position_ != old;
}

Pixels ScrollAxis::unit() const {
    return (end_ + page_) / barLimit + 1;
}

ScrollBarValues ScrollAxis::Bar() const {
    const Pixels u = unit();
    const Pixels last = (end_ + u - 1) / u;
    const Pixels thumb = std::max<Pixels>(1, page_ / u);
    const Pixels position = position_ == end_ ? last : position_ / u;
    return {static_cast<int>(position), static_cast<int>(thumb), static_cast<int>(last + thumb)};
}

Pixels ScrollAxis::FromBar(int barPosition) const {
    return std::clamp<Pixels>(barPosition * unit(), 0, end_);
}

Pixels WheelSteps::Add(int rotation, int notch, double notchPixels) {
    if (notch <= 0) return 0;
    const double turned = static_cast<double>(rotation) / notch * notchPixels;
    if (turned * rest_ < 0) rest_ = 0;
    rest_ += turned;
    const double whole = std::trunc(rest_);
    rest_ -= whole;
    return static_cast<Pixels>(whole);
}

} // namespace norvel::grid
