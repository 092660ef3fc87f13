// Painting the data rows. What is not in view costs nothing.
#include "platform/grid/View.h"

#include <wx/dcbuffer.h>

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

Grid::View::View(Grid& grid) : grid_(grid), painter_(makeTextPainter()), cellEditor_(grid) {
    palette_ = systemPalette();
    makeScrollBars();
    bindMouse();
    bindKeys();
    bindEditing();
    grid_.Bind(wxEVT_PAINT, [this](wxPaintEvent&) { onPaint(); });
    grid_.Bind(wxEVT_SIZE, [this](wxSizeEvent& e) {
        Layout();
        e.Skip();
    });
    grid_.Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& e) {
        palette_ = systemPalette();
        Refresh();
        e.Skip();
    });
    grid_.Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& e) {
        FontChanged();
        e.Skip();
    });
    arrivals_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { guarded([&] { rowsArrived(true); }); });
    selection_.OnChange = [this] {
        if (selection_.Count() == 0) area_.Clear();
        Refresh();
    };
    FontChanged();
}

Grid::View::~View() {
    if (source_) source_->RemoveObserver(this);
    if (grid_.HasCapture()) grid_.ReleaseMouse();
}

// Once is enough until the next paint.
void Grid::View::Refresh() {
    if (repaintAsked_) return;
    repaintAsked_ = true;
    grid_.wxControl::Refresh(false);
}

bool Grid::View::focused() const {
    return grid_.HasFocus() || cellEditor_.HasFocus() ||
           (editor_ && filterColumn_ >= 0 && editor_->HasFocus());
}

void Grid::View::onPaint() {
    repaintAsked_ = false;
    prepareRows();
    wxAutoBufferedPaintDC dc(&grid_);
    const wxRect dirty = grid_.GetUpdateRegion().GetBox();
    paintRows(dc, dirty);
    if (dirty.y < geometry_.DataTop()) {
        paintGroupArea(dc);
        paintHeadings(dc);
        if (splits_[0].FilterBar) paintFilterBar(dc);
    }
    paintBorders(dc);
    if (drag_ == Drag::RowSizing) paintRowSizing(dc);
    paintScrollCorner(dc);
    if (columnDrag_.Moving()) paintColumnDrag(dc);
    if (!firstPainted_ && readError_.empty()) tellFirstPaint();
}

// Once the picture is on its way to the screen.
void Grid::View::tellFirstPaint() {
    const int rows = geometry_.ShownCount() > 0 ? geometry_.RowsInView() : 0;
    if (rows == 0) return;
    firstPainted_ = true;
    const wxWeakRef<Grid> alive(&grid_);
    grid_.CallAfter([alive, rows] {
        if (alive && alive->OnFirstPaint) alive->OnFirstPaint(rows);
    });
}

void Grid::View::paintRows(wxDC& dc, const wxRect& dirty) {
    const Measures& sizes = geometry_.Sizes();
    const Rect data = geometry_.Data();
    const wxRect area = wxRect(0, data.y, sizes.width, data.height).Intersect(dirty);
    if (area.IsEmpty()) return;
    const wxDCClipper clip(dc, area);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(palette_.back);
    dc.DrawRectangle(area);
    const std::string& message = openError_.empty() ? readError_ : openError_;
    if (!message.empty()) return paintMessage(dc, message);
    const Pixels top = geometry_.Vertical().Position() - data.y;
    const RowCount first =
        std::max<RowCount>(geometry_.FirstRow(), (top + area.y) / sizes.rowHeight);
    const RowCount last = std::min<RowCount>(geometry_.FirstRow() + geometry_.RowsInView(),
                                             (top + area.GetBottom()) / sizes.rowHeight + 1);
    if (first >= last) return;
    if (area.GetRight() >= sizes.selectorWidth) {
        for (const Geometry::Pane& pane : geometry_.Panes())
            paintPane(dc, pane, {first, last});
        paintGroupLines(dc, first, last);
    }
    if (current_ >= first && current_ < last) paintFocus(dc);
    paintSelectors(dc, area);
}

// Selected rows first, then the current one, then the rows of selected cells, then the stripes.
Grid::View::RowLook Grid::View::lookOf(RowCount row, const Split& split, bool hasFocus) {
    const bool selected = isSelected(row);
    if (selected && area_.WholeRows(geometry_)) {
        if (hasFocus) return {palette_.selection, palette_.selectionText};
        return {palette_.idleSelection, palette_.idleSelectionText};
    }
    if (row == current_ && style_.MarqueeStyle == marqueeRow)
        return {hasFocus ? palette_.currentBack : palette_.idleCurrentBack, palette_.text};
    if (selected) return {palette_.idleCurrentBack, palette_.text};
    if (!groups_.empty() && recordOn(row) < 0) return {palette_.face, palette_.faceText};
    if (!split.AlternatingRowStyle) return {palette_.back, palette_.text};
    const RowColours colours = alternateColours(palette_, split, row % 2 == 1);
    return {colours.back, colours.text};
}

void Grid::View::paintPane(wxDC& dc, const Geometry::Pane& pane, RowSpan rows) {
    const Rect data = geometry_.Data();
    {
        const wxDCClipper clip(dc, pane.left, data.y, pane.width, data.height);
        paintRowBacks(dc, pane, rows);
        paintArea(dc, pane, rows);
        paintLines(dc, pane, rows);
    }
    paintTexts(dc, pane, rows);
}

void Grid::View::paintRowBacks(wxDC& dc, const Geometry::Pane& pane, RowSpan rows) {
    const bool hasFocus = focused();
    const Split& split = SplitAt(pane.split);
    for (RowCount row = rows.first; row < rows.last; ++row) {
        const RowLook look = lookOf(row, split, hasFocus);
        if (look.back == palette_.back) continue;
        dc.SetBrush(look.back);
        dc.DrawRectangle(pane.left, geometry_.RowTop(row), pane.end - pane.left,
                         geometry_.Sizes().rowHeight);
    }
}

void Grid::View::paintLines(wxDC& dc, const Geometry::Pane& pane, RowSpan rows) {
    const int top = geometry_.RowTop(rows.first);
    const int bottom = geometry_.RowTop(rows.last);
    dc.SetBrush(palette_.line);
    for (int place = pane.first; place < pane.last; ++place)
        dc.DrawRectangle(geometry_.ColumnLeft(place) + geometry_.ColumnWidth(place) - 1, top, 1,
                         bottom - top);
    for (RowCount row = rows.first; row < rows.last; ++row)
        dc.DrawRectangle(pane.left, geometry_.RowTop(row + 1) - 1, pane.end - pane.left, 1);
}

void Grid::View::paintTexts(wxDC& dc, const Geometry::Pane& pane, RowSpan rows) {
    const Rect data = geometry_.Data();
    const bool hasFocus = focused();
    painter_->Begin(dc, {pane.left, data.y, pane.width, data.height});
    std::vector<wxColour> colours;
    for (RowCount row = rows.first; row < rows.last; ++row)
        colours.push_back(lookOf(row, SplitAt(pane.split), hasFocus).text);
    std::vector<CheckBox> boxes;
    const wxColour& areaText = hasFocus ? palette_.selectionText : palette_.idleSelectionText;
    for (int place = pane.first; place < pane.last; ++place) {
        const int index = geometry_.ColumnAt(place);
        const Column& column = columns_.Item(index);
        const bool checks = showsCheckBoxes(column);
        const Alignment align = alignmentOf(column);
        const Overflow overflow = isNumberType(column.DataType) || isDateType(column.DataType)
                                      ? Overflow::Hashes
                                      : Overflow::Ellipsis;
        wxRect box = textBox({geometry_.ColumnLeft(place), 0, geometry_.ColumnWidth(place),
                              geometry_.Sizes().rowHeight});
        for (RowCount row = rows.first; row < rows.last; ++row) {
            const std::string* text = cellAt(row, index);
            if (!text || text->empty()) continue;
            box.y = geometry_.RowTop(row);
            if (checks && takesCheckBox(*text, box, boxes)) continue;
            painter_->Draw(*text, box, align, overflow,
                           isAreaCell(row, index)
                               ? areaText
                               : colours[static_cast<std::size_t>(row - rows.first)]);
        }
    }
    painter_->End();
    paintCheckBoxes(dc, pane, boxes);
}

// Where the frozen columns end: in the headings and the rows. The line of a group is one piece.
void Grid::View::paintFrozenBorder(wxDC& dc, int x, int thick) {
    const int top = geometry_.Sizes().areaHeight;
    const RowCount first = geometry_.FirstRow();
    const RowCount last = first + geometry_.RowsInView();
    dc.SetBrush(palette_.frozenLine);
    dc.DrawRectangle(x, top, thick, geometry_.DataTop() - top);
    for (RowCount row = first; row < last; ++row)
        if (recordOn(row) >= 0)
            dc.DrawRectangle(x, geometry_.RowTop(row), thick, geometry_.Sizes().rowHeight);
}

// And where one split does: down to the lower edge.
void Grid::View::paintBorders(wxDC& dc) {
    const int thick = std::max(2, pixels(30));
    const int top = geometry_.Sizes().areaHeight;
    dc.SetPen(*wxTRANSPARENT_PEN);
    for (const Geometry::Pane& pane : geometry_.Panes()) {
        if (!pane.frozen) continue;
        paintFrozenBorder(dc, pane.Right() - thick, thick);
    }
    for (int split = 1; split < SplitCount(); ++split) {
        const int width = geometry_.Sizes().splitLine;
        const wxRect line(geometry_.SplitArea(split).x - width, top, width,
                          grid_.GetClientSize().y - top);
        dc.SetBrush(palette_.face);
        dc.DrawRectangle(line);
        dc.SetBrush(palette_.frozenLine);
        dc.DrawRectangle(line.x, top, 1, line.height);
        dc.DrawRectangle(line.GetRight(), top, 1, line.height);
    }
}

// The current cell: a frame, strong while the grid has the focus. Without it a highlighted row is
// enough to be found again.
void Grid::View::paintFocus(wxDC& dc) {
    if (cellEditor_.IsOpen()) return paintEditedCell(dc);
    const bool hasFocus = grid_.HasFocus();
    if (!hasFocus && style_.MarqueeStyle == marqueeRow) return;
    const int thick = std::max(2, pixels(30));
    const RowLook look = lookOf(current_, SplitAt(currentSplit_), hasFocus);
    if (onGroup()) {
        wxRect whole = GroupBox(current_);
        --whole.height;
        return paintFrame(dc, whole, hasFocus ? thick : thick / 2,
                          frameColour(palette_, look.back));
    }
    const int place = geometry_.PlaceOf(currentColumn_, currentSplit_);
    const Rect cell = geometry_.CellAt(current_, place);
    if (cell.Empty()) return;
    const Rect pane = geometry_.PaneOf(place);
    const wxDCClipper clip(dc, pane.x, geometry_.DataTop(), pane.width, geometry_.DataHeight());
    const wxRect box(cell.x, cell.y, cell.width - 1, cell.height - 1);
    if (isSelected(current_) && area_.Contains(geometry_, currentColumn_))
        paintFrame(dc, wxRect(box).Deflate(thick), thick / 2,
                   hasFocus ? palette_.selectionText : palette_.idleSelectionText);
    else
        paintFrame(dc, box, hasFocus ? thick : thick / 2, frameColour(palette_, look.back));
}

void Grid::View::paintMessage(wxDC& dc, const std::string& message) {
    const Rect data = geometry_.Data();
    const wxRect box(data.x + 8, data.y + 8, std::max(0, data.width - 16), textHeight_);
    painter_->Begin(dc, {data.x, data.y, data.width, data.height});
    painter_->Draw(message, box, Alignment::Left, Overflow::Ellipsis, palette_.text);
    painter_->End();
}

} // namespace norvel::grid
