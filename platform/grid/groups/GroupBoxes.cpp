#include "platform/grid/groups/GroupBoxes.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

namespace {

// The width that none may pass so that all fit into room.
int widestThatFits(const std::vector<GroupBoxes::Box>& boxes, int room) {
    std::vector<int> widths;
    widths.reserve(boxes.size());
    for (const GroupBoxes::Box& box : boxes)
        widths.push_back(box.width);
    std::ranges::sort(widths);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const int share = room / static_cast<int>(widths.size() - i);
        if (widths[i] > share) return std::max(1, share);
        room -= widths[i];
    }
    return widths.empty() ? 0 : widths.back();
}

} // namespace

void GroupBoxes::Arrange(std::vector<Box> wishes, int left, int right, int gap) {
    boxes_ = std::move(wishes);
    gap_ = gap;
    const int gaps = gap * static_cast<int>(boxes_.size() + 1);
    const int most = widestThatFits(boxes_, std::max(0, right - left - gaps));
    for (Box& box : boxes_) {
        left += gap;
        box.left = left;
        box.width = std::min(box.width, most);
        left += box.width;
    }
}

int GroupBoxes::ColumnAt(int x) const {
    for (const Box& box : boxes_)
        if (x >= box.left && x < box.left + box.width) return box.column;
    return -1;
}

int GroupBoxes::PlaceAt(int x) const {
    const auto before = [x](const Box& box) { return box.left + box.width / 2 <= x; };
    return static_cast<int>(std::ranges::partition_point(boxes_, before) - boxes_.begin());
}

int GroupBoxes::BorderAt(int place) const {
    if (boxes_.empty()) return gap_ / 2;
    const auto at = static_cast<std::size_t>(place);
    if (at < boxes_.size()) return boxes_[at].left - gap_ / 2;
    return boxes_.back().left + boxes_.back().width + gap_ / 2;
}

} // namespace norvel::grid
