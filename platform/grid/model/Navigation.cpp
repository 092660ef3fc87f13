#include "platform/grid/model/Navigation.h"

#include <algorithm>

namespace norvel::grid {

using adodb::RowCount;

namespace {

KeyCommand moveRow(Step step, const Stroke& stroke, bool controlKeeps) {
    KeyCommand command;
    command.kind = KeyCommand::Kind::MoveRow;
    command.step = step;
    command.extend = stroke.shift;
    command.keepSelection = controlKeeps && stroke.control && !stroke.shift;
    return command;
}

KeyCommand moveCell(Side side, const Stroke& stroke) {
    KeyCommand command;
    command.extend = stroke.shift && !stroke.control;
    command.kind = KeyCommand::Kind::MoveCell;
    command.side = side;
    return command;
}

// Left and Right.
KeyCommand sideways(Side side, const Stroke& stroke) {
    const bool left = side == Side::Left;
    KeyCommand command = moveCell(side, stroke);
    if (stroke.control && stroke.shift)
        command.kind = KeyCommand::Kind::MoveColumn;
    else if (stroke.control)
        command.side = left ? Side::First : Side::Last;
    return command;
}

// With both it is the AltGr of some keyboards, which types a character. Shift makes a plus on some.
KeyCommand size(Sizing sizing, const Stroke& stroke) {
    KeyCommand command;
    if (stroke.control == stroke.alt) return command;
    command.kind = stroke.alt ? KeyCommand::Kind::SizeRows : KeyCommand::Kind::SizeColumn;
    command.sizing = sizing;
    return command;
}

KeyCommand only(KeyCommand::Kind kind) {
    KeyCommand command;
    command.kind = kind;
    return command;
}

} // namespace

KeyCommand commandFor(Stroke stroke) {
    using Kind = KeyCommand::Kind;
    const bool sizes =
        stroke.key == Key::Plus || stroke.key == Key::Minus || stroke.key == Key::Zero;
    if (stroke.alt && !sizes) return {};
    switch (stroke.key) {
    case Key::Up:
        return moveRow(Step::RowUp, stroke, true);
    case Key::Down:
        return moveRow(Step::RowDown, stroke, true);
    case Key::PageUp:
        return moveRow(Step::PageUp, stroke, true);
    case Key::PageDown:
        return moveRow(Step::PageDown, stroke, true);
    case Key::Left:
        return sideways(Side::Left, stroke);
    case Key::Right:
        return sideways(Side::Right, stroke);
    case Key::Home:
        return stroke.control ? moveRow(Step::FirstRow, stroke, false)
                              : moveCell(Side::First, stroke);
    case Key::End:
        return stroke.control ? moveRow(Step::LastRow, stroke, false)
                              : moveCell(Side::Last, stroke);
    case Key::Space:
        if (stroke.control) return only(Kind::ToggleRow);
        return stroke.shift ? only(Kind::SelectRow) : KeyCommand{};
    case Key::A:
        return stroke.control && !stroke.shift ? only(Kind::SelectAll) : KeyCommand{};
    case Key::C:
    case Key::Insert:
        return stroke.control && !stroke.shift ? only(Kind::Copy) : KeyCommand{};
    case Key::F2:
        return only(Kind::EnterFilter);
    case Key::Escape:
        return only(Kind::ClearSelection);
    case Key::Tab:
        if (stroke.control) return {};
        return only(stroke.shift ? Kind::EnterFilter : Kind::NextControl);
    case Key::Plus:
        return size(Sizing::Larger, stroke);
    case Key::Minus:
        return size(Sizing::Smaller, stroke);
    case Key::Zero:
        return size(Sizing::Fit, stroke);
    case Key::G: // where rows are grouped: groups/GroupKeys.h
    case Key::Multiply:
    case Key::Divide:
    case Key::Enter:
    case Key::Other:
        break;
    }
    return {};
}

RowCount targetRow(Step step, RowCount current, RowCount rows, RowCount page) {
    if (rows <= 0) return -1;
    RowCount target = current;
    switch (step) {
    case Step::RowUp:
        target = current - 1;
        break;
    case Step::RowDown:
        target = current + 1;
        break;
    case Step::PageUp:
        target = current - std::max<RowCount>(1, page);
        break;
    case Step::PageDown:
        target = current + std::max<RowCount>(1, page);
        break;
    case Step::FirstRow:
        target = 0;
        break;
    case Step::LastRow:
        target = rows - 1;
        break;
    }
    return std::clamp<RowCount>(target, 0, rows - 1);
}

} // namespace norvel::grid
