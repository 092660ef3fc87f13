// Where everything of the grid stands, in pixels: columns, rows, headings, filter cells, the record
// selectors at the left edge; and what a point hits. Row and column positions count from 0.
#pragma once

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
    int width = 0, height = 0; // of the whole painted area, scroll bars excluded
    int selectorWidth = 0;     // the record selectors; 0: none
    int headingHeight = 0;
    int filterHeight = 0; // 0: no filter bar
    int rowHeight = 1;
    int filterButtonWidth = 0;
    int edgeReach = 0; // how near to a heading's edge a point still takes hold of it
    double scale = 1.0;
    bool operator==(const Measures&) const = default;
};

enum class Spot {
    Outside,        // of the grid, or its empty part behind the columns and below the rows
    Corner,         // above the record selectors
    Heading,        // column set
    HeadingEdge,    // column set: the one that its right edge sizes
    FilterCell,     // column set
    FilterButton,   // column set
    RecordSelector, // row set
    Cell,           // row and column set
    RowBackground   // row set: right of the last column
};

struct Hit {
    Spot spot = Spot::Outside;
    adodb::RowCount row = -1;
    int column = -1; // the column's index in the collection
};

// Where a heading that is being dragged lands when it is let go.
struct ColumnDrop {
    Spot spot = Spot::Outside; // Heading: among the columns shown; Outside: nowhere
    int place = -1;            // in front of which; as many as there are: behind the last one
    bool operator==(const ColumnDrop&) const = default;
};

// The narrowest a column gets by sizing, twips.
inline constexpr double minColumnWidth = 150;

class NR_API Geometry {
  public:
    // Takes the shown columns with their widths; scroll positions are kept where they can be.
    void Update(const Columns& columns, const Measures& measures, adodb::RowCount rows);

    const Measures& Sizes() const { return sizes_; }
    ScrollAxis& Vertical() { return vertical_; }
    const ScrollAxis& Vertical() const { return vertical_; }
    ScrollAxis& Horizontal() { return horizontal_; }
    const ScrollAxis& Horizontal() const { return horizontal_; }

    // --- columns, by place (0: leftmost shown) and by index in the collection ---
    int ShownCount() const { return static_cast<int>(shown_.size()); }
    int ColumnAt(int place) const { return shown_[static_cast<std::size_t>(place)]; }
    int PlaceOf(int column) const; // -1: not shown
    int ColumnWidth(int place) const;
    int ColumnLeft(int place) const; // in the painted area, scrolled
    int ColumnsWidth() const { return edges_.empty() ? 0 : edges_.back(); }
    // The places that are at least partly in view: [first, last).
    struct Range {
        int first = 0, last = 0;
    };
    Range PlacesInView() const;

    // --- rows ---
    adodb::RowCount Rows() const { return rows_; }
    int DataTop() const { return sizes_.headingHeight + sizes_.filterHeight; }
    int DataHeight() const;                // pixels, never negative
    int DataWidth() const;                 // right of the record selectors
    adodb::RowCount FirstRow() const;      // the first one at least partly in view
    int RowsInView() const;                // how many are at least partly in view
    int WholeRows() const;                 // how many fit whole; at least 1
    int RowTop(adodb::RowCount row) const; // in the painted area; only for rows near the view

    // --- rectangles in the painted area; empty for what is not shown ---
    Rect Heading(int column) const;
    Rect FilterCell(int column) const;
    Rect FilterButton(int column) const;     // whether or not the column has one
    Rect RowRect(adodb::RowCount row) const; // the whole width
    Rect Cell(adodb::RowCount row, int column) const;
    Rect Data() const; // right of the selectors, below headings and filter bar

    // What stands at a point; columns is asked which filter cells have a button.
    Hit HitTest(int x, int y, const Columns& columns) const;

    // Where a heading would land at a point: among the columns while the point is no farther from
    // the headings than they are high, at the border of columns in view that is nearest to it.
    ColumnDrop DropAt(int x, int y) const;
    // The border in front of a place, in the painted area; for a place in view or behind it.
    int BorderAt(int place) const;

    // Scrolls as little as needed so that the row is whole in view, at a row's border; likewise a
    // column, its left edge first. True when something moved.
    bool ShowRow(adodb::RowCount row);
    bool ShowColumn(int column);

  private:
    int placeAt(int x) const; // -1: none
    Rect columnRect(int column, int top, int height) const;
    Hit hitHeading(int x) const;
    Measures sizes_;
    std::vector<int> shown_;  // indexes, left to right
    std::vector<int> edges_;  // right edge of each shown column, pixels from the first one's left
    std::vector<int> places_; // by index
    adodb::RowCount rows_ = 0;
    ScrollAxis vertical_;
    ScrollAxis horizontal_;
};

} // namespace norvel::grid
