// Sizes, scroll bars, wheel: what of the rows and columns is in view.
#include "platform/grid/View.h"
#include "platform/grid/model/DefaultColumns.h"
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

int Grid::View::rowHeight() const {
    return textHeight_ + pixels(90);
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
    Layout();
    Refresh();
}

Measures Grid::View::measures(const wxSize& area) const {
    Measures m;
    m.width = area.x;
    m.height = area.y;
    m.scale = Scale();
    m.rowHeight = rowHeight();
    m.selectorWidth = pixels(300);
    m.headingHeight = textHeight_ + pixels(150);
    m.filterHeight = split_.FilterBar ? textHeight_ + pixels(150) : 0;
    m.filterButtonWidth = pixels(270);
    m.edgeReach = pixels(75);
    return m;
}

void Grid::View::makeScrollBars() {
    vertical_ = new wxScrollBar(&grid_, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    horizontal_ =
        new wxScrollBar(&grid_, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_HORIZONTAL);
    for (wxScrollBar* bar : {vertical_, horizontal_}) {
        bar->Hide();
        bar->DisableFocusFromKeyboard();
        const bool isVertical = bar == vertical_;
        for (const auto& type : {wxEVT_SCROLL_TOP, wxEVT_SCROLL_BOTTOM, wxEVT_SCROLL_LINEUP,
                                 wxEVT_SCROLL_LINEDOWN, wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN,
                                 wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_THUMBRELEASE})
            bar->Bind(type, [this, isVertical](wxScrollEvent& e) { onScrollBar(e, isVertical); });
    }
    grid_.Bind(wxEVT_IDLE, [this](wxIdleEvent& e) {
        if (barsStale_) updateScrollBars();
        e.Skip();
    });
    grid_.Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& e) { onWheel(e); });
}

// Each bar takes room that may make the other one needed.
void Grid::View::Layout() {
    if (!vertical_) return;
    const wxSize client = grid_.GetClientSize();
    const RowCount rows = readableRows();
    const int across = vertical_->GetBestSize().x;
    const int down = horizontal_->GetBestSize().y;
    geometry_.Update(columns_, measures(client), rows);
    bool needsVertical = geometry_.Vertical().Needed();
    const bool needsHorizontal =
        geometry_.ColumnsWidth() > geometry_.DataWidth() - (needsVertical ? across : 0);
    const wxSize area(std::max(0, client.x - (needsVertical ? across : 0)),
                      std::max(0, client.y - (needsHorizontal ? down : 0)));
    geometry_.Update(columns_, measures(area), rows);
    if (!needsVertical && geometry_.Vertical().Needed()) {
        needsVertical = true;
        geometry_.Update(columns_, measures({std::max(0, client.x - across), area.y}), rows);
    }
    vertical_->SetSize(client.x - across, geometry_.DataTop(), across,
                       std::max(0, geometry_.DataHeight()));
    horizontal_->SetSize(0, client.y - down, geometry_.Sizes().width, down);
    vertical_->Show(needsVertical);
    horizontal_->Show(geometry_.Horizontal().Needed());
    updateScrollBars();
    placeEditor();
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
    set(horizontal_, geometry_.Horizontal());
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
    placeEditor();
    Refresh();
}

void Grid::View::ShowCell(RowCount row, int column) {
    const bool rowMoved = row >= 0 && geometry_.ShowRow(row);
    const bool columnMoved = column >= 0 && geometry_.ShowColumn(column);
    if (rowMoved || columnMoved) scrolled();
}

void Grid::View::onScrollBar(wxScrollEvent& event, bool isVertical) {
    ScrollAxis& axis = isVertical ? geometry_.Vertical() : geometry_.Horizontal();
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
        ScrollAxis& axis = geometry_.Horizontal();
        if (axis.SetPosition(axis.Position() + by)) scrolled();
        return;
    }
    const int rowsPerNotch = std::max(1, event.GetLinesPerAction());
    const double step =
        event.IsPageScroll() ? geometry_.DataHeight() : rowsPerNotch * geometry_.Sizes().rowHeight;
    const Pixels by = wheelY_.Add(-event.GetWheelRotation(), notch, step);
    ScrollAxis& axis = geometry_.Vertical();
    if (axis.SetPosition(axis.Position() + by)) scrolled();
}

void Grid::View::FitColumn(int column) {
    Column& sized = columns_.Item(column);
    std::vector<std::string> texts;
    try {
        Fill(geometry_.FirstRow(), geometry_.RowsInView(), {column});
    } catch (const Errore& error) {
        return report(error);
    }
    const int field = fieldOf_[static_cast<std::size_t>(column)];
    for (int i = 0; i < geometry_.RowsInView(); ++i)
        if (const std::string* text = cache_.Text(geometry_.FirstRow() + i, field))
            texts.push_back(*text);
    sized.Width = fittingWidth(
        sized.Caption, texts, [this](std::string_view t) { return textTwips(t); },
        cellFrameTwips());
    Layout();
    Refresh();
}

} // namespace norvel::grid
