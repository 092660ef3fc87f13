// The columns of a selection: whole rows, or the cells between two columns.
#pragma once

#include "platform/grid/model/Geometry.h"

namespace norvel::grid {

// A selection is rows (SelBookmarks), and what of them. It is whole rows until it is given columns:
// then it is the cells that are shown between the column where it began and the one it reaches.
// Columns are named by their index in the collection. Of those that are not shown any more the
// cells are not selected; where none is left the column that is nearest is.
class NR_API CellArea {
  public:
    // The indexes of the first and the last column: [0, count - 1] of whole rows. Where columns
    // were moved, the least and the greatest of those between.
    struct Range {
        int first = -1, last = -1; // -1: there are no columns
        bool operator==(const Range&) const = default;
    };

    void Clear() { begin_ = end_ = -1; }
    void Select(int begin, int end) {
        begin_ = begin;
        end_ = end;
    }
    int Begin() const { return begin_; } // where it began; -1: whole rows

    bool WholeRows(const Geometry& geometry) const { return Places(geometry).Empty(); }
    // The places of the cells, from the left; empty: whole rows.
    struct PlaceRange {
        int first = 0, end = 0; // [first, end)
        bool Empty() const { return first >= end; }
    };
    PlaceRange Places(const Geometry& geometry) const;
    bool Contains(const Geometry& geometry, int column) const;
    // count: how many columns the collection has, shown or not.
    Range Indexes(const Geometry& geometry, int count) const;

  private:
    int begin_ = -1, end_ = -1;
};

} // namespace norvel::grid
