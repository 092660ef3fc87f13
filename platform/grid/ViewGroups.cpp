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
        if (column < 0 || fieldOf_[static_cast<std::size_t>(column)] < 0) continue;
        if (std::ranges::find(found, column) == found.end()) found.push_back(column);
    }
    return found;
}

// Groups what the new reader shows. Where the recordset refuses, the rows show as they are, and the
// grouping area says why.
void Grid::View::groupRows() {
    groupError_.clear();
    groups_ = groupColumns();
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
        const int field = fieldOf_[static_cast<std::size_t>(column)];
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
    if (last || std::chrono::steady_clock::now() - lastGrouping_ >= groupingPause) regroup();
    return true;
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
    if (fieldOf_[static_cast<std::size_t>(column)] < 0 || equalsText(own, before)) return;
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
    linesChanged();
}

void Grid::View::toggle(RowCount row) {
    if (IsGroup(row)) SetOpen(row, !IsGroupOpen(row));
}

void Grid::View::SetAllOpen(bool open) {
    expansion_.SetAll(open);
    lines_.SetAllOpen(open);
    linesChanged();
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
void Grid::View::linesChanged() {
    clickedRow_ = -1;
    Layout();
    syncCurrent(Sync::Anew);
    anchor_ = current_;
    if (current_ >= 0) ShowCell(current_, -1);
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
