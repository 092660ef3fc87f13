#include "platform/grid/model/CellArea.h"

#include <algorithm>

namespace norvel::grid {

CellArea::PlaceRange CellArea::Places(const Geometry& geometry) const {
    const int shown = geometry.ShownCount();
    if (begin_ < 0 || shown == 0) return {};
    const auto behind = [&](int column) {
        return geometry.CountBefore(column) + (geometry.PlaceOf(column) >= 0 ? 1 : 0);
    };
    const int first = std::min(geometry.CountBefore(begin_), geometry.CountBefore(end_));
    const int end = std::max(behind(begin_), behind(end_));
    if (first < end) return {first, end};
    const int nearest = std::min(first, shown - 1);
    return {nearest, nearest + 1};
}

bool CellArea::Contains(const Geometry& geometry, int column) const {
    const PlaceRange places = Places(geometry);
    const int place = geometry.PlaceOf(column);
    return places.Empty() || (place >= places.first && place < places.end);
}

CellArea::Range CellArea::Indexes(const Geometry& geometry, int count) const {
    const PlaceRange places = Places(geometry);
    if (places.Empty()) return count > 0 ? Range{0, count - 1} : Range{};
    Range range{geometry.ColumnAt(places.first), geometry.ColumnAt(places.first)};
    for (int place = places.first; place < places.end; ++place) {
        range.first = std::min(range.first, geometry.ColumnAt(place));
        range.last = std::max(range.last, geometry.ColumnAt(place));
    }
    return range;
}

} // namespace norvel::grid
