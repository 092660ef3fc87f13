#include "platform/grid/groups/GroupKeys.h"

namespace norvel::grid {

namespace {

GroupCommand onGroupLine(Key key) {
    switch (key) {
    case Key::Enter:
        return GroupCommand::Toggle;
    case Key::Plus:
        return GroupCommand::Open;
    case Key::Right:
        return GroupCommand::OpenOrEnter;
    case Key::Minus:
        return GroupCommand::Close;
    case Key::Left:
        return GroupCommand::CloseOrLeave;
    case Key::Multiply:
        return GroupCommand::OpenAll;
    case Key::Divide:
        return GroupCommand::CloseAll;
    default:
        return GroupCommand::None;
    }
}

} // namespace

// With Shift a key means the sign that it types then, which comes as a character: on some keyboards
// the key of + types *, and on others that of = types +.
GroupCommand groupCommandFor(Stroke stroke, bool onGroup, bool firstCell) {
    if (stroke.alt) return GroupCommand::None;
    if (stroke.control && stroke.key == Key::G)
        return stroke.shift ? GroupCommand::Ungroup : GroupCommand::GroupColumn;
    if (stroke.control || stroke.shift) return GroupCommand::None;
    if (onGroup) return onGroupLine(stroke.key);
    return stroke.key == Key::Left && firstCell ? GroupCommand::ToGroup : GroupCommand::None;
}

Key signOf(char32_t character) {
    switch (character) {
    case '+':
        return Key::Plus;
    case '-':
        return Key::Minus;
    case '*':
        return Key::Multiply;
    case '/':
        return Key::Divide;
    default:
        return Key::Other;
    }
}

} // namespace norvel::grid
