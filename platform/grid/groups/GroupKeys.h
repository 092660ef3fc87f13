// What a key does where rows are grouped: without a window.
#pragma once

#include "platform/grid/model/Navigation.h"

namespace norvel::grid {

// | keys                          | on the line of a group                                    |
// |-------------------------------|-----------------------------------------------------------|
// | Enter                         | opens or closes it                                        |
// | Right, +                      | opens it; Right on an open one goes to the line below     |
// | Left, -                       | closes it; Left on a closed one goes to the group around  |
// | *, /                          | opens, closes all groups                                  |
//
// In the first cell of a row, Left goes to the line of its group. Anywhere, Ctrl+G groups by the
// current column, inside the groups that there are, and Ctrl+Shift+G ends the innermost grouping.
// Every other key does what it does on any row.
enum class GroupCommand {
    None,
    Toggle,
    Open,
    OpenOrEnter,
    Close,
    CloseOrLeave,
    OpenAll,
    CloseAll,
    ToGroup,
    GroupColumn,
    Ungroup
};

// onGroup: the keyboard is on the line of a group; firstCell: in the first cell of a row.
NR_API GroupCommand groupCommandFor(Stroke stroke, bool onGroup, bool firstCell);
// The key that stands for one of the signs + - * / that was typed, by whatever keys; else Other.
NR_API Key signOf(char32_t character);

} // namespace norvel::grid
