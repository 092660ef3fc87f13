// The lines of groups: where their parts stand, what they say, how they look.
#include "platform/grid/View.h"
#include "platform/grid/groups/GroupText.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

namespace {

// A box with a minus in it, or a plus: by filled rectangles, which stay sharp at every scale.
void drawSign(wxDC& dc, const wxRect& box, bool open, int thick, const wxColour& colour) {
    paintFrame(dc, box, thick, colour);
    const int arm = box.width / 2 - 2 * thick;
    const int x = box.x + (box.width - thick) / 2;
    const int y = box.y + (box.height - thick) / 2;
    dc.DrawRectangle(x - arm, y, 2 * arm + thick, thick);
    if (!open) dc.DrawRectangle(x, y - arm, thick, 2 * arm + thick);
}

} // namespace

bool Grid::View::fetching() const {
    const auto host = source_ ? source_->Recordset() : nullptr;
    return host && (host->State() & adodb::adStateFetching) != 0;
}

void Grid::View::fillGroupLines(RowCount first, RowCount count) {
    if (groups_.empty() || !reader_) return;
    const RowCount end = std::min(first + count, lines_.Count());
    for (RowCount row = first; row < end; ++row) {
        const Line line = lines_.At(row);
        if (!line.IsGroup()) continue;
        const int column = groups_[static_cast<std::size_t>(line.group.level)];
        reader_->Fill(cache_, line.row, 1, {fieldOf(column)});
    }
}

std::string Grid::View::GroupText(RowCount row) {
    if (!IsGroup(row)) return {};
    fillGroupLines(row, 1);
    return groupLineText(row);
}

std::string Grid::View::groupLineText(RowCount row) {
    const Line line = lines_.At(row);
    const int column = groups_[static_cast<std::size_t>(line.group.level)];
    const std::string* cell = cache_.Text(line.row, fieldOf(column));
    if (!cell) return {};
    const bool null = cell->empty() && groupValues()(line.group.level, line.row).isNull();
    return groupText(columns_.Item(column), *cell, null, lines_.RowsOf(line.group).count,
                     fetching());
}

// The whole line, right of the record selectors: it does not scroll sideways.
wxRect Grid::View::GroupBox(RowCount row) const {
    const Measures& sizes = geometry_.Sizes();
    return {sizes.selectorWidth, geometry_.RowTop(row), geometry_.DataWidth(), sizes.rowHeight};
}

// Groups inside others stand farther in.
wxRect Grid::View::GroupSign(RowCount row) const {
    const wxRect box = GroupBox(row);
    const int thick = std::max(1, pixels(15));
    const int side = std::max(9 * thick, textHeight_ * 5 / 8) / 2 * 2 + thick % 2;
    const int level = lines_.At(row).group.level;
    const int x = box.x + pixels(cellMarginTwips() / 2) + level * (side + pixels(120));
    return {x, box.y + (box.height - 1 - side) / 2, side, side};
}

// What the text has to itself, behind the sign.
wxRect Grid::View::groupTextBox(RowCount row) const {
    const wxRect line = GroupBox(row);
    const int left = GroupSign(row).GetRight() + 1 + pixels(90);
    const int right = line.GetRight() + 1 - pixels(cellMarginTwips() / 2);
    return {left, line.y, std::max(0, right - left), line.height - 1};
}

void Grid::View::paintGroupLines(wxDC& dc, RowCount first, RowCount last) {
    if (groups_.empty()) return;
    const bool hasFocus = focused();
    for (RowCount row = first; row < last; ++row) {
        if (recordOn(row) >= 0) continue;
        const RowLook look = lookOf(row, splits_[0], hasFocus);
        const wxRect box = GroupBox(row);
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(look.back);
        dc.DrawRectangle(box);
        dc.SetBrush(palette_.faceLine);
        dc.DrawRectangle(box.x, box.GetBottom(), box.width, 1);
        const int thick = std::max(1, pixels(15));
        drawSign(dc, GroupSign(row), lines_.IsOpen(lines_.At(row).group), thick, look.text);
    }
    const Rect data = geometry_.Data();
    painter_->Begin(dc, {data.x, data.y, data.width, data.height});
    for (RowCount row = first; row < last; ++row) {
        if (recordOn(row) >= 0) continue;
        painter_->Draw(groupLineText(row), groupTextBox(row), Alignment::Left, Overflow::Ellipsis,
                       lookOf(row, splits_[0], hasFocus).text);
    }
    painter_->End();
}

// A click on the sign opens or closes the group, and nothing else; a row that is being edited is
// saved first.
bool Grid::View::pressGroup(const Hit& hit, const wxMouseEvent& event) {
    if (hit.spot != Spot::GroupSign || event.HasAnyModifiers()) return false;
    const GroupPath path = pathOf(lines_.At(hit.row));
    if (!EndEdit()) return true;
    toggle(lineOf({{}, path}));
    return true;
}

} // namespace norvel::grid
