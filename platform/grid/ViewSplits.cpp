// Splits: the grid's columns several times side by side.
#include "platform/grid/View.h"

#include <algorithm>

namespace norvel::grid {

Split& Grid::View::SplitAt(int index) {
    if (index < 0 || index >= SplitCount()) throw Errore(9, "Indice non incluso nell'intervallo");
    return splits_[static_cast<std::size_t>(index)];
}

void Grid::View::SetColumnsFree(bool free) {
    columnsFree_ = free;
    Layout();
}

bool Grid::View::mayMoveColumns(int split) const {
    return columnsFree_ || splits_[static_cast<std::size_t>(split)].AllowColMove;
}

// With what the operator may do anyway.
std::vector<Split> Grid::View::splitsAsUsed() const {
    std::vector<Split> used = splits_;
    for (Split& split : used)
        split.AllowSizing = split.AllowSizing || columnsFree_;
    return used;
}

int Grid::View::AddSplit() {
    splits_.push_back(splits_.back());
    horizontal_.push_back(makeScrollBar(false));
    endDrag();
    Layout();
    Refresh();
    return SplitCount() - 1;
}

void Grid::View::RemoveSplit(int index) {
    SplitAt(index);
    if (SplitCount() == 1) throw Errore(5, "Chiamata di routine o argomento non validi");
    endDrag();
    splits_.erase(splits_.begin() + index);
    horizontal_[static_cast<std::size_t>(index)]->Destroy();
    horizontal_.erase(horizontal_.begin() + index);
    geometry_.RemoveSplit(index);
    if (currentSplit_ > index || currentSplit_ == SplitCount()) --currentSplit_;
    if (index == 0) ColumnsChanged(); // the filter bar is another split's now
    Layout();
    Refresh();
}

} // namespace norvel::grid
