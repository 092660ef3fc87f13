// The keyboard in the data rows, and the moves that mouse and keyboard share.
#include "platform/grid/View.h"

#include <algorithm>
#include <array>

namespace norvel::grid {

using adodb::RowCount;

Stroke Grid::View::strokeOf(const wxKeyEvent& event) {
    struct Pair {
        int code;
        Key key;
    };
    static constexpr std::array pairs{
        Pair{WXK_UP, Key::Up},
        Pair{WXK_NUMPAD_UP, Key::Up},
        Pair{WXK_DOWN, Key::Down},
        Pair{WXK_NUMPAD_DOWN, Key::Down},
        Pair{WXK_LEFT, Key::Left},
        Pair{WXK_NUMPAD_LEFT, Key::Left},
        Pair{WXK_RIGHT, Key::Right},
        Pair{WXK_NUMPAD_RIGHT, Key::Right},
        Pair{WXK_PAGEUP, Key::PageUp},
        Pair{WXK_NUMPAD_PAGEUP, Key::PageUp},
        Pair{WXK_PAGEDOWN, Key::PageDown},
        Pair{WXK_NUMPAD_PAGEDOWN, Key::PageDown},
        Pair{WXK_HOME, Key::Home},
        Pair{WXK_NUMPAD_HOME, Key::Home},
        Pair{WXK_END, Key::End},
        Pair{WXK_NUMPAD_END, Key::End},
        Pair{WXK_SPACE, Key::Space},
        Pair{WXK_NUMPAD_SPACE, Key::Space},
        Pair{'A', Key::A},
        Pair{'C', Key::C},
        Pair{'G', Key::G},
        Pair{'*', Key::Multiply},
        Pair{WXK_NUMPAD_MULTIPLY, Key::Multiply},
        Pair{'/', Key::Divide},
        Pair{WXK_NUMPAD_DIVIDE, Key::Divide},
        Pair{WXK_RETURN, Key::Enter},
        Pair{WXK_NUMPAD_ENTER, Key::Enter},
        Pair{WXK_INSERT, Key::Insert},
        Pair{WXK_NUMPAD_INSERT, Key::Insert},
        Pair{WXK_F2, Key::F2},
        Pair{WXK_ESCAPE, Key::Escape},
        Pair{WXK_TAB, Key::Tab},
        Pair{'+', Key::Plus},
        Pair{'=', Key::Plus}, // where the plus needs Shift
        Pair{WXK_NUMPAD_ADD, Key::Plus},
        Pair{'-', Key::Minus},
        Pair{WXK_NUMPAD_SUBTRACT, Key::Minus},
        Pair{'0', Key::Zero},
        Pair{WXK_NUMPAD0, Key::Zero},
    };
    const auto found = std::ranges::find(pairs, event.GetKeyCode(), &Pair::code);
    const Key key = found == pairs.end() ? Key::Other : found->key;
    return {key, event.ShiftDown(), event.ControlDown(), event.AltDown()};
}

void Grid::View::bindKeys() {
    grid_.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& e) {
        bool handled = true;
        guarded([&] { handled = HandleKey(e); });
        if (!handled) e.Skip();
    });
    // While the mouse is captured, not every system asks by a hook first.
    grid_.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& e) {
        if (!keyWhileDragging(e)) e.Skip();
    });
    const auto repaint = [this](wxFocusEvent& e) {
        Refresh();
        e.Skip();
    };
    grid_.Bind(wxEVT_SET_FOCUS, repaint);
    grid_.Bind(wxEVT_KILL_FOCUS, repaint);
}

// Esc takes the drag back; the other keys wait until it is over.
bool Grid::View::keyWhileDragging(const wxKeyEvent& event) {
    if (drag_ == Drag::None) return false;
    if (event.GetKeyCode() == WXK_ESCAPE) cancelDrag();
    return true;
}

bool Grid::View::HandleKey(wxKeyEvent& event) {
    if (keyWhileDragging(event)) return true;
    hideTip();
    const Area area = FocusArea();
    const Stroke stroke = strokeOf(event);
    // Enter on the line of a group chooses nothing, whatever it does on a row.
    const bool enter = area == Area::Data && stroke.key == Key::Enter && onGroup();
    if (enter && runGroupCommand(stroke)) return true;
    if (area == Area::Data && rowEditKey(event)) return true;
    const wxWeakRef<Grid> alive(&grid_);
    if (grid_.OnKey && grid_.OnKey(event.GetKeyCode(), event.GetModifiers(), area)) return true;
    if (!alive || alive->IsBeingDeleted()) return true;
    if (area == Area::FilterCell) return filterKey(event);
    if (area == Area::CellEdit) return editorKey(event);
    if (runGroupCommand(stroke)) return true;
    const KeyCommand command = commandFor(stroke);
    if (command.kind == KeyCommand::Kind::None) return false;
    if (command.kind == KeyCommand::Kind::ClearSelection && selection_.Count() == 0) return false;
    if (command.kind == KeyCommand::Kind::NextControl) return !EndEdit() || grid_.Navigate();
    run(command);
    return true;
}

void Grid::View::run(const KeyCommand& command) {
    switch (command.kind) {
    case KeyCommand::Kind::MoveRow:
        return moveRow(command);
    case KeyCommand::Kind::MoveCell:
        return moveCell(command);
    case KeyCommand::Kind::MoveColumn:
        return moveColumnBy(command.side);
    case KeyCommand::Kind::SizeColumn:
        return sizeCurrentColumn(command.sizing);
    case KeyCommand::Kind::SizeRows:
        return sizeRows(command.sizing);
    case KeyCommand::Kind::SelectAll:
        return selectAll();
    case KeyCommand::Kind::SelectRow:
        return selectRow(current_);
    case KeyCommand::Kind::ToggleRow:
        return toggleRow(current_);
    case KeyCommand::Kind::Copy:
        return copyArea();
    case KeyCommand::Kind::ClearSelection:
        return selection_.Clear();
    case KeyCommand::Kind::EnterFilter:
        if (!EnterFilter(currentColumn_, true)) grid_.Navigate(wxNavigationKeyEvent::IsBackward);
        return;
    case KeyCommand::Kind::NextControl:
    case KeyCommand::Kind::None:
        return;
    }
}

// The filter bar stands above the first row for the arrow keys too.
void Grid::View::moveRow(const KeyCommand& command) {
    const bool plainUp = command.step == Step::RowUp && !command.extend && !command.keepSelection;
    if (plainUp && lastPlace_ <= 0 && EnterFilter(currentColumn_, true)) return;
    const RowCount page = std::max(1, geometry_.WholeRows() - 1);
    const RowCount target = targetRow(command.step, lastPlace_, Rows(), page);
    if (target < 0) return;
    if (command.extend) {
        if (reach(target)) extendTo(current_);
    } else if (MoveTo(target) && !command.keepSelection) {
        selection_.Clear();
    }
}

// Left and Right lead from one split into the next.
void Grid::View::moveCell(const KeyCommand& command) {
    const Side side = command.side;
    const int from = currentColumn_;
    const int shown = geometry_.ShownCount();
    if (shown == 0) return;
    int place = std::max(0, geometry_.PlaceOf(currentColumn_, currentSplit_));
    if (side == Side::First) place = currentSplit_ * shown;
    if (side == Side::Last) place = currentSplit_ * shown + shown - 1;
    if (side == Side::Left) place = std::max(0, place - 1);
    if (side == Side::Right) place = std::min(geometry_.PlaceCount() - 1, place + 1);
    currentSplit_ = geometry_.SplitOf(place);
    SetCurrentColumn(geometry_.ColumnAt(place));
    ShowCell(current_, currentColumn_);
    cellMoved(command.extend, from);
}

void Grid::View::SetCurrentColumn(int column) {
    if (geometry_.PlaceOf(column) < 0) return;
    currentColumn_ = column;
    ShowCell(-1, column);
    refreshRow(current_);
}

void Grid::View::moveTo(RowCount row, const Line& line) {
    if (line.IsGroup()) return stepOnGroup(row);
    if (line.row == record_) {
        groupAt_.clear();
        if (row != current_) setCurrent(row);
    } else if (groups_.empty()) {
        Host().SetAbsolutePosition(line.row + 1);
    } else {
        Host().SetBookmark(reader_->BookmarkAt(line.row));
    }
}

bool Grid::View::MoveTo(RowCount row) {
    try {
        row = rowOnceSaved(row);
        if (row < 0) return false;
        moveTo(row, lines_.At(row));
        ShowCell(row, -1);
        anchor_ = row;
        return true;
    } catch (const Errore& error) { // a move that a handler or a pending edit refused
        report(error);
        return false;
    }
}

// The same for a selection to follow: it begins at the same row as before, on whatever lines rows
// stand once one of them has been saved on the way.
bool Grid::View::reach(RowCount row) {
    const RowCount from = anchor_ >= 0 ? anchor_ : row;
    const bool saves = row != current_ && (cellEditor_.IsOpen() || rowEdit_.Pending());
    const LineMark begun = saves ? markOf(from) : LineMark{};
    if (!MoveTo(row)) return false;
    anchor_ = saves ? lineOf(begun) : from;
    return true;
}

void Grid::View::refreshRow(RowCount row) {
    if (repaintAsked_) return;
    const Rect r = geometry_.RowRect(row);
    if (!r.Empty()) grid_.RefreshRect({r.x, r.y, r.width, r.height + 1}, false);
}

} // namespace norvel::grid
