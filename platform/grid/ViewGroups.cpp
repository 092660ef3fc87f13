// Rows in groups: which columns they are grouped by, which groups are open, what keys and mouse do
// on the lines of groups.
#include "platform/grid/View.h"
#include "platform/grid/groups/GroupKeys.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

namespace {

using namespace std::chrono_literals;
constexpr auto groupingPause = 400ms; // between two groupings while rows keep arriving

} // namespace

// --- grouping ---

// The columns that the rows are grouped by, outermost first. A group column whose field, or whose
// column, is not there waits in the style until it is.
std::vector<int> Grid::View::groupColumns() const {
    std::vector<int> found;
    if (style_.DataView != dataViewGroups || !reader_) return found;
    for (const std::string& field : style_.GroupColumns) {
        const int column = columns_.IndexOf(field);
        if (column < 0 || fieldOf(column) < 0) continue;
        if (std::ranges::find(found, column) == found.end()) found.push_back(column);
    }
    return found;
}

// Groups what the new reader shows. Where the recordset refuses, the rows show as they are, and the
// grouping area says why.
void Grid::View::groupRows() {
    groupError_.clear();
    const auto before = std::exchange(groups_, groupColumns());
    std::vector<std::string> fields;
    fields.reserve(groups_.size());
    for (const int column : groups_)
        fields.push_back(columns_.Item(column).DataField);
    if (!fields.empty()) cache_.Clear(); // widths were taken from rows in the order before
    adodb::Grouping grouping;
    try {
        if (!fields.empty()) grouping = reader_->GroupBy(fields);
    } catch (const Errore& error) {
        groupError_ = "Impossibile raggruppare: " + error.descrizione();
        groups_.clear();
        reader_ = std::make_shared<RowReader>(Host());
    }
    if (groups_ != before) endColumnDrag(); // headings and boxes are others
    for (int i = 0; i < columns_.Count(); ++i)
        columns_.Item(i).Grouped = std::ranges::find(groups_, i) != groups_.end();
    if (groups_.empty()) return lines_.SetPlain(reader_ ? reader_->Rows() : 0);
    expansion_.SetFields(fields);
    lastGrouping_ = std::chrono::steady_clock::now();
    lines_.SetGroups(std::move(grouping), expansion_, groupValues());
}

Lines::ValueOf Grid::View::groupValues() {
    return [this](int level, RowCount record) {
        const int column = groups_[static_cast<std::size_t>(level)];
        const int field = fieldOf(column);
        return reader_->Values(record, 1, {field}).values.front().front();
    };
}

GroupPath Grid::View::pathOf(const Line& line) {
    GroupPath path;
    const auto value = groupValues();
    for (int level = 0; level <= line.group.level; ++level)
        path.push_back(value(level, line.row));
    return path;
}

void Grid::View::regroup() {
    readerStale_ = true;
    rowsChanged();
}

// After the style was changed by code, or the columns were.
void Grid::View::regroupIfOthers() {
    if (!readerStale_ && groupColumns() != groups_) regroup();
}

// While rows arrive the groups are those of the rows that are there, made anew now and then, and
// for the last time when the fetch ends.
bool Grid::View::regroupArrived(bool last) {
    if (groups_.empty()) return false;
    if (last || std::chrono::steady_clock::now() - lastGrouping_ >= groupingPause) regroupInPlace();
    return true;
}

// What cannot be read is nowhere; the next paint says why.
Grid::View::LineMark Grid::View::markOf(RowCount row) {
    if (!reader_ || row < 0 || row >= lines_.Count()) return {};
    try {
        const Line line = lines_.At(row);
        if (line.IsGroup()) return {{}, pathOf(line)};
        return {reader_->BookmarkAt(line.row), {}};
    } catch (const Errore&) {
        return {};
    }
}

RowCount Grid::View::lineOf(const LineMark& mark) {
    if (!reader_) return -1;
    try {
        if (!mark.group.empty()) {
            const auto group = lines_.Find(mark.group, groupValues());
            return group ? lines_.LineOfGroup(*group) : -1;
        }
        const auto record = mark.bookmark.isEmpty() ? std::nullopt : reader_->RowOf(mark.bookmark);
        return record ? lines_.NearestLine(*record) : -1;
    } catch (const Errore&) {
        return -1;
    }
}

// Under the hands of an operator who scrolls and selects: what was in view stays where it is, the
// current row first, and a selection goes on from where it began. At the very top it is the new
// groups that come into view.
void Grid::View::regroupInPlace() {
    const bool shown = !geometry_.RowRect(current_).Empty();
    const RowCount still = shown ? current_ : geometry_.FirstRow();
    const bool scrolledDown = geometry_.Vertical().Position() > 0;
    const int top = geometry_.RowTop(still);
    const LineMark mark = markOf(still);
    const LineMark begun = markOf(anchor_);
    readerStale_ = true;
    rowsChanged(Sync::Quiet);
    if (const RowCount row = lineOf(begun); row >= 0) anchor_ = row;
    const RowCount now = lineOf(mark);
    ScrollAxis& axis = geometry_.Vertical();
    if (scrolledDown && now >= 0 && axis.SetPosition(axis.Position() + geometry_.RowTop(now) - top))
        scrolled();
    if (shown) ShowCell(current_, -1);
}

// --- by the operator ---

void Grid::View::setGroupColumns(std::vector<std::string> fields) {
    style_.GroupColumns = std::move(fields);
    regroup();
    ColumnsChanged();
    if (grid_.OnGroupColumnsChanged) grid_.OnGroupColumnsChanged();
}

// Puts a column among the groups, in front of the one at a place; takes it from where it stands.
// Dormant group columns keep their places.
void Grid::View::groupBy(int column, int place) {
    std::vector<std::string> fields = style_.GroupColumns;
    const std::string& own = columns_.Item(column).DataField;
    std::string before;
    if (place < static_cast<int>(groups_.size()))
        before = columns_.Item(groups_[static_cast<std::size_t>(place)]).DataField;
    if (fieldOf(column) < 0 || equalsText(own, before)) return;
    const auto named = [](const std::string& name) {
        return [&name](const std::string& field) { return equalsText(field, name); };
    };
    std::erase_if(fields, named(own));
    const auto at = before.empty() ? fields.end() : std::ranges::find_if(fields, named(before));
    fields.insert(at, own);
    if (fields != style_.GroupColumns) setGroupColumns(std::move(fields));
}

void Grid::View::ungroup(int column) {
    const std::string own = columns_.Item(column).DataField;
    std::vector<std::string> fields = style_.GroupColumns;
    std::erase_if(fields, [&](const std::string& field) { return equalsText(field, own); });
    setGroupColumns(std::move(fields));
    SetCurrentColumn(column);
}

// --- lines of groups ---

bool Grid::View::IsGroup(RowCount row) const {
    return row >= 0 && row < lines_.Count() && lines_.At(row).IsGroup();
}

bool Grid::View::IsGroupOpen(RowCount row) const {
    return IsGroup(row) && lines_.IsOpen(lines_.At(row).group);
}

bool Grid::View::onGroup() const {
    return IsGroup(current_);
}

// A closed group looks as its rows would: selected where all of them are.
bool Grid::View::isClosedGroupSelected(RowCount row) const {
    const GroupId group = lines_.At(row).group;
    const Lines::Span rows = lines_.RowsOf(group);
    return !lines_.IsOpen(group) && selection_.ContainsAll(rows.first, rows.first + rows.count - 1);
}

void Grid::View::SetOpen(RowCount row, bool open) {
    const Line line = lines_.At(row);
    if (!line.IsGroup() || lines_.IsOpen(line.group) == open) return;
    expansion_.Set(pathOf(line), open);
    lines_.SetOpen(line.group, open);
    linesChanged(Sync::Quiet); // what is above stays where it is
    if (row == current_) ShowCell(row, -1);
}

void Grid::View::toggle(RowCount row) {
    if (IsGroup(row)) SetOpen(row, !IsGroupOpen(row));
}

void Grid::View::SetAllOpen(bool open) {
    expansion_.SetAll(open);
    lines_.SetAllOpen(open);
    linesChanged(Sync::Anew);
}

// The groups that hide the recordset's current row.
void Grid::View::reveal(RowCount record) {
    const auto hiding = lines_.HidingRow(record);
    if (hiding.empty()) return;
    for (const GroupId group : hiding) {
        expansion_.Set(pathOf({record, group}), true);
        lines_.SetOpen(group, true);
    }
    Layout();
    Refresh();
}

// The same rows on other lines.
void Grid::View::linesChanged(Sync sync) {
    clickedRow_ = -1;
    Layout();
    syncCurrent(sync);
    anchor_ = current_;
    Refresh();
}

void Grid::View::stepOnGroup(RowCount row) {
    groupAt_ = pathOf(lines_.At(row));
    setCurrent(row);
}

// False: the key does what it does on any row.
bool Grid::View::runGroupCommand(Stroke stroke) {
    if (style_.DataView != dataViewGroups) return false;
    const bool group = onGroup();
    const bool first = current_ >= 0 && !groups_.empty() && geometry_.PlaceOf(currentColumn_) <= 0;
    switch (groupCommandFor(stroke, group, first)) {
    case GroupCommand::None:
        return false;
    case GroupCommand::Toggle:
        toggle(current_);
        return true;
    case GroupCommand::OpenOrEnter:
        if (lines_.IsOpen(lines_.At(current_).group))
            MoveTo(current_ + 1);
        else
            SetOpen(current_, true);
        return true;
    case GroupCommand::Open:
        SetOpen(current_, true);
        return true;
    case GroupCommand::Close:
        SetOpen(current_, false);
        return true;
    case GroupCommand::CloseOrLeave:
        if (lines_.IsOpen(lines_.At(current_).group))
            SetOpen(current_, false);
        else
            toParent();
        return true;
    case GroupCommand::OpenAll:
        SetAllOpen(true);
        return true;
    case GroupCommand::CloseAll:
        SetAllOpen(false);
        return true;
    case GroupCommand::ToGroup:
        toParent();
        return true;
    case GroupCommand::GroupColumn:
        if (geometry_.PlaceOf(currentColumn_) >= 0)
            groupBy(currentColumn_, static_cast<int>(groups_.size()));
        return true;
    case GroupCommand::Ungroup:
        if (!groups_.empty()) ungroup(groups_.back());
        return true;
    }
    return false;
}

void Grid::View::toParent() {
    if (const auto group = lines_.Parent(lines_.At(current_))) MoveTo(lines_.LineOfGroup(*group));
}

} // namespace norvel::grid
