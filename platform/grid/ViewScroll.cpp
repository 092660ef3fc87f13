// Sizes, scroll bars, wheel: what of the rows and columns is in view.
#include "platform/controls/ScrollBar.h"
#include "platform/grid/View.h"
#include "platform/runtime/Twips.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

double Grid::View::Scale() const {
    // The toolkit's coordinates are logical pixels on some platforms, where the screen's factor is
    // applied behind them.
    return grid_.GetDPIScaleFactor() / grid_.GetContentScaleFactor();
}

int Grid::View::pixels(double twips) const {
    return twipsToPixels(twips, Scale());
}

int Grid::View::fontRowHeight() const {
    return textHeight_ + pixels(90);
}

// A height that was chosen for a smaller font still shows the whole of a line.
int Grid::View::rowHeight() const {
    if (style_.RowHeight <= 0) return fontRowHeight();
    return std::max(pixels(style_.RowHeight), textHeight_ + 2);
}

// At both sides of a text together.
double Grid::View::cellMarginTwips() const {
    return 180;
}

// With the line at the right edge, and a pixel that rounding may take.
double Grid::View::cellFrameTwips() const {
    return cellMarginTwips() + pixelsToTwips(2, Scale());
}

void Grid::View::FontChanged() {
    painter_->SetFont(grid_.GetFont(), grid_);
    textHeight_ = painter_->Height();
    if (editor_) editor_->SetFont(grid_.GetFont());
    cellEditor_.SetFont(grid_.GetFont());
    Layout();
    Refresh();
}

Measures Grid::View::measures() const {
    const wxSize client = grid_.GetClientSize();
    Measures m;
    m.width = client.x;
    m.height = client.y;
    m.barWidth = vertical_->GetBestSize().x;
    m.barHeight = horizontal_.front()->GetBestSize().y;
    m.scale = Scale();
    m.rowHeight = rowHeight();
    m.selectorWidth = pixels(300);
    m.headingHeight = textHeight_ + pixels(150);
    m.areaHeight = style_.DataView == dataViewGroups ? m.headingHeight + pixels(180) : 0;
    m.filterHeight = splits_[0].FilterBar ? textHeight_ + pixels(150) : 0;
    m.filterButtonWidth = pixels(270);
    m.edgeReach = pixels(75);
    m.splitLine = pixels(75);
    // One row at least is seen whole, however high a layout wants them, unless the window is tiny.
    const int room = m.height - m.areaHeight - m.headingHeight - m.filterHeight - m.barHeight;
    m.rowHeight = std::min(m.rowHeight, std::max(room, fontRowHeight()));
    return m;
}

wxScrollBar* Grid::View::makeScrollBar(bool vertical) {
    return controls::makeScrollBar(grid_, vertical, [this](wxScrollEvent& e) { onScrollBar(e); });
}

void Grid::View::makeScrollBars() {
    vertical_ = makeScrollBar(true);
    horizontal_.push_back(makeScrollBar(false));
    grid_.Bind(wxEVT_IDLE, [this](wxIdleEvent& e) {
        if (barsStale_) updateScrollBars();
        e.Skip();
    });
    grid_.Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& e) { onWheel(e); });
}

void Grid::View::Layout() {
    if (!vertical_) return;
    geometry_.Update(columns_, measures(), readableRows(), splitsAsUsed());
    arrangeGroupBoxes();
    placeScrollBars();
    updateScrollBars();
    placeEditor();
}

void Grid::View::placeScrollBars() {
    const wxSize client = grid_.GetClientSize();
    const int across = vertical_->GetBestSize().x;
    const int down = horizontal_.front()->GetBestSize().y;
    controls::placeScrollBar(
        *vertical_,
        {client.x - across, geometry_.DataTop(), across, std::max(0, geometry_.DataHeight())},
        geometry_.Vertical().Needed());
    for (int split = 0; split < SplitCount(); ++split) {
        const Rect own = geometry_.SplitArea(split);
        const int left = split == 0 ? 0 : own.x;
        controls::placeScrollBar(*horizontal_[static_cast<std::size_t>(split)],
                                 {left, client.y - down, own.x + own.width - left, down},
                                 geometry_.Horizontal(split).Needed());
    }
}

void Grid::View::updateScrollBars() {
    barsStale_ = false;
    const auto set = [](wxScrollBar* bar, const ScrollAxis& axis) {
        const ScrollBarValues values = axis.Bar();
        const bool same = bar->GetThumbPosition() == values.position &&
                          bar->GetThumbSize() == values.thumb && bar->GetRange() == values.range;
        if (!same) bar->SetScrollbar(values.position, values.thumb, values.range, values.thumb);
    };
    set(vertical_, geometry_.Vertical());
    for (wxScrollBar* bar : horizontal_)
        set(bar, axisOf(bar));
}

void Grid::View::ScrollTo(Pixels x, Pixels y) {
    const bool down = geometry_.Vertical().SetPosition(y);
    const bool across = geometry_.Horizontal().SetPosition(x);
    if (down || across) scrolled();
}

// The bars follow when the program is idle: a host that walks over all rows moves the view at every
// step.
void Grid::View::scrolled() {
    barsStale_ = true;
    hideTip();
    if (columnDrag_.Moving()) columnDrag_.Follow(columnDrag_.X(), columnDrag_.Y(), geometry_);
    placeEditor();
    Refresh();
}

void Grid::View::ShowCell(RowCount row, int column) {
    const bool rowMoved = row >= 0 && geometry_.ShowRow(row);
    const bool columnMoved =
        column >= 0 && geometry_.ShowPlace(geometry_.PlaceOf(column, currentSplit_));
    if (rowMoved || columnMoved) scrolled();
}

ScrollAxis& Grid::View::axisOf(const wxScrollBar* bar) {
    if (bar == vertical_) return geometry_.Vertical();
    const auto split = std::ranges::find(horizontal_, bar) - horizontal_.begin();
    return geometry_.Horizontal(static_cast<int>(split));
}

void Grid::View::onScrollBar(const wxScrollEvent& event) {
    const auto* bar = static_cast<const wxScrollBar*>(event.GetEventObject());
    const bool isVertical = bar == vertical_;
    ScrollAxis& axis = axisOf(bar);
    const Pixels line = isVertical ? geometry_.Sizes().rowHeight : pixels(600);
    Pixels target = axis.FromBar(event.GetPosition());
    if (event.GetEventType() == wxEVT_SCROLL_LINEUP) target = axis.Position() - line;
    if (event.GetEventType() == wxEVT_SCROLL_LINEDOWN) target = axis.Position() + line;
    if (axis.Bar().position == event.GetPosition() && target == axis.FromBar(event.GetPosition()))
        return;
    if (axis.SetPosition(target)) scrolled();
}

void Grid::View::onWheel(wxMouseEvent& event) {
    const bool sideways = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL || event.ShiftDown();
    const int notch = event.GetWheelDelta();
    if (event.ControlDown()) return event.Skip();
    if (sideways) {
        // A wheel turned down, with Shift, goes right; a horizontal one says itself where it goes.
        const int sign = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? 1 : -1;
        const Pixels by = wheelX_.Add(sign * event.GetWheelRotation(), notch,
                                      event.GetColumnsPerAction() * pixels(360));
        ScrollAxis& axis = geometry_.Horizontal(geometry_.SplitAt(event.GetX()));
        if (axis.SetPosition(axis.Position() + by)) scrolled();
        return;
    }
    // Of rows that are high no more than are seen, so that none is passed over.
    const int rowsPerNotch = std::clamp(event.GetLinesPerAction(), 1, geometry_.WholeRows());
    const double step =
        event.IsPageScroll() ? geometry_.DataHeight() : rowsPerNotch * geometry_.Sizes().rowHeight;
    const Pixels by = wheelY_.Add(-event.GetWheelRotation(), notch, step);
    ScrollAxis& axis = geometry_.Vertical();
    if (axis.SetPosition(axis.Position() + by)) scrolled();
}

} // namespace norvel::grid
