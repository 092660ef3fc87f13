// Tips: the whole of a text that is cut, and why a marked filter cell is marked.
#include "platform/controls/WxText.h"
#include "platform/grid/View.h"

namespace norvel::grid {

// The text that a point hits, as it is painted there; none where it is painted as something else.
Grid::View::Words Grid::View::wordsAt(const Hit& hit) {
    if (!readError_.empty()) return {}; // it stands where rows would be
    const Span whole{0, geometry_.Sizes().width};
    if (hit.spot == Spot::GroupLine)
        return {groupLineText(hit.row), groupTextBox(hit.row), Alignment::Left, whole};
    if (hit.column < 0) return {};
    const Column& column = columns_.Item(hit.column);
    if (hit.spot == Spot::GroupBox)
        return {column.Caption, boxTextBox(hit.column), Alignment::Left, whole};
    const int place = geometry_.PlaceOf(hit.column, hit.split);
    const Span pane{geometry_.PaneOf(place).x, geometry_.PaneOf(place).width};
    if (hit.spot == Spot::Heading)
        return {column.Caption, headingTextBox(place), alignmentOf(column), pane};
    if (hit.spot == Spot::FilterCell)
        return {column.FilterText, filterTextBox(hit.column), Alignment::Left, pane};
    if (hit.spot != Spot::Cell) return {};
    const std::string* text = cellAt(hit.row, hit.column);
    if (!text || (showsCheckBoxes(column) && checkOf(*text))) return {};
    return {*text, textBox(geometry_.CellAt(hit.row, place)), alignmentOf(column), pane};
}

bool Grid::View::isCut(const Words& words) {
    const Span box{words.box.x, words.box.width};
    return isTextCut(painter_->Width(words.text), box, words.align, words.pane);
}

// The toolkit shows it after the usual delay while the mouse rests.
void Grid::View::showTip(const Hit& hit) {
    std::string text;
    if (hit.spot == Spot::FilterCell) text = columns_.Item(hit.column).FilterError;
    if (text.empty()) {
        const Words words = wordsAt(hit);
        if (!words.text.empty() && isCut(words)) text = words.text;
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
