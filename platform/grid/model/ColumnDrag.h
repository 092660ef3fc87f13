// A heading on its way to another place: without a window.
#pragma once

#include "platform/grid/model/Geometry.h"

namespace norvel::grid {

// Puts a shown column in front of the one at a place (0: leftmost; as many as are shown: behind the
// last one). Its index stays, the Orders change; the columns that are hidden stay among those that
// they stand between. False when the column stands there already or is not shown.
NR_API bool moveColumn(Columns& columns, int column, int place);

// From the press on a heading to its drop. A press that stays within the threshold is a click.
class NR_API ColumnDrag {
  public:
    // thresholdX, thresholdY: how far the pointer goes before the heading moves with it.
    void Press(int column, int x, int y, int thresholdX, int thresholdY);
    // The pointer is at x, y; true when what is on show changed.
    bool Follow(int x, int y, const Geometry& places);
    void End() { *this = {}; }

    int Column() const { return column_; } // -1: none is pressed
    bool Moving() const { return moving_; }
    const ColumnDrop& Drop() const { return drop_; }
    int X() const { return x_; } // the pointer
    int Y() const { return y_; }

  private:
    int column_ = -1;
    int fromX_ = 0, fromY_ = 0, x_ = 0, y_ = 0;
    int thresholdX_ = 0, thresholdY_ = 0;
    bool moving_ = false;
    ColumnDrop drop_;
};

// How far a view scrolls at one step while something is dragged at or beyond its edges: negative to
// the left, 0 within; the farther beyond, the more. near: how close to an edge it begins.
NR_API int edgeScroll(int x, int left, int right, int near);

} // namespace norvel::grid
