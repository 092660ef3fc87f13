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
    C,
    G,
    Multiply,
    Divide,
    Enter,
    Insert,
    F2,
    Escape,
    Tab,
    Plus,
    Minus,
    Zero
};

struct Stroke {
    Key key = Key::Other;
    bool shift = false;
    bool control = false;
    bool alt = false;
};

enum class Step { RowUp, RowDown, PageUp, PageDown, FirstRow, LastRow };
enum class Side { Left, Right, First, Last };
enum class Sizing { Larger, Smaller, Fit };

// | keys                                | what they do                                          |
// |-------------------------------------|-------------------------------------------------------|
// | Up, Down, PgUp, PgDn                | current row; the selection is cleared                 |
// | Ctrl+Home, Ctrl+End                 | first, last row; the selection is cleared             |
// | the same with Shift                 | select from where the selection began to there        |
// | Ctrl+Up, Ctrl+Down, Ctrl+PgUp/PgDn  | current row; the selection stays                      |
// | Left, Right                         | current cell                                          |
// | Home, End, Ctrl+Left, Ctrl+Right    | first, last cell of the row                           |
// | Ctrl+Shift+Left, Ctrl+Shift+Right   | moves the current column, where columns can be moved  |
// | Ctrl with +, -, 0                   | current column: wider, narrower, as its texts need;   |
// |                                     | where columns can be sized                            |
// | Alt with +, -, 0                    | rows: higher, lower, as the font needs; where rows    |
// |                                     | can be sized                                          |
// | Shift with Left, Right, Home, End   | selects cells from where the selection began to there |
// | Ctrl+A                              | select all rows                                       |
// | Ctrl+Space                          | select the current row, or take it out                |
// | Shift+Space                         | select the current row and nothing else               |
// | Ctrl+C, Ctrl+Insert                 | copies the selected cells, or the current one         |
// | Esc                                 | clears the selection, if there is one                 |
// | F2, Shift+Tab, Up on the first row  | to the filter cell of the current column              |
// | Tab                                 | to the next control                                   |
//
// A selection is whole rows as long as Shift goes up and down only, so that choosing rows never
// depends on the current column. Once Shift goes sideways it is the cells between the one where it
// began and the current one, and stays cells wherever Shift leads from there; the rows of cells
// that are selected are selected, too. A key that clears the selection, or selects rows as such,
// ends that. Left and Right leave selected rows as they are, but clear selected cells.
struct KeyCommand {
    enum class Kind {
        None,
        MoveRow,
        MoveCell,
        MoveColumn,
        SizeColumn,
        SizeRows,
        SelectAll,
        ToggleRow,
        SelectRow,
        Copy,
        ClearSelection,
        EnterFilter,
        NextControl
    };
    Kind kind = Kind::None;
    Step step = Step::RowUp;     // MoveRow
    Side side = Side::Left;      // MoveCell; MoveColumn: Left, Right
    Sizing sizing = Sizing::Fit; // SizeColumn, SizeRows
    bool extend = false;         // MoveRow, MoveCell: the selection reaches to the row, the cell
    bool keepSelection = false;  // MoveRow
};

NR_API KeyCommand commandFor(Stroke stroke);

// The row that a step leads to; current: -1 before the first row, rows behind the last one; page:
// how many rows a page moves. -1 when there are no rows.
NR_API adodb::RowCount targetRow(Step step, adodb::RowCount current, adodb::RowCount rows,
                                 adodb::RowCount page);

} // namespace norvel::grid
