// What a key does in the data rows, and where a move ends: without a window.
#pragma once

#include "platform/adodb/Recordset.h"

namespace norvel::grid {

enum class Key {
    Other,
    Up,
    Down,
    Left,
    Right,
    PageUp,
    PageDown,
    Home,
    End,
    Space,
    A,
    F2,
    Escape,
    Tab
};

struct Stroke {
    Key key = Key::Other;
    bool shift = false;
    bool control = false;
};

enum class Step { RowUp, RowDown, PageUp, PageDown, FirstRow, LastRow };
enum class Side { Left, Right, First, Last };

// | keys                                | what they do                                          |
// |-------------------------------------|-------------------------------------------------------|
// | Up, Down, PgUp, PgDn                | current row; the selection is cleared                 |
// | Ctrl+Home, Ctrl+End                 | first, last row; the selection is cleared             |
// | the same with Shift                 | select from where the selection began to there        |
// | Ctrl+Up, Ctrl+Down, Ctrl+PgUp/PgDn  | current row; the selection stays                      |
// | Left, Right                         | current cell                                          |
// | Home, End, Ctrl+Left, Ctrl+Right    | first, last cell of the row                           |
// | Ctrl+Shift+Left, Ctrl+Shift+Right   | moves the current column, where columns can be moved  |
// | Ctrl+A                              | select all rows                                       |
// | Ctrl+Space                          | select the current row, or take it out                |
// | Shift+Space                         | select the current row and nothing else               |
// | Esc                                 | clears the selection, if there is one                 |
// | F2, Shift+Tab, Up on the first row  | to the filter cell of the current column              |
// | Tab                                 | to the next control                                   |
struct KeyCommand {
    enum class Kind {
        None,
        MoveRow,
        MoveCell,
        MoveColumn,
        SelectAll,
        ToggleRow,
        SelectRow,
        ClearSelection,
        EnterFilter,
        NextControl
    };
    Kind kind = Kind::None;
    Step step = Step::RowUp;    // MoveRow
    Side side = Side::Left;     // MoveCell; MoveColumn: Left, Right
    bool extend = false;        // MoveRow: the selection reaches to the row
    bool keepSelection = false; // MoveRow
};

NR_API KeyCommand commandFor(Stroke stroke);

// The row that a step leads to; current: -1 before the first row, rows behind the last one; page:
// how many rows a page moves. -1 when there are no rows.
NR_API adodb::RowCount targetRow(Step step, adodb::RowCount current, adodb::RowCount rows,
                                 adodb::RowCount page);

} // namespace norvel::grid
