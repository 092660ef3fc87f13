// What the grid shows: the reader of the host's rows, the columns made for it, and the recordset's
// events.
#include "platform/grid/View.h"
#include "platform/grid/model/DataTypeCode.h"
#include "platform/grid/model/DefaultColumns.h"
#include "platform/runtime/MessageBox.h"
#include "platform/runtime/Twips.h"

#include <algorithm>
#include <utility>

namespace norvel::grid {

using namespace adodb;

namespace {

using namespace std::chrono_literals;
constexpr auto arrivalPause = 50ms; // between two looks at rows that keep arriving

std::string unreadable(const Errore& error) {
    return "Impossibile leggere i record: " + error.descrizione();
}

} // namespace

Recordset& Grid::View::Host() const {
    if (!source_ || !source_->Recordset()) throw erroreOggettoNonImpostato();
    return *source_->Recordset();
}

void Grid::View::Bind(controls::DataControl* source) {
    if (source_) source_->RemoveObserver(this);
    source_ = source;
    if (source_) source_->AddObserver(this);
    RecordsetReplaced();
}

void Grid::View::RecordsetReplaced() {
    reader_.reset();
    readerStale_ = true;
    forgetEdit();
    cache_.Clear();
    record_ = current_ = lastPlace_ = anchor_ = -1;
    groupAt_.clear();
    if (!source_ || !source_->Recordset()) selection_.SetView(nullptr, false);
    geometry_.Vertical().SetPosition(0);
    rowsChanged();
}

// --- the reader ---

RowReader* Grid::View::Reader() {
    if (!readerStale_) return reader_.get();
    readerStale_ = false;
    cache_.Clear();
    const auto old = std::exchange(reader_, nullptr);
    openError_.clear();
    bool otherFields = false;
    try {
        const auto host = source_ ? source_->Recordset() : nullptr;
        if (host && (host->State() & adStateOpen)) reader_ = std::make_shared<RowReader>(*host);
        const bool sameRows = reader_ && old && old->SameFilter(*host);
        if (reader_ && (columns_.Count() == 0 || ownColumns())) otherFields = makeColumns();
        mappedNames_.clear();
        fieldOf_.clear();
        remapColumns();
        groupRows();
        keepCurrentColumn();
        selection_.SetView(reader_, sameRows);
    } catch (const Errore& error) {
        giveUpReading(error);
    }
    if (otherFields) loseFilterCell();
    return reader_.get();
}

// What the recordset said stands where the rows would stand.
void Grid::View::giveUpReading(const Errore& error) {
    openError_ = unreadable(error);
    reader_.reset();
    selection_.SetView(nullptr, false);
    mappedNames_.clear();
    fieldOf_.clear();
    remapColumns();
    groupRows();
    keepCurrentColumn();
}

// Everything that depends on which rows there are.
void Grid::View::rowsChanged(Sync sync) {
    hideTip();
    clickedRow_ = -1; // what a double-click would hit is another row now
    Reader();
    Layout();
    syncCurrent(sync);
    anchor_ = current_; // where it was, another row may stand now, or none
    Refresh();
}

// --- columns ---

bool Grid::View::ownColumns() const {
    if (madeFor_.empty() || static_cast<int>(madeFor_.size()) != columns_.Count()) return false;
    for (int i = 0; i < columns_.Count(); ++i)
        if (columns_.Item(i).DataField != madeFor_[static_cast<std::size_t>(i)]) return false;
    return true;
}

namespace {

// What the filter bar and a sort have made of columns that are made anew.
void keepFilters(const Columns& old, Columns& made) {
    for (int i = 0; i < made.Count() && i < old.Count(); ++i) {
        Column& column = made.Item(i);
        column.Locked = old.Item(i).Locked;
        column.FilterCombo = old.Item(i).FilterCombo;
        column.FilterText = old.Item(i).FilterText;
        column.FilterError = old.Item(i).FilterError;
        column.Heading = old.Item(i).Heading;
    }
}

} // namespace

// The same fields keep the columns that the operator may have sized meanwhile; widths are taken
// from the rows once there are some. True where the fields are others than before.
bool Grid::View::makeColumns() {
    Fields& fields = Host().Fields();
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(fields.Count()));
    for (int i = 0; i < fields.Count(); ++i)
        names.push_back(fields(i).Name());
    if (names == madeFor_ && widthsSampled_) return false;
    const bool sameFields = names == madeFor_;
    grid::Columns made = defaultColumns(
        fields, *reader_, cache_, [this](std::string_view t) { return textTwips(t); },
        cellFrameTwips());
    for (int i = 0; grid_.OnColumnMade && i < made.Count(); ++i)
        grid_.OnColumnMade(made.Item(i));
    if (sameFields) keepFilters(columns_, made);
    columns_ = std::move(made);
    dormant_ = applyColumns(layoutColumns_, columns_);
    endColumnDrag();
    madeFor_ = std::move(names);
    widthsSampled_ = reader_->Rows() > 0;
    return !sameFields;
}

// Only what names another field than before is looked up, since a host may tell of a change for
// each of a thousand columns.
void Grid::View::remapColumns() {
    const auto count = static_cast<std::size_t>(columns_.Count());
    fieldOf_.resize(count, -1);
    mappedNames_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        Column& column = columns_.Item(static_cast<int>(i));
        if (mappedNames_[i] != column.DataField) {
            mappedNames_[i] = column.DataField;
            fieldOf_[i] = reader_ ? reader_->FieldIndex(column.DataField) : -1;
        }
        if (fieldOf_[i] >= 0) column.DataType = reader_->FieldType(fieldOf_[i]);
    }
}

int Grid::View::fieldOf(int column) const {
    const auto at = static_cast<std::size_t>(column);
    return at < fieldOf_.size() ? fieldOf_[at] : -1;
}

// The column that the keyboard is in is one that is shown.
void Grid::View::keepCurrentColumn() {
    const auto shown = columns_.Ungrouped();
    if (std::ranges::find(shown, currentColumn_) == shown.end())
        currentColumn_ = shown.empty() ? -1 : shown.front();
}

void Grid::View::ColumnsChanged() {
    if (!ownColumns()) madeFor_.clear();
    endColumnDrag();
    remapColumns();
    regroupIfOthers();
    keepCurrentColumn();
    if (filterColumn_ >= 0) {
        if (hasFilterCell(filterColumn_))
            SetFilterText(filterColumn_, columns_.Item(filterColumn_).FilterText);
        else
            loseFilterCell();
    }
    Layout();
    if (cellEditor_.IsOpen() && !canEdit(edited_.column)) undoCell();
    Refresh();
}

double Grid::View::textTwips(std::string_view text) {
    return pixelsToTwips(painter_->Width(text), Scale());
}

// --- cells ---

void Grid::View::Fill(RowCount first, RowCount count, const std::vector<int>& columns) {
    RowReader* reader = Reader();
    if (!reader) return;
    std::vector<int> fields;
    for (const int column : columns)
        if (const int field = fieldOf(column); field >= 0) fields.push_back(field);
    std::sort(fields.begin(), fields.end());
    fields.erase(std::unique(fields.begin(), fields.end()), fields.end());
    const RowCount end = std::min(first + count, lines_.Count());
    for (RowCount line = std::max<RowCount>(0, first); line < end;) {
        const RowCount from = recordOn(line);
        if (from < 0) { // a group's own line; the run of its rows begins below it
            ++line;
            continue;
        }
        RowCount run = 1;
        while (line + run < end && recordOn(line + run) == from + run)
            ++run;
        reader->Fill(cache_, from, run, fields);
        line += run;
    }
}

RowCount Grid::View::recordOn(RowCount row) const {
    if (row < 0 || row >= lines_.Count()) return -1;
    const Line line = lines_.At(row);
    return line.IsGroup() ? -1 : line.row;
}

const std::string* Grid::View::cellAt(RowCount row, int column) const {
    const int field = fieldOf(column);
    const RowCount record = recordOn(row);
    if (field < 0 || record < 0) return nullptr;
    if (record == record_)
        if (const std::string* changed = rowEdit_.Text(field)) return changed;
    return cache_.Text(record, field);
}

// Reads what the view shows and is not at hand. A failure takes the place of the rows: what cannot
// be read is met here, not while painting.
void Grid::View::prepareRows() {
    readError_.clear();
    try {
        Fill(geometry_.FirstRow(), geometry_.RowsInView(), geometry_.ColumnsInView());
        fillGroupLines(geometry_.FirstRow(), geometry_.RowsInView());
        for (int i = 0; i < geometry_.RowsInView(); ++i)
            if (IsGroup(geometry_.FirstRow() + i)) groupLineText(geometry_.FirstRow() + i);
    } catch (const Errore& error) {
        readError_ = unreadable(error);
    }
}

std::string Grid::View::Text(RowCount row, int column) {
    columns_.Item(column);
    if (row < 0 || row >= Rows()) return {};
    Fill(row, 1, {column});
    const std::string* text = cellAt(row, column);
    return text ? *text : std::string();
}

int Grid::View::DataTypeCode(int column) {
    const Column& asked = columns_.Item(column);
    Reader();
    const int field = fieldOf(column);
    if (reader_ && field >= 0) return dataTypeCode(Host(), field);
    return asked.DataType == adBoolean ? yesNoTypeCode : static_cast<int>(asked.DataType);
}

// --- the recordset's events ---

// Where the host's current record stands, as the reader counts; -1: before the first one or
// nowhere, as many as there are rows: behind the last one.
RowCount Grid::View::hostsRecord() {
    try {
        if (!reader_) return -1;
        const RowCount position = Host().AbsolutePosition();
        if (position == adPosEOF) return lines_.Rows();
        if (position < 1) return -1;
        if (groups_.empty()) return position - 1;
        return reader_->RowOf(Host().Bookmark()).value_or(-1);
    } catch (const Errore&) { // a closed or busy recordset has no current record
        return -1;
    }
}

void Grid::View::syncCurrent(Sync sync) {
    const RowCount place = hostsRecord();
    const RowCount record = place >= 0 && place < lines_.Rows() ? place : -1;
    const bool moved = record != record_;
    record_ = record;
    if (moved && sync == Sync::Moved) {
        groupAt_.clear();
        if (record >= 0) reveal(record);
    }
    RowCount row = record >= 0 ? lines_.NearestLine(record) : -1;
    if (!groupAt_.empty()) {
        const auto group = lines_.Find(groupAt_, groupValues());
        if (!group) groupAt_.clear();
        if (group) row = lines_.LineOfGroup(*group);
        if (group && row < 0) row = lines_.NearestLine(lines_.RowsOf(*group).first);
    }
    lastPlace_ = row >= 0 ? row : place < 0 ? -1 : Rows();
    const bool changed = row != current_;
    if (changed) setCurrent(row);
    if (sync != Sync::Quiet && row >= 0 && geometry_.ShowRow(row)) scrolled();
    if ((changed || moved) && grid_.OnRowChange) grid_.OnRowChange();
}

void Grid::View::setCurrent(RowCount row) {
    refreshRow(current_);
    current_ = row;
    anchor_ = row;
    if (row >= 0) lastPlace_ = row;
    refreshRow(current_);
}

void Grid::View::MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum,
                              Recordset&) {
    if (!error && !settling_) cellEditor_.Close(); // nothing typed is left in it: see WillMove
    if (readerStale_) return;                      // ViewChanged or the next look will do it
    if (reason == adRsnAddNew || reason == adRsnRequery || Rows() != readableRows()) Layout();
    syncCurrent(reason == adRsnRequery ? Sync::Anew : Sync::Moved);
}

void Grid::View::RecordChangeComplete(EventReasonEnum reason, int, const Errore* error,
                                      EventStatusEnum, Recordset&) {
    if (!error) rowSettled(reason);
    cache_.Clear();
    if (reason == adRsnDelete || reason == adRsnUndoAddNew) selection_.Clear();
    if (!groups_.empty()) readerStale_ = true; // the groups may be others
    rowsChanged();
}

void Grid::View::FieldChangeComplete(int, const std::vector<Field*>&, const Errore*,
                                     EventStatusEnum, Recordset&) {
    cache_.Clear();
    Refresh();
}

void Grid::View::RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                         EventStatusEnum, Recordset& recordset) {
    if (reason == adRsnRequery || reason == adRsnClose) {
        selection_.Clear();
        if (!error) forgetEdit();
    }
    ViewChanged(recordset);
}

void Grid::View::ViewChanged(Recordset&) {
    readerStale_ = true;
    rowsChanged();
}

void Grid::View::FetchProgress(RowCount, RowCount, EventStatusEnum, Recordset&) {
    rowsArrived(false);
}

void Grid::View::FetchComplete(const Errore*, EventStatusEnum, Recordset&) {
    rowsArrived(true);
}

// Rows arrive in many small steps; the scroll bar follows in few.
void Grid::View::rowsArrived(bool atOnce) {
    const auto now = std::chrono::steady_clock::now();
    if (!atOnce && now - lastArrival_ < arrivalPause) {
        if (!arrivals_.IsRunning()) arrivals_.StartOnce(static_cast<int>(arrivalPause.count()));
        return;
    }
    lastArrival_ = now;
    arrivals_.Stop();
    if (readerStale_) return rowsChanged();
    if (!reader_) return;
    try {
        if (ownColumns() && !widthsSampled_) {
            const bool otherFields = makeColumns();
            remapColumns();
            keepCurrentColumn();
            if (otherFields) loseFilterCell();
        }
    } catch (const Errore& error) {
        giveUpReading(error);
    }
    if (regroupArrived(atOnce && !fetching())) return;
    const RowCount before = Rows();
    const bool full = geometry_.FirstRow() + geometry_.WholeRows() < before;
    Layout();
    if (!full || Rows() < before || (reader_ && reader_->Shifts())) Refresh();
    syncCurrent(Sync::Quiet);
}

// A row of a sorted selection is found by its bookmark, which a broken connection may refuse.
bool Grid::View::isSelected(RowCount row) const {
    try {
        if (IsGroup(row)) return isClosedGroupSelected(row);
        return selection_.Contains(recordOn(row));
    } catch (const Errore&) { // said in the rows' place by the next read
        return false;
    }
}

// How many lines there are to show. A connection that was closed takes the reader with it.
RowCount Grid::View::readableRows() {
    if (!reader_ || readerStale_) return 0;
    try {
        const RowCount rows = reader_->Rows();
        if (groups_.empty()) lines_.SetPlain(rows);
        return lines_.Count();
    } catch (const Errore& error) {
        giveUpReading(error);
        return 0;
    }
}

void Grid::View::report(const Errore& error) {
    endDrag();
    if (grid_.OnError) return grid_.OnError(error);
    mostraMessaggio({.testo = error.descrizione(), .icona = BoxIcon::Exclamation});
}

} // namespace norvel::grid
