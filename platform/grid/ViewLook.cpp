// The grid's look as a whole: its style and its layouts.
#include "platform/grid/StyledFont.h"
#include "platform/grid/View.h"

namespace norvel::grid {

// A font that is not there leaves the grid's own.
void Grid::View::StyleChanged() {
    if (!ownFont_.IsOk()) ownFont_ = grid_.GetFont();
    const wxFont font = styledFont(ownFont_, style_.Font);
    if (font.IsOk() && font != grid_.GetFont()) grid_.SetFont(font);
}

grid::Layout Grid::View::TakeLayout() const {
    return takeLayout(columns_, splits_[0], style_, dormant_);
}

void Grid::View::ApplyLayout(const grid::Layout& layout) {
    layoutColumns_ = layout.Columns; // for columns that are made later
    dormant_ = applyLayout(layout, columns_, splits_[0], style_);
    StyleChanged();
    ColumnsChanged();
}

} // namespace norvel::grid
