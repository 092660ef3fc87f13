#include "platform/grid/model/CellArea.h"

#include <algorithm>

namespace norvel::grid {

CellArea::PlaceRange CellArea::Places(const Geometry& geometry) const {
    const int one = geometry.PlaceOf(begin_);
    const int other = geometry.PlaceOf(end_);
    if (one < 0 || other < 0) return {};
    return {std::min(one, other), std::max(one, other) + 1};
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
