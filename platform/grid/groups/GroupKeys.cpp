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

// Some keyboards have + and * with Shift.
GroupCommand groupCommandFor(Stroke stroke, bool onGroup, bool firstCell) {
    if (stroke.alt) return GroupCommand::None;
    if (stroke.control && stroke.key == Key::G)
        return stroke.shift ? GroupCommand::Ungroup : GroupCommand::GroupColumn;
    const bool sign =
        stroke.key == Key::Plus || stroke.key == Key::Multiply || stroke.key == Key::Divide;
    if (stroke.control || (stroke.shift && !sign)) return GroupCommand::None;
    if (onGroup) return onGroupLine(stroke.key);
    return stroke.key == Key::Left && firstCell ? GroupCommand::ToGroup : GroupCommand::None;
}

} // namespace norvel::grid
