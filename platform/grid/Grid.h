// A grid over the recordset of a data control: headings, a filter bar, any number of rows.
#pragma once

#include "platform/controls/DataControl.h"
#include "platform/grid/layout/LayoutKeeper.h"
#include "platform/grid/model/Model.h"
#include "platform/grid/model/SelBookmarks.h"
#include "platform/grid/print/PrintInfo.h"

#include <wx/control.h>

#include <functional>
#include <memory>
#include <string>

namespace norvel::grid {

// The grid shows the rows of the recordset that a data control holds. Its current row is the
// recordset's current record: a click or a key moves the recordset, and a move made elsewhere moves
// the grid. To paint, it reads through a clone of its own and never moves the recordset.
//
// The mouse, in the data rows: a plain click makes the row current and clears the selection; a
// click on the record selector at the left edge selects the row alone (dragging on selects what it
// passes); Ctrl+click anywhere in a row selects it or takes it out; Shift+click selects from where
// the selection began (Ctrl+Shift+click adds to it); the corner above the selectors selects all
// rows. The keyboard: see KeyCommand in model/Navigation.h.
//
// Beside whole rows the cells of some columns can be selected: by dragging over them, by
// Shift+click in another column than the one where the selection began, by Shift and the keys that
// go sideways. Their rows are selected, too, so that choosing rows works with either. Whatever
// selects a row as such (record selector, Ctrl+click, Ctrl+A…) makes the selection whole rows.
// Ctrl+C copies the cells that are marked as text, in the order in which they are shown: TAB
// between cells, CR LF between rows, a text that holds one of these or a quotation mark in
// quotation marks. Of rows still arriving it copies those that are there.
//
// Where Split::AllowColMove says so, a heading dragged sideways moves its column: a mark shows
// where it lands, the view scrolls on at its edges, Esc leaves it where it was. A press that stays
// within the system's drag distance is a click.
//
// Where Split::AllowSizing says so, the edge of a heading sizes its column, frozen or not, and a
// double-click on it fits the column to its texts; without it no column of the split can be sized.
// Where Split::AllowRowSizing says so, the edge between two record selectors sets the height of all
// rows (GridStyle::RowHeight) once it is let go, and a double-click on it gives them back the
// height of the font; a row never gets lower than a line of text. Esc takes either back while it is
// being dragged.
//
// A text that is not seen whole, in a cell, a heading, the line or the box of a group, is shown as
// a tip while the mouse rests on it; scrolling, a key or a click hides it.
//
// In the filter bar (split 0): a click, F2, Shift+Tab or Up on the first row enters the cell; Tab
// and Shift+Tab move among the cells; Down leads back to the rows; Esc clears the cell, and leads
// back to the rows where it is empty; F4 and Alt+Down stand for the cell's button; Enter calls
// OnFilterEnter and nothing else. A cell whose text is no filter (Column::FilterError) is framed.
//
// Where AllowUpdate is on, a cell of a column that is not Locked is edited by typing over it, by F2
// (the caret behind its text) or by a second click on the current cell; F2 elsewhere still leads to
// the filter bar, and a double-click on a cell that can be edited chooses nothing. Esc takes back
// what was typed, then all changes of the row. Enter saves the row and stays; Up, Down and whatever
// else leads to another row, or out of the grid, saves it, too. Tab and Shift+Tab go to the next
// and the previous cell that can be edited, and from the row's last one to the next row's first. A
// check box is switched by a click on it or by the space bar. While a row has changes that are not
// saved, its record selector shows a pencil, and Enter in the rows saves them and does nothing
// else. Texts of several lines are edited in several lines; Ctrl+Enter breaks one there. Numbers,
// dates and Booleans are read by Italian conventions; nothing typed is Null, but of a text it is
// the empty text. What the type, the recordset or the database refuses stays in its cell with the
// caret in it, and a box says why. While a cell holds what is not taken over yet, nobody else can
// move the recordset or run it again (3712).
//
// A new filter empties the selection, since what an operator does not see must not be handed back;
// a new order keeps it. Requery and deleted rows empty it.
//
// In group view (GridStyle::DataView 2) a grouping area stands above the headings, and the rows are
// grouped by GridStyle::GroupColumns, groups within groups: above the rows of each group stands a
// line with its value and how many rows it has. Groups ascend by their values, whatever the
// recordset's Sort, which orders the rows within them; texts that differ in case alone are one
// group; Null and the empty text are groups of their own. All are closed when grouping begins; a
// group opens when the current record moves into it by an operator or a program, but not because of
// a new filter or a Requery. What is open stays open by its value. While rows are still arriving
// the groups are of those that came ("…" behind their counts), made anew now and then and when the
// last one is there. A group column whose field is not there waits for it. Grouped columns have no
// heading and no filter cell until the grouping ends; their filters stay.
//
// A heading dragged into the grouping area, whether or not AllowColMove is set, groups by its
// column; there its box is dragged to another place among the boxes, or out of the area, which ends
// the grouping: among the headings the column stands where it was let go if columns may be moved.
//
// The mouse, on the line of a group: a click on the sign opens or closes it, so does a double-click
// elsewhere; a click makes it the line of the keyboard, and on its record selector selects its
// rows, if it is closed. Selecting over the line of a closed group selects its rows. The keyboard:
// see groups/GroupKeys.h. The recordset never moves onto the line of a group, and nothing there
// calls OnDblClick, or OnKey for Enter.
//
// Row and column numbers count from 0. Rows are the lines under the headings: in group view the
// lines of groups count, and rows in closed groups do not. A column's number is its index in
// Columns(), wherever it is shown. Rectangles are logical pixels in the grid's client area, empty
// for what is not on show. The data control must outlive the grid or be unbound first. Callbacks
// may destroy the grid's window by Destroy().
class NR_API Grid : public wxControl {
  public:
    explicit Grid(wxWindow* parent);
    ~Grid() override;
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;

    // --- data ---
    // Null unbinds. While there are no columns, or only those that the grid made for itself, it
    // makes them anew for each recordset: one per field, width from type and the first rows.
    void SetDataSource(controls::DataControl* source);
    controls::DataControl* DataSource() const;
    // The current row of the recordset. Errore 3021 where there is none, 91 without a recordset.
    Variant Bookmark() const;
    void SetBookmark(const Variant& bookmark);
    grid::SelBookmarks& SelBookmarks();
    // What is selected: the rows SelBookmarks() holds, and of each the columns from SelStartCol to
    // SelEndCol (indexes in Columns(), whether or not they are shown; -1: nothing is selected).
    // Rows that were selected as such reach over all columns: 0 to Count() - 1. Where columns were
    // moved, the two are the least and the greatest index of the cells that are marked.
    bool HasSelectedArea();
    int SelStartCol();
    int SelEndCol();

    // The column's data type: its field's ADO type, but 10 for yes/no values: Booleans, and
    // integers of which all that have come are 0, -1 or Null (see model/DataTypeCode.h). Without a
    // field that is at hand: by the type that the column had last. Errore 3265 on a bad index.
    int DataTypeCode(int column);

    // --- look ---
    grid::Columns& Columns();
    // Splits stand side by side and share rows and columns; each scrolls sideways by itself and has
    // settings of its own, but the filter bar is split 0's: that one's FilterBar counts alone, and
    // so does its AllowRowSizing, since the record selectors stand at its left.
    int SplitCount() const;
    Split& SplitAt(int index); // Errore 9 on a bad index
    // Adds one at the right end, with the settings of the last one; returns its index. References
    // to splits hold until one is added or removed.
    int AddSplit();
    void RemoveSplit(int index); // Errore 9 on a bad index, 5 for the only one
    GridStyle& Style();
    // The layouts in files: loading one gives the grid its look, adding stores the look it has.
    LayoutKeeper& Layouts();
    // How the rows are printed, and the preview; see PrintInfo.
    grid::PrintInfo& PrintInfo();
    // After properties of columns, splits or the style were changed by code. Columns that show
    // other fields than those the grid made for itself count as loaded from then on: they stay when
    // the recordset is replaced. The grid's own stay, with what was changed, for as long as the
    // fields are the same.
    void Changed();

    // --- where things stand ---
    Area focusArea() const;
    adodb::RowCount RowsInView() const;    // at least partly
    adodb::RowCount FirstRow() const;      // the first row in view; rows count from 0
    void SetFirstRow(adodb::RowCount row); // scrolls there, as far as the rows reach
    // The line of the current record, or of the group that the keyboard is on, or of the closed
    // group that hides the record; -1: none.
    adodb::RowCount CurrentRow() const;
    adodb::RowCount LineCount() const;
    bool IsGroupRow(adodb::RowCount row) const;
    // What the line of a group says, "" of any other. Reads it when it is not at hand.
    std::string LineText(adodb::RowCount row);
    bool IsGroupOpen(adodb::RowCount row) const; // False of a line that is no group's
    void SetGroupOpen(adodb::RowCount row, bool open);
    void SetAllGroupsOpen(bool open);
    wxRect GroupRect(adodb::RowCount row) const; // empty for what is no group's line
    wxRect GroupSignRect(adodb::RowCount row) const;
    wxRect GroupAreaRect() const;          // empty where there is none
    wxRect GroupBoxRect(int column) const; // of a grouped column
    int CurrentColumn() const;             // -1: none
    void SetCurrentColumn(int column);     // scrolls it into view; one that is not shown is ignored
    int LeftColumn() const;                // the first column in view, -1: none
    // rowPosition: among the rows in view, 0 is FirstRow().
    // split: the one in which the rectangle is asked; Errore 9 on a bad one.
    wxRect CellRect(adodb::RowCount rowPosition, int column, int split = 0) const;
    wxRect FilterCellRect(int column) const;
    wxRect FilterButtonRect(int column) const; // empty without FilterCombo
    wxRect HeadingRect(int column, int split = 0) const;
    wxRect RecordSelectorRect(adodb::RowCount rowPosition) const;
    // What a cell shows; row: of all rows, from 0; "" on the line of a group. Reads it when it is
    // not at hand; what the recordset raises then.
    std::string CellText(adodb::RowCount row, int column);
    // Logical pixels to one pixel of 96 dpi: what turns twips into the grid's pixels.
    double Scale() const;

    // --- filter cells ---
    // Puts the caret into the column's filter cell; false when it has none.
    bool EnterFilterCell(int column);
    int FilterColumn() const; // the one being edited, -1: none
    // Sets a filter cell's text by code, without OnFilterChange.
    void SetFilterText(int column, const std::string& text);
    // Marks a filter cell with why its text is no filter; "": takes the mark off.
    void SetFilterError(int column, const std::string& reason);

    // Lets the operator move and size columns whatever the split allows, for a window in which the
    // layout itself is the matter.
    void SetColumnsFree(bool free);
    // --- editing ---
    // Whether operators may change cells, of the columns that are not Locked. Switching it off
    // saves what is being edited; false: that was refused, and it stays on.
    bool AllowUpdate() const;
    bool SetAllowUpdate(bool allow);
    // Saves the cell and the row that are being edited, as leaving the row does; false: the
    // operator was told why it was refused, and the caret is in the cell. True where nothing is
    // edited.
    bool EndEdit();

    // Sizes a column to its heading and the rows in view, as a double-click on its edge does.
    void FitColumn(int column);

    // --- callbacks ---
    std::function<void()> OnDblClick; // on a data row, after it became current
    // keyCode, modifiers: the toolkit's (WXK_…, wxMOD_…); asked before the grid's own handling;
    // true: handled.
    std::function<bool(int keyCode, int modifiers, Area area)> OnKey;
    std::function<void()> OnClick;                  // any click in the grid, after what it does
    std::function<void(int column)> OnHeadClick;    // not after a drag
    std::function<void(int column)> OnColumnMoved;  // by the operator: its Order is another one
    std::function<void(int column)> OnFilterChange; // at every change of the text by the operator
    std::function<void(int column)> OnFilterEnter;
    std::function<void(int column)> OnFilterLeave; // the caret has left the cell
    std::function<void(int column)> OnFilterButton;
    std::function<void()> OnRowChange; // the current row is another one
    // The operator grouped, ungrouped or put the groups into another order: Style().GroupColumns
    // has them, and the rows on show follow already. Not told of layouts and of code.
    std::function<void()> OnGroupColumnsChanged;
    // For each column that the grid makes for itself, before it is shown. It may set the column's
    // properties, and calls nothing of the grid.
    std::function<void(Column& made)> OnColumnMade;
    // Before an edited row is saved; false: not now, and nothing more is said.
    std::function<bool()> OnBeforeUpdate;
    std::function<void(int rows)> OnFirstPaint; // once: the first paint that showed data rows
    // A move or a change that was refused. Without it the grid shows the usual box.
    std::function<void(const Errore&)> OnError;

    bool AcceptsFocus() const override { return true; }
    bool SetFont(const wxFont& font) override; // rows and headings take their height from it

    class View; // the inside, in this folder's own files

  protected:
    wxSize DoGetBestClientSize() const override;
    void DoSetSize(int x, int y, int width, int height, int flags) override;

  private:
    std::unique_ptr<View> view_;
    std::unique_ptr<LayoutKeeper> layouts_;
    std::unique_ptr<grid::PrintInfo> printInfo_;
};

} // namespace norvel::grid
