#include "platform/grid/model/Geometry.h"

#include "platform/runtime/Twips.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

void Geometry::Update(const Columns& columns, const Measures& measures, RowCount rows) {
    const Pixels topRow = vertical_.Position() / sizes_.rowHeight;
    const bool newRowHeight = measures.rowHeight != sizes_.rowHeight;
    sizes_ = measures;
    sizes_.rowHeight = std::max(1, sizes_.rowHeight);
    rows_ = std::max<RowCount>(0, rows);
    shown_ = columns.Shown();
    places_.assign(static_cast<std::size_t>(columns.Count()), -1);
    edges_.clear();
    int right = 0;
    for (const int index : shown_) {
        places_[static_cast<std::size_t>(index)] = static_cast<int>(edges_.size());
        right += std::max(1, twipsToPixels(columns.Item(index).Width, sizes_.scale));
        edges_.push_back(right);
    }
    const Pixels length = rows_ * sizes_.rowHeight;
    const int whole = DataHeight() / sizes_.rowHeight;
    const Pixels end = whole > 0 ? (rows_ - whole) * sizes_.rowHeight : length - DataHeight();
    vertical_.SetExtent(length, DataHeight(), end);
    if (newRowHeight) vertical_.SetPosition(topRow * sizes_.rowHeight);
    horizontal_.SetExtent(ColumnsWidth(), DataWidth());
}

int Geometry::PlaceOf(int column) const {
    if (column < 0 || column >= static_cast<int>(places_.size())) return -1;
    return places_[static_cast<std::size_t>(column)];
}

int Geometry::ColumnWidth(int place) const {
    const auto p = static_cast<std::size_t>(place);
    return edges_[p] - (p == 0 ? 0 : edges_[p - 1]);
}

int Geometry::ColumnLeft(int place) const {
    const int left = place == 0 ? 0 : edges_[static_cast<std::size_t>(place) - 1];
    return sizes_.selectorWidth + left - static_cast<int>(horizontal_.Position());
}

Geometry::Range Geometry::PlacesInView() const {
    const int left = static_cast<int>(horizontal_.Position());
    const auto first = std::ranges::upper_bound(edges_, left);
    const auto last = std::ranges::lower_bound(first, edges_.end(), left + DataWidth());
    const int count = static_cast<int>(last - edges_.begin()) + (last == edges_.end() ? 0 : 1);
    return {static_cast<int>(first - edges_.begin()), DataWidth() > 0 ? count : 0};
}

int Geometry::DataHeight() const {
    return std::max(0, sizes_.height - DataTop());
}
int Geometry::DataWidth() const {
    return std::max(0, sizes_.width - sizes_.selectorWidth);
}
RowCount Geometry::FirstRow() const {
    return vertical_.Position() / sizes_.rowHeight;
}

int Geometry::RowsInView() const {
    const Pixels bottom = vertical_.Position() + DataHeight();
    const Pixels end = std::min<Pixels>(rows_, (bottom + sizes_.rowHeight - 1) / sizes_.rowHeight);
    return static_cast<int>(std::max<Pixels>(0, end - FirstRow()));
}

int Geometry::WholeRows() const {
    return std::max(1, DataHeight() / sizes_.rowHeight);
}

int Geometry::RowTop(RowCount row) const {
    return DataTop() + static_cast<int>(row * sizes_.rowHeight - vertical_.Position());
}

Rect Geometry::columnRect(int column, int top, int height) const {
    const int place = PlaceOf(column);
    if (place < 0) return {};
    return {ColumnLeft(place), top, ColumnWidth(place), height};
}

Rect Geometry::Heading(int column) const {
    return columnRect(column, 0, sizes_.headingHeight);
}

Rect Geometry::FilterCell(int column) const {
    return columnRect(column, sizes_.headingHeight, sizes_.filterHeight);
}

Rect Geometry::FilterButton(int column) const {
    const Rect cell = FilterCell(column);
    const int width = std::min(sizes_.filterButtonWidth, cell.width);
    return {cell.x + cell.width - width, cell.y, width, cell.height};
}

Rect Geometry::RowRect(RowCount row) const {
    if (row < FirstRow() || row >= FirstRow() + RowsInView()) return {};
    return {0, RowTop(row), sizes_.width, sizes_.rowHeight};
}

Rect Geometry::Cell(RowCount row, int column) const {
    const Rect whole = RowRect(row);
    return whole.Empty() ? Rect{} : columnRect(column, whole.y, whole.height);
}

Rect Geometry::Data() const {
    return {sizes_.selectorWidth, DataTop(), DataWidth(), DataHeight()};
}

int Geometry::placeAt(int x) const {
    const int from = x - sizes_.selectorWidth + static_cast<int>(horizontal_.Position());
    if (from < 0 || from >= ColumnsWidth()) return -1;
    return static_cast<int>(std::ranges::upper_bound(edges_, from) - edges_.begin());
}

// An edge belongs to the column at its left; the last one can be taken from the empty part too.
Hit Geometry::hitHeading(int x) const {
    const int place = placeAt(x);
    if (place < 0) {
        const bool atLastEdge =
            ShownCount() > 0 && x >= sizes_.selectorWidth &&
            x < ColumnLeft(ShownCount() - 1) + ColumnWidth(ShownCount() - 1) + sizes_.edgeReach;
        if (!atLastEdge) return {};
        return {Spot::HeadingEdge, -1, shown_.back()};
    }
    const int left = ColumnLeft(place);
    const int reach = std::min(sizes_.edgeReach, ColumnWidth(place) / 3);
    if (x >= left + ColumnWidth(place) - reach) return {Spot::HeadingEdge, -1, ColumnAt(place)};
    if (place > 0 && x < left + reach) return {Spot::HeadingEdge, -1, ColumnAt(place - 1)};
    return {Spot::Heading, -1, ColumnAt(place)};
}

Hit Geometry::HitTest(int x, int y, const Columns& columns) const {
    if (x < 0 || y < 0 || x >= sizes_.width || y >= sizes_.height) return {};
    if (y < DataTop()) {
        if (x < sizes_.selectorWidth) return {Spot::Corner};
        if (y < sizes_.headingHeight) return hitHeading(x);
        const int place = placeAt(x);
        if (place < 0) return {};
        const int column = ColumnAt(place);
        const bool button = columns.Item(column).FilterCombo && FilterButton(column).Contains(x, y);
        return {button ? Spot::FilterButton : Spot::FilterCell, -1, column};
    }
    const RowCount row = (vertical_.Position() + y - DataTop()) / sizes_.rowHeight;
    if (row >= rows_) return {};
    if (x < sizes_.selectorWidth) return {Spot::RecordSelector, row, -1};
    const int place = placeAt(x);
    if (place < 0) return {Spot::RowBackground, row, -1};
    return {Spot::Cell, row, ColumnAt(place)};
}

ColumnDrop Geometry::DropAt(int x, int y) const {
    if (y < -sizes_.headingHeight || y >= 2 * sizes_.headingHeight) return {};
    const Range range = PlacesInView();
    if (range.first >= range.last) return {};
    int place = range.first;
    while (place < range.last && x >= ColumnLeft(place) + ColumnWidth(place) / 2)
        ++place;
    return {Spot::Heading, place};
}

int Geometry::BorderAt(int place) const {
    return place < ShownCount() ? ColumnLeft(place)
                                : ColumnLeft(place - 1) + ColumnWidth(place - 1);
}

bool Geometry::ShowRow(RowCount row) {
    if (row < 0 || row >= rows_) return false;
    const Pixels top = row * sizes_.rowHeight;
    if (top < vertical_.Position()) return vertical_.SetPosition(top);
    if (top + sizes_.rowHeight <= vertical_.Position() + DataHeight()) return false;
    return vertical_.SetPosition((row - WholeRows() + 1) * sizes_.rowHeight);
}

bool Geometry::ShowColumn(int column) {
    const int place = PlaceOf(column);
    if (place < 0) return false;
    const Pixels left = place == 0 ? 0 : edges_[static_cast<std::size_t>(place) - 1];
    const Pixels right = edges_[static_cast<std::size_t>(place)];
    if (left < horizontal_.Position() || right - left > DataWidth())
        return horizontal_.SetPosition(left);
    if (right <= horizontal_.Position() + DataWidth()) return false;
    return horizontal_.SetPosition(right - DataWidth());
}

} // namespace norvel::grid
