// The selected area: rows, whole or the cells of some columns.
#include "platform/grid/View.h"

namespace norvel::grid {

bool Grid::View::HasArea() {
    Reader();
    return selection_.Count() > 0 && columns_.Count() > 0;
}

CellArea::Range Grid::View::AreaColumns() {
    return HasArea() ? area_.Indexes(geometry_, columns_.Count()) : CellArea::Range{};
}

} // namespace norvel::grid
