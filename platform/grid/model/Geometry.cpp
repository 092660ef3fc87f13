#include "platform/grid/model/Geometry.h"

#include "platform/runtime/Twips.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

namespace {

constexpr int widestOfAll = 1 << 30; // pixels

} // namespace

void Geometry::Update(const Columns& columns, const Measures& measures, RowCount rows,
                      const std::vector<Split>& splits) {
    const Pixels topRow = vertical_.Position() / sizes_.rowHeight;
    const bool newRowHeight = measures.rowHeight != sizes_.rowHeight;
    sizes_ = measures;
    sizes_.rowHeight = std::max(1, sizes_.rowHeight);
    rows_ = std::max<RowCount>(0, rows);
    placeColumns(columns);
    makeRoomForBars(static_cast<int>(splits.size()));
    placeRows();
    if (newRowHeight) vertical_.SetPosition(topRow * sizes_.rowHeight);
    rowSizing_ = !splits.empty() && splits.front().AllowRowSizing;
    placeSplits(splits);
}

// However wide a layout wants them, all together are no wider than an int has room for.
void Geometry::placeColumns(const Columns& columns) {
    shown_.clear();
    edges_.clear();
    places_.resize(at(columns.Count()));
    int right = 0;
    for (const int index : columns.InOrder()) {
        const Column& column = columns.Item(index);
        const int before = ShownCount();
        places_[at(index)] = column.IsShown() ? before : -1 - before;
        if (!column.IsShown()) continue;
        shown_.push_back(index);
        const int width = twipsToPixels(column.Width, sizes_.scale);
        right += std::clamp(width, 1, std::max(1, widestOfAll - right));
        edges_.push_back(right);
    }
}

// Each bar takes room that may make the other one needed. No scroll position is touched by trying.
void Geometry::makeRoomForBars(int splits) {
    const Measures all = sizes_;
    for (int round = 0; round < 2; ++round) {
        const bool vertical = rows_ * sizes_.rowHeight > DataHeight();
        const bool horizontal = columnsWidth() > splitRoom(splits) / std::max(1, splits);
        if (vertical) sizes_.width = std::max(0, all.width - all.barWidth);
        if (horizontal) sizes_.height = std::max(0, all.height - all.barHeight);
    }
}

void Geometry::placeRows() {
    const Pixels length = rows_ * sizes_.rowHeight;
    const int whole = DataHeight() / sizes_.rowHeight;
    const Pixels end = whole > 0 ? (rows_ - whole) * sizes_.rowHeight : length - DataHeight();
    vertical_.SetExtent(length, DataHeight(), end);
}

// What all splits together have.
int Geometry::splitRoom(int splits) const {
    return std::max(0, DataWidth() - (std::max(1, splits) - 1) * sizes_.splitLine);
}

// Side by side, in equal shares.
void Geometry::placeSplits(const std::vector<Split>& splits) {
    splits_.resize(std::max<std::size_t>(1, splits.size()));
    const int count = SplitCount();
    const int room = splitRoom(count);
    for (int i = 0; i < count; ++i) {
        SplitPlaces& own = splits_[at(i)];
        own.left = sizes_.selectorWidth + room * i / count + i * sizes_.splitLine;
        own.width = room * (i + 1) / count - room * i / count;
        own.frozen = 0;
        own.sizing = true;
        if (i < static_cast<int>(splits.size())) {
            own.sizing = splits[at(i)].AllowSizing;
            const int wanted = std::clamp(splits[at(i)].FrozenColumns, 0, ShownCount());
            while (own.frozen < wanted && edges_[at(own.frozen)] <= own.width * 3 / 4)
                ++own.frozen;
        }
        own.frozenWidth = leftEdge(own.frozen);
        own.axis.SetExtent(columnsWidth() - own.frozenWidth, own.width - own.frozenWidth);
    }
}

bool Geometry::ScrollsSideways() const {
    return std::ranges::any_of(splits_, [](const SplitPlaces& s) { return s.axis.Needed(); });
}

int Geometry::SplitAt(int x) const {
    int split = SplitCount() - 1;
    while (split > 0 && x < splits_[at(split)].left)
        --split;
    return split;
}

Rect Geometry::SplitArea(int split) const {
    const SplitPlaces& own = splits_[at(split)];
    return {own.left, 0, own.width, sizes_.height};
}

Geometry::Pane Geometry::paneOf(int split, bool frozen) const {
    const SplitPlaces& own = splits_[at(split)];
    Pane pane;
    pane.split = split;
    pane.frozen = frozen;
    pane.left = own.left + (frozen ? 0 : own.frozenWidth);
    pane.width = frozen ? own.frozenWidth : std::max(0, own.width - own.frozenWidth);
    const int from = frozen ? 0 : own.frozenWidth + static_cast<int>(own.axis.Position());
    const auto begin = edges_.begin() + (frozen ? 0 : own.frozen);
    const auto end = frozen ? edges_.begin() + own.frozen : edges_.end();
    const auto first = std::upper_bound(begin, end, from);
    auto last = std::lower_bound(first, end, from + pane.width);
    if (last != end) ++last;
    const int before = split * ShownCount();
    pane.first = before + static_cast<int>(first - edges_.begin());
    pane.last = before + static_cast<int>(last - edges_.begin());
    pane.end = pane.left;
    if (first != last) pane.end = std::min(pane.Right(), pane.left + *(last - 1) - from);
    return pane;
}

std::vector<Geometry::Pane> Geometry::Panes() const {
    std::vector<Pane> panes;
    for (int split = 0; split < SplitCount(); ++split)
        for (const bool frozen : {true, false})
            if (const Pane pane = paneOf(split, frozen); pane.width > 0) panes.push_back(pane);
    return panes;
}

Rect Geometry::PaneOf(int place) const {
    if (place < 0) return {};
    const int split = SplitOf(place);
    const Pane pane = paneOf(split, place % ShownCount() < splits_[at(split)].frozen);
    return {pane.left, 0, pane.width, sizes_.height};
}

int Geometry::PlaceOf(int column, int split) const {
    if (column < 0 || column >= static_cast<int>(places_.size())) return -1;
    const int place = places_[at(column)];
    return place < 0 ? -1 : split * ShownCount() + place;
}

int Geometry::CountBefore(int column) const {
    if (column < 0 || column >= static_cast<int>(places_.size())) return 0;
    const int place = places_[at(column)];
    return place < 0 ? -1 - place : place;
}

int Geometry::ColumnWidth(int place) const {
    const int position = place % ShownCount();
    return edges_[at(position)] - leftEdge(position);
}

int Geometry::ColumnLeft(int place) const {
    const SplitPlaces& own = splits_[at(SplitOf(place))];
    const int position = place % ShownCount();
    const Pixels scrolled = position < own.frozen ? 0 : own.axis.Position();
    return own.left + leftEdge(position) - static_cast<int>(scrolled);
}

std::vector<int> Geometry::ColumnsInView() const {
    std::vector<int> columns;
    for (const Pane& pane : Panes())
        for (int place = pane.first; place < pane.last; ++place)
            columns.push_back(ColumnAt(place));
    std::ranges::sort(columns);
    columns.erase(std::unique(columns.begin(), columns.end()), columns.end());
    return columns;
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

Rect Geometry::placeRect(int place, int top, int height) const {
    if (place < 0) return {};
    return {ColumnLeft(place), top, ColumnWidth(place), height};
}

Rect Geometry::FilterCell(int column) const {
    return placeRect(PlaceOf(column), FilterTop(), sizes_.filterHeight);
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

Rect Geometry::CellAt(RowCount row, int place) const {
    const Rect whole = RowRect(row);
    return whole.Empty() ? Rect{} : placeRect(place, whole.y, whole.height);
}

Rect Geometry::Data() const {
    return {sizes_.selectorWidth, DataTop(), DataWidth(), DataHeight()};
}

int Geometry::placeAt(int x) const {
    const int split = SplitAt(x);
    const SplitPlaces& own = splits_[at(split)];
    if (x < own.left || x >= own.left + own.width) return -1;
    int from = x - own.left;
    if (from >= own.frozenWidth) from += static_cast<int>(own.axis.Position());
    if (from >= columnsWidth()) return -1;
    const auto position = std::ranges::upper_bound(edges_, from) - edges_.begin();
    return split * ShownCount() + static_cast<int>(position);
}

int Geometry::PlaceReached(int x) const {
    if (ShownCount() == 0) return -1;
    const int split = SplitAt(x);
    const SplitPlaces& own = splits_[at(split)];
    const int first = split * ShownCount();
    const int last = first + ShownCount() - 1;
    const Pane pane = paneOf(split, false);
    if (x >= pane.Right()) return std::min(last, pane.last);
    if (x >= own.left) return placeAt(x) >= 0 ? placeAt(x) : last;
    return own.axis.Position() > 0 ? std::max(first + own.frozen, pane.first - 1) : first;
}

// The last edge can be taken from the empty part too.
Hit Geometry::hitBehindHeadings(int x) const {
    const int split = SplitAt(x);
    if (ShownCount() == 0 || !splits_[at(split)].sizing || x < splits_[at(split)].left) return {};
    const int last = (split + 1) * ShownCount() - 1;
    const int right = ColumnLeft(last) + ColumnWidth(last);
    if (x < right || x >= right + sizes_.edgeReach) return {};
    return {Spot::HeadingEdge, -1, shown_.back(), split};
}

// An edge belongs to the column at its left: at the border of the frozen columns to the last of
// them, wherever the others are scrolled to.
Hit Geometry::hitHeading(int x) const {
    const int place = placeAt(x);
    if (place < 0) return hitBehindHeadings(x);
    const int split = SplitOf(place);
    const SplitPlaces& own = splits_[at(split)];
    const int position = place % ShownCount();
    const Hit heading{Spot::Heading, -1, ColumnAt(place), split};
    if (!own.sizing) return heading;
    const auto edgeOf = [&](int at) {
        return Hit{Spot::HeadingEdge, -1, shown_[static_cast<std::size_t>(at)], split};
    };
    const int reach = std::min(sizes_.edgeReach, ColumnWidth(place) / 3);
    const int left = ColumnLeft(place);
    if (x >= left + ColumnWidth(place) - reach) return edgeOf(position);
    const int paneLeft = own.left + own.frozenWidth;
    if (position >= own.frozen && own.frozen > 0 && x < paneLeft + reach)
        return edgeOf(own.frozen - 1);
    return position > 0 && x < left + reach ? edgeOf(position - 1) : heading;
}

// An edge belongs to the row above it; the last one can be taken from below, too. Most of a
// selector is left to what it is for.
Hit Geometry::hitSelectors(int y) const {
    const Pixels from = vertical_.Position() + y - DataTop();
    const RowCount row = from / sizes_.rowHeight;
    if (rowSizing_ && rows_ > 0) {
        const int reach = std::min(sizes_.edgeReach, sizes_.rowHeight / 6);
        const RowCount above = (from + reach) / sizes_.rowHeight - 1; // its edge is the nearest
        const Pixels edge = (above + 1) * sizes_.rowHeight;
        const bool near = from < edge + reach && from >= edge - reach;
        if (near && above >= FirstRow() && above < rows_) return {Spot::RowEdge, above};
    }
    return row < rows_ ? Hit{Spot::RecordSelector, row} : Hit{};
}

Hit Geometry::HitTest(int x, int y, const Columns& columns) const {
    if (x < 0 || y < 0 || x >= sizes_.width || y >= sizes_.height) return {};
    const int split = SplitAt(x);
    const int place = placeAt(x);
    if (y < DataTop()) {
        if (y < sizes_.areaHeight) return hitGroupArea(x, y);
        if (x < sizes_.selectorWidth) return {Spot::Corner};
        if (y < FilterTop()) return hitHeading(x);
        if (place < 0 || split > 0) return {};
        const int column = ColumnAt(place);
        const bool button = columns.Item(column).FilterCombo && FilterButton(column).Contains(x, y);
        return {button ? Spot::FilterButton : Spot::FilterCell, -1, column};
    }
    if (x < sizes_.selectorWidth) return hitSelectors(y);
    const RowCount row = (vertical_.Position() + y - DataTop()) / sizes_.rowHeight;
    if (row >= rows_) return {};
    if (place < 0) return {Spot::RowBackground, row, -1, split};
    return {Spot::Cell, row, ColumnAt(place), split};
}

Rect Geometry::BoxOf(int column) const {
    const int height = sizes_.headingHeight;
    for (const GroupBoxes::Box& box : boxes_.All())
        if (box.column == column)
            return {box.left, (sizes_.areaHeight - height) / 2, box.width, height};
    return {};
}

Hit Geometry::hitGroupArea(int x, int y) const {
    const int column = boxes_.ColumnAt(x);
    if (column < 0 || !BoxOf(column).Contains(x, y)) return {Spot::GroupArea};
    return {Spot::GroupBox, -1, column};
}

ColumnDrop Geometry::DropAt(int x, int y) const {
    const int reach = sizes_.headingHeight;
    if (y < -reach || y >= FilterTop() + reach) return {};
    if (y < sizes_.areaHeight) return {Spot::GroupArea, boxes_.PlaceAt(x)};
    const int split = SplitAt(x);
    int behind = -1; // the place that the border is behind of
    for (const bool frozen : {true, false}) {
        const Pane pane = paneOf(split, frozen);
        for (int place = pane.first; place < pane.last; ++place) {
            if (x < ColumnLeft(place) + ColumnWidth(place) / 2)
                return {Spot::Heading, place % ShownCount(), split};
            behind = place;
        }
    }
    if (behind < 0) return {};
    return {Spot::Heading, behind % ShownCount() + 1, split};
}

// In front of the first column that scrolls is behind the last one that does not.
int Geometry::BorderAt(const ColumnDrop& drop) const {
    const int first = drop.split * ShownCount();
    const bool afterFrozen = drop.place > 0 && drop.place == splits_[at(drop.split)].frozen;
    if (drop.place < ShownCount() && !afterFrozen) return ColumnLeft(first + drop.place);
    const int before = first + drop.place - 1;
    return ColumnLeft(before) + ColumnWidth(before);
}

bool Geometry::ShowRow(RowCount row) {
    if (row < 0 || row >= rows_) return false;
    const Pixels top = row * sizes_.rowHeight;
    if (top < vertical_.Position()) return vertical_.SetPosition(top);
    if (top + sizes_.rowHeight <= vertical_.Position() + DataHeight()) return false;
    return vertical_.SetPosition((row - WholeRows() + 1) * sizes_.rowHeight);
}

bool Geometry::ShowPlace(int place) {
    if (place < 0) return false;
    SplitPlaces& own = splits_[at(SplitOf(place))];
    const int position = place % ShownCount();
    if (position < own.frozen) return false;
    const Pixels left = leftEdge(position) - own.frozenWidth;
    const Pixels right = edges_[at(position)] - own.frozenWidth;
    const Pixels page = own.axis.Page();
    if (left < own.axis.Position() || right - left > page) return own.axis.SetPosition(left);
    if (right <= own.axis.Position() + page) return false;
    return own.axis.SetPosition(right - page);
}

} // namespace norvel::grid
