#include "platform/grid/Grid.h"

#include "platform/grid/View.h"
#include "platform/grid/preview/GridPreview.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

wxRect toWx(const Rect& r) {
    return {r.x, r.y, r.width, r.height};
}

// What is seen of a rectangle whose sides may reach out of the area.
wxRect seen(const Rect& r, const Rect& area) {
    return r.Empty() ? wxRect() : toWx(r).Intersect(toWx(area));
}

// The same of a column's rectangle in a split.
wxRect seen(const Rect& r, const Geometry& places, int column, int split) {
    return seen(r, places.PaneOf(places.PlaceOf(column, split)));
}

} // namespace

Grid::Grid(wxWindow* parent) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxWANTS_CHARS | wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE | wxCLIP_SIBLINGS);
    view_ = std::make_unique<View>(*this);
    layouts_ = std::make_unique<LayoutKeeper>(
        [this] { return view_->TakeLayout(); },
        [this](const grid::Layout& layout) { view_->ApplyLayout(layout); });
    printInfo_ = std::make_unique<grid::PrintInfo>(
        [this](grid::PrintInfo& info) { openPreview(*this, info); });
}

Grid::~Grid() = default;

void Grid::SetDataSource(controls::DataControl* source) {
    view_->Bind(source);
}
controls::DataControl* Grid::DataSource() const {
    return view_->Source();
}
Variant Grid::Bookmark() const {
    return view_->Host().Bookmark();
}
void Grid::SetBookmark(const Variant& bookmark) {
    view_->Host().SetBookmark(bookmark);
}

grid::SelBookmarks& Grid::SelBookmarks() {
    view_->Reader();
    return view_->Selection();
}

bool Grid::HasSelectedArea() {
    return view_->HasArea();
}
int Grid::SelStartCol() {
    return view_->AreaColumns().first;
}
int Grid::SelEndCol() {
    return view_->AreaColumns().last;
}

int Grid::DataTypeCode(int column) {
    return view_->DataTypeCode(column);
}

grid::Columns& Grid::Columns() {
    return view_->TheColumns();
}

int Grid::SplitCount() const {
    return view_->SplitCount();
}
Split& Grid::SplitAt(int index) {
    return view_->SplitAt(index);
}
int Grid::AddSplit() {
    return view_->AddSplit();
}
void Grid::RemoveSplit(int index) {
    view_->RemoveSplit(index);
}

GridStyle& Grid::Style() {
    return view_->TheStyle();
}

LayoutKeeper& Grid::Layouts() {
    return *layouts_;
}

grid::PrintInfo& Grid::PrintInfo() {
    return *printInfo_;
}

void Grid::Changed() {
    view_->StyleChanged();
    view_->ColumnsChanged();
}

Area Grid::focusArea() const {
    return view_->FocusArea();
}
RowCount Grid::RowsInView() const {
    return view_->Places().RowsInView();
}
RowCount Grid::FirstRow() const {
    return view_->Places().FirstRow();
}

void Grid::SetFirstRow(RowCount row) {
    const Geometry& places = view_->Places();
    row = std::clamp<RowCount>(row, 0, places.Rows());
    view_->ScrollTo(places.Horizontal().Position(), row * places.Sizes().rowHeight);
}

RowCount Grid::CurrentRow() const {
    return view_->CurrentRow();
}
RowCount Grid::LineCount() const {
    return view_->Rows();
}
bool Grid::IsGroupRow(RowCount row) const {
    return view_->IsGroup(row);
}
std::string Grid::LineText(RowCount row) {
    return view_->GroupText(row);
}
bool Grid::IsGroupOpen(RowCount row) const {
    return view_->IsGroupOpen(row);
}
void Grid::SetGroupOpen(RowCount row, bool open) {
    if (view_->IsGroup(row)) view_->SetOpen(row, open);
}
void Grid::SetAllGroupsOpen(bool open) {
    view_->SetAllOpen(open);
}
wxRect Grid::GroupRect(RowCount row) const {
    return view_->IsGroup(row) ? view_->GroupBox(row) : wxRect();
}
wxRect Grid::GroupSignRect(RowCount row) const {
    return view_->IsGroup(row) ? view_->GroupSign(row) : wxRect();
}

wxRect Grid::GroupAreaRect() const {
    const Measures& sizes = view_->Places().Sizes();
    return {0, 0, sizes.width, sizes.areaHeight};
}
wxRect Grid::GroupBoxRect(int column) const {
    return toWx(view_->Places().BoxOf(column));
}

int Grid::CurrentColumn() const {
    return view_->CurrentColumn();
}
void Grid::SetCurrentColumn(int column) {
    view_->SetCurrentColumn(column);
}

int Grid::LeftColumn() const {
    const Geometry& places = view_->Places();
    for (const Geometry::Pane& pane : places.Panes())
        if (pane.first < pane.last) return places.ColumnAt(pane.first);
    return -1;
}

wxRect Grid::CellRect(RowCount rowPosition, int column, int split) const {
    const Geometry& places = view_->Places();
    view_->SplitAt(split);
    const Rect cell = places.CellAt(places.FirstRow() + rowPosition, places.PlaceOf(column, split));
    return seen(cell, places, column, split).Intersect(toWx(places.Data()));
}

wxRect Grid::FilterCellRect(int column) const {
    const Geometry& places = view_->Places();
    return seen(places.FilterCell(column), places, column, 0);
}

wxRect Grid::FilterButtonRect(int column) const {
    const Geometry& places = view_->Places();
    if (places.PlaceOf(column) < 0 || !view_->TheColumns().Item(column).FilterCombo) return {};
    return seen(places.FilterButton(column), places, column, 0);
}

wxRect Grid::HeadingRect(int column, int split) const {
    const Geometry& places = view_->Places();
    view_->SplitAt(split);
    return seen(places.HeadingAt(places.PlaceOf(column, split)), places, column, split);
}

wxRect Grid::RecordSelectorRect(RowCount rowPosition) const {
    const Geometry& places = view_->Places();
    Rect row = places.RowRect(places.FirstRow() + rowPosition);
    row.width = places.Sizes().selectorWidth;
    return seen(row, {0, places.DataTop(), row.width, places.DataHeight()});
}

std::string Grid::CellText(RowCount row, int column) {
    return view_->Text(row, column);
}
double Grid::Scale() const {
    return view_->Scale();
}
bool Grid::EnterFilterCell(int column) {
    return view_->EnterFilter(column, true);
}
int Grid::FilterColumn() const {
    return view_->FilterColumn();
}

void Grid::SetFilterText(int column, const std::string& text) {
    view_->SetFilterText(column, text);
}

void Grid::SetFilterError(int column, const std::string& reason) {
    view_->SetFilterError(column, reason);
}

void Grid::SetColumnsFree(bool free) {
    view_->SetColumnsFree(free);
}

bool Grid::AllowUpdate() const {
    return view_->AllowUpdate();
}
bool Grid::SetAllowUpdate(bool allow) {
    return view_->SetAllowUpdate(allow);
}
bool Grid::EndEdit() {
    return view_->EndEdit();
}

void Grid::FitColumn(int column) {
    view_->FitColumn(column);
}

bool Grid::SetFont(const wxFont& font) {
    const bool changed = wxControl::SetFont(font);
    if (changed && view_) view_->FontChanged();
    return changed;
}

wxSize Grid::DoGetBestClientSize() const {
    return {FromDIP(400), view_ ? view_->DefaultHeight() : FromDIP(200)};
}

void Grid::DoSetSize(int x, int y, int width, int height, int flags) {
    wxControl::DoSetSize(x, y, width, height, flags);
    if (view_) view_->Layout();
}

} // namespace norvel::grid
