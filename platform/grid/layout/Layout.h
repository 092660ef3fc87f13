// How a grid looks, apart from what it shows: what a layout file keeps.
#pragma once

#include "platform/grid/model/Model.h"

#include <string>
#include <vector>

namespace norvel::grid {

struct LayoutColumn {
    std::string DataField;
    std::string Caption;
    double Width = 1440; // twips
    int Order = 0;
    bool Visible = true;
    grid::ValueItems ValueItems;
    bool operator==(const LayoutColumn&) const = default;
};

struct Layout {
    grid::Split Split; // the first one, which programs touch
    GridStyle Style;
    std::vector<LayoutColumn> Columns;
    bool operator==(const Layout&) const = default;
};

// The look of a grid as a layout. dormant: columns of the layout that was applied last whose fields
// are not there; they go along, so that they are not lost.
NR_API Layout takeLayout(const Columns& columns, const Split& split, const GridStyle& style,
                         const std::vector<LayoutColumn>& dormant);

// Gives the columns, found by their fields (case-blind), and the rest the look of the layout. A
// column that the layout does not name keeps its own look and comes behind the others; the filter
// cells and their value-list switches stay as they are. Returns the columns of the layout whose
// fields are not there.
NR_API std::vector<LayoutColumn> applyLayout(const Layout& layout, Columns& columns, Split& split,
                                             GridStyle& style);
// Of the columns alone.
NR_API std::vector<LayoutColumn> applyColumns(const std::vector<LayoutColumn>& looks,
                                              Columns& columns);

} // namespace norvel::grid
