// Where everything of the grid stands, in pixels: columns, rows, headings, filter cells, the record
// selectors at the left edge; and what a point hits. Row and column positions count from 0.
#pragma once

#include "platform/grid/groups/GroupBoxes.h"
#include "platform/grid/model/Model.h"
#include "platform/grid/model/ScrollAxis.h"

#include <vector>

namespace norvel::grid {

struct Rect {
    int x = 0, y = 0, width = 0, height = 0;
    bool Contains(int px, int py) const {
        return px >= x && px < x + width && py >= y && py < y + height;
    }
    bool Empty() const { return width <= 0 || height <= 0; }
    bool operator==(const Rect&) const = default;
};

// The fixed sizes: from the font and the scale.
struct Measures {
    int width = 0, height = 0; // of the whole area; what is asked back has no scroll bars in it
    int barWidth = 0, barHeight = 0; // what a scroll bar takes of it where it is needed
    int selectorWidth = 0;           // the record selectors; 0: none
    int areaHeight = 0;              // the grouping area above the headings; 0: none
    int headingHeight = 0;
    int filterHeight = 0; // 0: no filter bar
    int rowHeight = 1;
    int filterButtonWidth = 0;
    int edgeReach = 0; // how near to a heading's edge a point still takes hold of it
    int splitLine = 0; // between two splits
    double scale = 1.0;
    bool operator==(const Measures&) const = default;
};

enum class Spot {
    Outside,        // of the grid, or its empty part behind the columns and below the rows
    GroupArea,      // above the headings
    GroupBox,       // column set: a grouped one's, in the grouping area
    Corner,         // above the record selectors
    Heading,        // column set
    HeadingEdge,    // column set: the one that its right edge sizes, where sizing is allowed
    FilterCell,     // column set
    FilterButton,   // column set
    RecordSelector, // row set
    RowEdge,        // row set: the one that its lower edge sizes, where sizing is allowed
    Cell,           // row and column set
    GroupLine,    // row set: the line of a group; the geometry itself does not tell it from a cell
    GroupSign,    // row set: the sign on it that opens and closes the group
    RowBackground // row set: right of the last column
};

struct Hit {
    Spot spot = Spot::Outside;
    adodb::RowCount row = -1;
    int column = -1; // the column's index in the collection
    int split = 0;   // the one that the point is in
};

// Where a heading that is being dragged lands when it is let go.
struct ColumnDrop {
    // Heading: among the columns shown; GroupArea: among the grouped ones; Outside: nowhere
    Spot spot = Spot::Outside;
    int place = -1; // in front of which of a split's, or box; as many as there are: behind the last
    int split = 0;
    bool operator==(const ColumnDrop&) const = default;
};

// The narrowest a column gets by sizing, twips.
inline constexpr double minColumnWidth = 150;

// The splits stand side by side and share the rows; all show the same columns, each at a horizontal
// position of its own. In a split the frozen columns stand in a pane of their own at the left,
// which never scrolls; the others in a second one, which does. Where frozen columns would take more
// than three quarters of the split's width, only as many as that are.
//
// A place is where a column is shown: counted from the leftmost column of split 0 through all
// columns of each split. Filter cells, and rectangles asked by a column's index, are split 0's.
class NR_API Geometry {
  public:
    // Takes the shown columns with their widths; scroll positions are kept where they can be.
    // splits: at least one.
    void Update(const Columns& columns, const Measures& measures, adodb::RowCount rows,
                const std::vector<Split>& splits = {Split{}});

    const Measures& Sizes() const { return sizes_; }
    ScrollAxis& Vertical() { return vertical_; }
    const ScrollAxis& Vertical() const { return vertical_; }
    ScrollAxis& Horizontal(int split = 0) { return splits_[at(split)].axis; }
    const ScrollAxis& Horizontal(int split = 0) const { return splits_[at(split)].axis; }
    bool ScrollsSideways() const; // some split does
    // The other splits keep their scroll positions; Update follows.
    void RemoveSplit(int split) { splits_.erase(splits_.begin() + split); }

    // --- splits and panes ---
    int SplitCount() const { return static_cast<int>(splits_.size()); }
    int SplitAt(int x) const;        // the nearest one
    Rect SplitArea(int split) const; // from the headings down, the line behind it excluded
    struct Pane {
        int split = 0;
        bool frozen = false;
        int left = 0, width = 0; // in the painted area; never empty
        int first = 0, last = 0; // the places at least partly in view: [first, last)
        int end = 0;             // where the last of them ends, or the pane does
        int Right() const { return left + width; }
    };
    std::vector<Pane> Panes() const;                                     // left to right
    Pane ScrollingPane(int split) const { return paneOf(split, false); } // may be empty
    Rect PaneOf(int place) const;                                        // from the headings down
    bool AllowsSizing(int split) const { return splits_[at(split)].sizing; }
    bool AllowsRowSizing() const { return rowSizing_; }
    int FrozenCount(int split = 0) const { return splits_[at(split)].frozen; }

    // --- columns, by place and by index in the collection ---
    int ShownCount() const { return static_cast<int>(shown_.size()); } // of each split
    int PlaceCount() const { return ShownCount() * SplitCount(); }
    int ColumnAt(int place) const { return shown_[at(place % ShownCount())]; }
    int SplitOf(int place) const { return place / ShownCount(); }
    int PlaceOf(int column, int split = 0) const; // -1: not shown
    // How many columns are shown before this one, or before where it would be; 0: a bad index.
    int CountBefore(int column) const;
    int ColumnWidth(int place) const;
    int ColumnLeft(int place) const;        // in the painted area, scrolled
    std::vector<int> ColumnsInView() const; // indexes, each once
    // The place that the mouse reaches while it selects cells: beside the columns in view the next
    // one that it would scroll to. -1: there are no columns.
    int PlaceReached(int x) const;

    // --- rows ---
    adodb::RowCount Rows() const { return rows_; }
    int DataTop() const { return FilterTop() + sizes_.filterHeight; }
    int FilterTop() const { return sizes_.areaHeight + sizes_.headingHeight; }
    int DataHeight() const;                // pixels, never negative
    int DataWidth() const;                 // right of the record selectors
    adodb::RowCount FirstRow() const;      // the first one at least partly in view
    int RowsInView() const;                // how many are at least partly in view
    int WholeRows() const;                 // how many fit whole; at least 1
    int RowTop(adodb::RowCount row) const; // in the painted area; only for rows near the view

    // --- rectangles in the painted area; empty for what is not shown ---
    // They may reach out of their pane.
    Rect HeadingAt(int place) const {
        return placeRect(place, sizes_.areaHeight, sizes_.headingHeight);
    }
    Rect Heading(int column) const { return HeadingAt(PlaceOf(column)); }
    Rect FilterCell(int column) const;
    Rect FilterButton(int column) const;     // whether or not the column has one
    Rect RowRect(adodb::RowCount row) const; // the whole width
    Rect CellAt(adodb::RowCount row, int place) const;
    Rect Cell(adodb::RowCount row, int column) const { return CellAt(row, PlaceOf(column)); }
    Rect Data() const; // right of the selectors, below headings and filter bar

    // What stands at a point; columns is asked which filter cells have a button.
    Hit HitTest(int x, int y, const Columns& columns) const;

    // The boxes in the grouping area.
    GroupBoxes& Boxes() { return boxes_; }
    const GroupBoxes& Boxes() const { return boxes_; }
    Rect BoxOf(int column) const; // empty: it has none

    // Where a heading would land at a point: among the grouped columns in the grouping area, else
    // among the columns while the point is no farther from
    // the headings than they are high, at the border of columns in view that is nearest to it.
    ColumnDrop DropAt(int x, int y) const;
    // Where such a border stands in the painted area.
    int BorderAt(const ColumnDrop& drop) const;

    // Scrolls as little as needed so that the row is whole in view, at a row's border; likewise a
    // place, its left edge first. True when something moved.
    bool ShowRow(adodb::RowCount row);
    bool ShowPlace(int place);
    bool ShowColumn(int column) { return ShowPlace(PlaceOf(column)); }

  private:
    struct SplitPlaces {
        int left = 0, width = 0;
        int frozen = 0, frozenWidth = 0;
        bool sizing = true;
        ScrollAxis axis;
    };
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    void placeColumns(const Columns& columns);
    void placeRows();
    void makeRoomForBars(int splits);
    int splitRoom(int splits) const;
    void placeSplits(const std::vector<Split>& splits);
    int columnsWidth() const { return edges_.empty() ? 0 : edges_.back(); }
    int leftEdge(int position) const { return position == 0 ? 0 : edges_[at(position) - 1]; }
    Pane paneOf(int split, bool frozen) const;
    int placeAt(int x) const; // -1: none
    Rect placeRect(int place, int top, int height) const;
    Hit hitGroupArea(int x, int y) const;
    Hit hitHeading(int x) const;
    Hit hitSelectors(int y) const;
    Hit hitBehindHeadings(int x) const;
    Measures sizes_;
    GroupBoxes boxes_;
    std::vector<int> shown_;  // indexes, left to right
    std::vector<int> edges_;  // right edge of each shown column, pixels from the first one's left
    std::vector<int> places_; // by index; of a column that is not shown: -1 - CountBefore
    bool rowSizing_ = false;
    std::vector<SplitPlaces> splits_ = std::vector<SplitPlaces>(1);
    adodb::RowCount rows_ = 0;
    ScrollAxis vertical_;
};

} // namespace norvel::grid
