// The boxes of the grouped columns in the grouping area: where they stand, what a point hits.
#pragma once

#include "platform/runtime/Api.h"

#include <vector>

namespace norvel::grid {

// Boxes side by side, outermost group first. Pixels of the painted area.
class NR_API GroupBoxes {
  public:
    struct Box {
        int column = -1; // its index in the collection
        int left = 0, width = 0;
    };
    // wishes: the columns with the widths that they would like; where there is less room than that,
    // the widest give way. gap: between two boxes, and before the first.
    void Arrange(std::vector<Box> wishes, int left, int right, int gap);

    const std::vector<Box>& All() const { return boxes_; }
    int ColumnAt(int x) const; // -1: none
    // The place among the boxes that is nearest: in front of which, as many as there are: behind
    // the last one.
    int PlaceAt(int x) const;
    int BorderAt(int place) const; // the middle of the gap in front of a place

  private:
    std::vector<Box> boxes_;
    int gap_ = 0;
};

} // namespace norvel::grid
