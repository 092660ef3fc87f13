#include "platform/grid/model/ColumnDrag.h"

#include <algorithm>
#include <cstdlib>

namespace norvel::grid {

namespace {

// Gives the columns in their new order the Orders that they have between them, so that columns of a
// layout whose fields are not there keep their gaps; equal ones are numbered anew.
void giveOrders(Columns& columns, const std::vector<int>& sequence) {
    std::vector<int> orders;
    orders.reserve(sequence.size());
    for (const int index : columns.InOrder())
        orders.push_back(columns.Item(index).Order);
    const bool distinct = std::ranges::adjacent_find(orders) == orders.end();
    for (std::size_t i = 0; i < sequence.size(); ++i)
        columns.Item(sequence[i]).Order = distinct ? orders[i] : static_cast<int>(i);
}

} // namespace

bool moveColumn(Columns& columns, int column, int place) {
    const std::vector<int> shown = columns.Ungrouped();
    const auto found = std::ranges::find(shown, column);
    const auto count = static_cast<int>(shown.size());
    if (found == shown.end() || place < 0 || place > count) return false;
    const auto from = static_cast<int>(found - shown.begin());
    if (place == from || place == from + 1) return false;

    std::vector<int> sequence = columns.InOrder();
    const auto at = [&](int index) { return std::ranges::find(sequence, index); };
    const auto own = at(column);
    const auto target =
        place == count ? sequence.end() : at(shown[static_cast<std::size_t>(place)]);
    if (place < from)
        std::rotate(target, own, own + 1);
    else
        std::rotate(own, own + 1, target);
    giveOrders(columns, sequence);
    return true;
}

void ColumnDrag::Press(int column, int x, int y, int thresholdX, int thresholdY) {
    *this = {};
    column_ = column;
    x_ = fromX_ = x;
    y_ = fromY_ = y;
    thresholdX_ = thresholdX;
    thresholdY_ = thresholdY;
}

// Once it moves it stays a drag, wherever the pointer goes.
bool ColumnDrag::Follow(int x, int y, const Geometry& places) {
    if (column_ < 0) return false;
    x_ = x;
    y_ = y;
    moving_ = moving_ || std::abs(x - fromX_) > thresholdX_ || std::abs(y - fromY_) > thresholdY_;
    if (moving_) drop_ = places.DropAt(x, y);
    return moving_;
}

int edgeScroll(int x, int left, int right, int near) {
    if (right - left < 2 * near) near = 0;
    const int before = left + near - x;
    const int behind = x - (right - near) + 1;
    if (before > 0) return -before;
    return behind > 0 ? behind : 0;
}

} // namespace norvel::grid
