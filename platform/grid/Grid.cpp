#include "platform/grid/Grid.h"

#include "platform/grid/View.h"

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

} // namespace

Grid::Grid(wxWindow* parent) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxWANTS_CHARS | wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE | wxCLIP_SIBLINGS);
    view_ = std::make_unique<View>(*this);
    layouts_ = std::make_unique<LayoutKeeper>(
        [this] { return view_->TakeLayout(); },
        [this](const grid::Layout& layout) { view_->ApplyLayout(layout); });
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

Split& Grid::SplitAt(int index) {
    if (index != 0) throw Errore(9, "Indice non incluso nell'intervallo");
    return view_->TheSplit();
}

GridStyle& Grid::Style() {
    return view_->TheStyle();
}

LayoutKeeper& Grid::Layouts() {
    return *layouts_;
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
    view_->ScrollTo(places.Horizontal().Position(), row * places.Sizes().rowHeight);
}

RowCount Grid::CurrentRow() const {
    return view_->CurrentRow();
}
int Grid::CurrentColumn() const {
    return view_->CurrentColumn();
}
void Grid::SetCurrentColumn(int column) {
    view_->SetCurrentColumn(column);
}

int Grid::LeftColumn() const {
    const Geometry& places = view_->Places();
    const auto range = places.PlacesInView();
    return range.first < range.last ? places.ColumnAt(range.first) : -1;
}

wxRect Grid::CellRect(RowCount rowPosition, int column) const {
    const Geometry& places = view_->Places();
    return seen(places.Cell(places.FirstRow() + rowPosition, column), places.Data());
}

wxRect Grid::FilterCellRect(int column) const {
    const Geometry& places = view_->Places();
    const Measures& sizes = places.Sizes();
    return seen(places.FilterCell(column),
                {sizes.selectorWidth, 0, places.DataWidth(), sizes.height});
}

wxRect Grid::FilterButtonRect(int column) const {
    const Geometry& places = view_->Places();
    if (places.PlaceOf(column) < 0 || !view_->TheColumns().Item(column).FilterCombo) return {};
    const Measures& sizes = places.Sizes();
    return seen(places.FilterButton(column),
                {sizes.selectorWidth, 0, places.DataWidth(), sizes.height});
}

wxRect Grid::HeadingRect(int column) const {
    const Geometry& places = view_->Places();
    const Measures& sizes = places.Sizes();
    return seen(places.Heading(column), {sizes.selectorWidth, 0, places.DataWidth(), sizes.height});
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
