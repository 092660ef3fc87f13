// Tips: the whole of a text that is cut, and why a marked filter cell is marked.
#include "platform/controls/WxText.h"
#include "platform/grid/View.h"
#include "platform/grid/model/TextRoom.h"

namespace norvel::grid {

// The text that a point hits, as it is painted there; none where it is painted as something else.
Grid::View::Words Grid::View::wordsAt(const Hit& hit) const {
    if (hit.column < 0) return {};
    const Column& column = columns_.Item(hit.column);
    const int place = geometry_.PlaceOf(hit.column, hit.split);
    if (hit.spot == Spot::Heading)
        return {column.Caption, headingTextBox(place), alignmentOf(column)};
    if (hit.spot == Spot::FilterCell)
        return {column.FilterText, filterTextBox(hit.column), Alignment::Left};
    if (hit.spot != Spot::Cell) return {};
    const std::string* text = cellAt(hit.row, hit.column);
    if (!text || (showsCheckBoxes(column) && checkOf(*text))) return {};
    return {*text, textBox(geometry_.CellAt(hit.row, place)), alignmentOf(column)};
}

bool Grid::View::isCut(const Words& words, int place) {
    const Rect pane = geometry_.PaneOf(place);
    const Span box{words.box.x, words.box.width};
    return isTextCut(painter_->Width(words.text), box, words.align, {pane.x, pane.width});
}

// The toolkit shows it after the usual delay while the mouse rests.
void Grid::View::showTip(const Hit& hit) {
    std::string text;
    if (hit.spot == Spot::FilterCell) text = columns_.Item(hit.column).FilterError;
    if (text.empty()) {
        const Words words = wordsAt(hit);
        const bool cut =
            !words.text.empty() && isCut(words, geometry_.PlaceOf(hit.column, hit.split));
        if (cut) text = words.text;
    }
    if (text == tip_) return;
    hideTip();
    tip_ = text;
    if (!text.empty()) grid_.SetToolTip(controls::toWx(text));
}

// Until the mouse moves: what was under it may be elsewhere.
void Grid::View::hideTip() {
    if (tip_.empty()) return;
    tip_.clear();
    grid_.UnsetToolTip();
}

} // namespace norvel::grid
