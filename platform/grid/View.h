// The inside of the grid: state, binding, input and painting, split by task over View*.cpp.
#pragma once

#include "platform/grid/CellEditor.h"
#include "platform/grid/Frame.h"
#include "platform/grid/Grid.h"
#include "platform/grid/HeadingPicture.h"
#include "platform/grid/Palette.h"
#include "platform/grid/TextPainter.h"
#include "platform/grid/groups/Lines.h"
#include "platform/grid/model/CellArea.h"
#include "platform/grid/model/CheckBox.h"
#include "platform/grid/model/ColumnDrag.h"
#include "platform/grid/model/Geometry.h"
#include "platform/grid/model/Navigation.h"
#include "platform/grid/model/RowCache.h"
#include "platform/grid/model/RowEdit.h"
#include "platform/grid/model/RowReader.h"
#include "platform/grid/model/RowSizing.h"
#include "platform/grid/model/TextRoom.h"

#include <wx/dcclient.h>
#include <wx/scrolbar.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include <chrono>
#include <optional>

namespace norvel::grid {

inline constexpr double markTwips = 30; // the frame of a marked filter cell

// A row, here, is a line on show (Rows(), current_, what Geometry counts): where rows are grouped
// the lines of groups are among them. What the reader, the cache and the selection count are the
// rows of the recordset in the order on show; lines_ leads from one to the other.
class Grid::View : public controls::DataControl::Observer {
  public:
    explicit View(Grid& grid);
    ~View() override;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    // --- binding (ViewBinding.cpp) ---
    void Bind(controls::DataControl* source);
    controls::DataControl* Source() const { return source_; }
    adodb::Recordset& Host() const; // Errore 91 without one
    // The reader of the view on show, made anew if what was there no longer holds; null without
    // data.
    RowReader* Reader();
    adodb::RowCount Rows() const { return geometry_.Rows(); }
    void ColumnsChanged();
    std::string Text(adodb::RowCount row, int column);
    int DataTypeCode(int column);
    void Fill(adodb::RowCount first, adodb::RowCount count, const std::vector<int>& columns);

    // DataControl::Observer
    void RecordsetReplaced() override;
    void WillMove(adodb::EventReasonEnum, adodb::EventStatusEnum& status,
                  adodb::Recordset&) override;
    void WillChangeRecordset(adodb::EventReasonEnum, adodb::EventStatusEnum& status,
                             adodb::Recordset&) override;
    void MoveComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                      adodb::Recordset&) override;
    void RecordChangeComplete(adodb::EventReasonEnum, int, const Errore*, adodb::EventStatusEnum,
                              adodb::Recordset&) override;
    void FieldChangeComplete(int, const std::vector<adodb::Field*>&, const Errore*,
                             adodb::EventStatusEnum, adodb::Recordset&) override;
    void RecordsetChangeComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                                 adodb::Recordset&) override;
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;
    void ViewChanged(adodb::Recordset&) override;

    // --- layout and scrolling (ViewScroll.cpp) ---
    void Layout();
    void ScrollTo(Pixels x, Pixels y);
    void ShowCell(adodb::RowCount row, int column);
    double Scale() const;
    Geometry& Places() { return geometry_; }
    void FontChanged();
    int DefaultHeight() const { return rowHeight() * 12; }

    // --- rows and cells (ViewKeys.cpp) ---
    adodb::RowCount CurrentRow() const { return current_; }
    int CurrentColumn() const { return currentColumn_; }
    void SetCurrentColumn(int column);
    // Makes the row the recordset's current record; a refusal is reported. False then. On the line
    // of a group the keyboard goes, and the recordset stays.
    bool MoveTo(adodb::RowCount row);
    bool HandleKey(wxKeyEvent& event); // false: not handled

    // --- selected area (ViewArea.cpp) ---
    bool HasArea();
    CellArea::Range AreaColumns(); // {-1, -1}: nothing is selected

    // --- editing cells (ViewEdit.cpp, ViewEditKeys.cpp) ---
    bool AllowUpdate() const { return allowUpdate_; }
    bool SetAllowUpdate(bool allow);
    bool BeginEdit(int column, CellEditor::Caret caret);
    bool EndEdit();

    // --- filter bar (ViewFilterBar.cpp) ---
    bool EnterFilter(int column, bool selectAll);
    void LeaveFilter(bool toRows);
    int FilterColumn() const { return filterColumn_; }
    Area FocusArea() const;
    void SetFilterText(int column, const std::string& text);
    void SetFilterError(int column, const std::string& reason);

    void FitColumn(int column);
    void SetColumnsFree(bool free);
    void Refresh();
    grid::Columns& TheColumns() { return columns_; }
    GridStyle& TheStyle() { return style_; }

    // --- splits (ViewSplits.cpp) ---
    int SplitCount() const { return static_cast<int>(splits_.size()); }
    Split& SplitAt(int index);
    int AddSplit();
    void RemoveSplit(int index);

    // --- groups (ViewGroups.cpp, ViewGroupLines.cpp) ---
    bool IsGroup(adodb::RowCount row) const;
    bool IsGroupOpen(adodb::RowCount row) const;
    void SetOpen(adodb::RowCount row, bool open);
    void SetAllOpen(bool open);
    std::string GroupText(adodb::RowCount row);
    wxRect GroupSign(adodb::RowCount row) const;
    wxRect GroupBox(adodb::RowCount row) const;

    // --- look as a whole (ViewLook.cpp) ---
    grid::Layout TakeLayout() const;
    void ApplyLayout(const grid::Layout& layout);
    void StyleChanged();
    grid::SelBookmarks& Selection() { return selection_; }

  private:
    struct RowSpan { // [first, last)
        adodb::RowCount first, last;
    };
    // binding
    bool makeColumns();
    void remapColumns();
    void keepCurrentColumn();
    bool fetching() const; // rows are still coming
    // Takes over the host's current record. Moved: it is another one; where a closed group hides it
    // the group opens, and it comes into view. Anew: the lines are others, and the keyboard stays
    // on the group where it was. Quiet: the same without scrolling.
    enum class Sync { Moved, Anew, Quiet };
    void syncCurrent(Sync sync);
    adodb::RowCount hostsRecord();
    void setCurrent(adodb::RowCount row);
    void rowsChanged(Sync sync = Sync::Anew);
    void rowsArrived(bool atOnce);
    bool ownColumns() const;
    adodb::RowCount readableRows();
    void giveUpReading(const Errore& error);
    bool isSelected(adodb::RowCount row) const;
    // -1: the column shows none, or was added and not told of yet (Grid::Changed).
    int fieldOf(int column) const;
    // The recordset's row on a line, -1: a group's line.
    adodb::RowCount recordOn(adodb::RowCount row) const;
    // What the cell shows, as far as it is at hand: null.
    const std::string* cellAt(adodb::RowCount row, int column) const;
    double textTwips(std::string_view text);
    double cellMarginTwips() const;
    double cellFrameTwips() const;

    // groups (ViewGroups.cpp, ViewGroupLines.cpp)
    std::vector<int> groupColumns() const;
    void groupRows();
    Lines::ValueOf groupValues();
    GroupPath pathOf(const Line& line);
    void regroup();
    void regroupIfOthers();
    bool regroupArrived(bool last);
    void setGroupColumns(std::vector<std::string> fields);
    void groupBy(int column, int place);
    void ungroup(int column);
    bool onGroup() const;
    bool isClosedGroupSelected(adodb::RowCount row) const;
    void toggle(adodb::RowCount row);
    void reveal(adodb::RowCount record);
    void linesChanged(Sync sync);
    // Which line it is, whatever stands above it: a row's bookmark or a group's values.
    struct LineMark {
        Variant bookmark;
        GroupPath group;
    };
    LineMark markOf(adodb::RowCount row);
    adodb::RowCount lineOf(const LineMark& mark); // -1: it is not there
    void regroupInPlace();
    void stepOnGroup(adodb::RowCount row);
    void toParent();
    bool runGroupCommand(Stroke stroke);
    void fillGroupLines(adodb::RowCount first, adodb::RowCount count);
    std::string groupLineText(adodb::RowCount row);
    wxRect groupTextBox(adodb::RowCount row) const;
    wxRect boxTextBox(int column) const;
    void paintGroupLines(wxDC& dc, adodb::RowCount first, adodb::RowCount last);
    void arrangeGroupBoxes();
    void paintGroupArea(wxDC& dc);
    void paintGroupBox(wxDC& dc, const GroupBoxes::Box& box);
    ColumnDrop landing() const;
    void dropBox(int column, const ColumnDrop& drop);
    bool pressGroup(const Hit& hit, const wxMouseEvent& event);

    // scrolling
    void makeScrollBars();
    void scrolled(); // after a position changed
    wxScrollBar* makeScrollBar(bool vertical);
    void onScrollBar(const wxScrollEvent& event);
    ScrollAxis& axisOf(const wxScrollBar* bar);
    std::vector<Split> splitsAsUsed() const;
    void placeScrollBars();
    void onWheel(wxMouseEvent& event);
    void updateScrollBars();
    void placeEditor();
    Measures measures() const;
    int rowHeight() const;
    int fontRowHeight() const;
    int pixels(double twips) const;

    // mouse (ViewMouse.cpp)
    enum class Drag { None, Heading, Sizing, RowSizing, Rows, Cells };
    void bindMouse();
    void onLeftDown(wxMouseEvent& event);
    void press(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onDoubleClick(wxMouseEvent& event);
    void endDrag();
    void pressRow(const Hit& hit, const wxMouseEvent& event);
    void pressHeadings(const Hit& hit, const wxPoint& at);
    void dragRowsTo(int y);
    void autoScroll();
    void cancelDrag();
    void endColumnDrag();
    adodb::RowCount rowUnder(int y) const;
    bool inData(const wxPoint& at) const;
    void scrollOutside(bool outside);
    bool mayMoveColumns(int split) const;
    void updatePointer(const wxPoint& at);
    void setHotColumn(int column);
    Hit hitAt(const wxPoint& at) const;

    // sizing columns and rows (ViewSizing.cpp)
    void pressEdge(const Hit& hit, const wxPoint& at);
    void sizeColumn(int x);
    void setColumnWidth(int column, double twips);
    void sizeCurrentColumn(Sizing sizing);
    void sizeRows(Sizing sizing);
    void dropRowEdge();
    void setRowHeight(double twips);
    RowHeights rowHeights() const;
    double draggedRowHeight() const;
    void paintRowSizing(wxDC& dc);

    // tips (ViewTips.cpp)
    struct Words { // a text as it is painted
        std::string text;
        wxRect box;
        Alignment align = Alignment::Left;
        Span pane; // what is seen of the box
    };
    void showTip(const Hit& hit);
    void hideTip();
    Words wordsAt(const Hit& hit);
    bool isCut(const Words& words);

    // columns on their way to another place (ViewColumnMove.cpp)
    void pressHeading(const Hit& hit, const wxPoint& at);
    void dragHeadingTo(const wxPoint& at);
    void scrollWithHeading();
    void dropHeading();
    void moveColumnBy(Side side);
    void columnMoved(int column);
    Rect draggedFrom(int column) const;
    void paintColumnDrag(wxDC& dc);
    void paintDropMark(wxDC& dc);

    // keyboard
    void bindKeys();
    bool keyWhileDragging(const wxKeyEvent& event);
    static Stroke strokeOf(const wxKeyEvent& event);
    void run(const KeyCommand& command);
    void moveRow(const KeyCommand& command);
    void moveTo(adodb::RowCount row, const Line& line);
    bool reach(adodb::RowCount row);
    void moveCell(const KeyCommand& command);
    bool filterKey(wxKeyEvent& event);
    void nextFilterCell(bool forward);

    // selected area (ViewArea.cpp)
    void selectTo(adodb::RowCount row, bool add);
    void selectCells(adodb::RowCount row, int begin, int end);
    void selectAll();
    void selectRow(adodb::RowCount row);
    void toggleRow(adodb::RowCount row);
    void extendTo(adodb::RowCount row);
    void cellMoved(bool extend, int from);
    void shiftClick(const Hit& hit, int fromColumn, bool add);
    bool cellDragBegins(bool held);
    void dragCellsTo(const wxPoint& at);
    int columnUnder(const wxPoint& at) const;
    bool isAreaCell(adodb::RowCount row, int column) const;
    void paintArea(wxDC& dc, const Geometry::Pane& pane, RowSpan rows);
    void copyArea();

    // editing cells (ViewEdit.cpp)
    void bindEditing();
    bool canEdit(int column) const;
    void requireUpdatable(int column);
    adodb::Field& fieldAt(int column) const;
    void enterCell(int column);
    bool halfTyped() const;
    bool takeCell();
    bool leaveCell();
    void undoTaken();
    void undoCell();
    void undoRow();
    void forgetEdit();
    void refuse(const Errore& error);
    void rowSettled(adodb::EventReasonEnum reason);
    adodb::RowCount rowOnceSaved(adodb::RowCount row);
    bool isCheckBox(int column);
    void switchCheckBox(int column);
    wxRect editedCell() const;
    void placeCellEditor();
    void paintEditedCell(wxDC& dc);
    // its keys and clicks (ViewEditKeys.cpp)
    bool rowEditKey(const wxKeyEvent& event);
    bool editorKey(const wxKeyEvent& event);
    bool editorMove(const wxKeyEvent& event);
    bool typed(const wxKeyEvent& event);
    bool editNext(bool forward);
    adodb::RowCount rowBeyond(adodb::RowCount row, int step) const;
    bool settlePress(const Hit& hit);
    void pressEditable(const Hit& hit, const wxPoint& at, bool wasCurrent);

    // filter bar
    bool hasFilterCell(int column) const;
    void loseFilterCell();
    void makeEditor();
    void onEditorText();
    void onEditorFocusLost();
    void showEditorError();

    // painting (ViewPaint.cpp, ViewPaintBars.cpp)
    void onPaint();
    void tellFirstPaint();
    void prepareRows();
    struct RowLook {
        wxColour back, text;
    };
    RowLook lookOf(adodb::RowCount row, const Split& split, bool focused);
    void paintRows(wxDC& dc, const wxRect& dirty);
    void paintPane(wxDC& dc, const Geometry::Pane& pane, RowSpan rows);
    void paintRowBacks(wxDC& dc, const Geometry::Pane& pane, RowSpan rows);
    void paintLines(wxDC& dc, const Geometry::Pane& pane, RowSpan rows);
    void paintTexts(wxDC& dc, const Geometry::Pane& pane, RowSpan rows);
    void paintBorders(wxDC& dc);
    void paintFrozenBorder(wxDC& dc, int x, int thick);
    void paintFocus(wxDC& dc);
    // Check boxes (ViewCheckBoxes.cpp)
    struct CheckBox {
        wxRect box;
        bool checked = false;
    };
    wxRect checkBoxIn(const wxRect& cell) const;
    bool takesCheckBox(std::string_view text, const wxRect& cell,
                       std::vector<CheckBox>& boxes) const;
    void paintCheckBoxes(wxDC& dc, const Geometry::Pane& pane, const std::vector<CheckBox>& boxes);
    void paintSelectors(wxDC& dc, const wxRect& dirty);
    void paintHeadings(wxDC& dc);
    void paintHeading(wxDC& dc, int place);
    wxRect pictureBox(const Column& column, const wxRect& room) const;
    wxRect headingRoom(int place) const;
    wxRect textBox(const Rect& cell) const;
    wxRect headingTextBox(int place) const;
    wxRect filterTextBox(int column) const;
    void paintFilterBar(wxDC& dc);
    void paintFilterTexts(wxDC& dc, const Geometry::Pane& pane);
    void paintFilterCell(wxDC& dc, int index);
    void paintFilterButton(wxDC& dc, const wxRect& box);
    void paintScrollCorner(wxDC& dc);
    void paintMessage(wxDC& dc, const std::string& message);
    bool focused() const;
    void refreshRow(adodb::RowCount row);
    void report(const Errore& error);
    // Runs a handler of the toolkit's: an Errore must not pass through the toolkit.
    template <class Handler>
    void guarded(Handler handler) {
        try {
            handler();
        } catch (const Errore& error) {
            report(error);
        }
    }

    Grid& grid_;
    grid::Columns columns_;
    std::vector<Split> splits_ = std::vector<Split>(1);
    GridStyle style_;
    std::vector<LayoutColumn> layoutColumns_; // of the layout applied last
    std::vector<LayoutColumn> dormant_;       // those whose fields are not there
    bool columnsFree_ = false;                // to be moved and sized by the operator
    wxFont ownFont_;                          // before any style's
    grid::SelBookmarks selection_;
    CellArea area_; // what of the selected rows is selected
    Geometry geometry_;
    Palette palette_;
    std::unique_ptr<TextPainter> painter_;
    HeadingPicture headingPicture_;

    controls::DataControl* source_ = nullptr;
    std::shared_ptr<RowReader> reader_;
    bool readerStale_ = true;
    RowCache cache_;
    Lines lines_;
    std::vector<int> groups_; // the columns that the rows are grouped by, outermost first
    Expansion expansion_;
    std::string groupError_; // why the rows are not grouped
    std::chrono::steady_clock::time_point lastGrouping_;
    std::vector<int> fieldOf_; // the recordset's field of each column, -1: none
    // The field names that fieldOf_ was looked up for.
    std::vector<std::string> mappedNames_;
    std::vector<std::string> madeFor_; // the fields that the grid's own columns were made for
    bool widthsSampled_ = false;       // the own columns' widths were taken from rows
    std::string openError_;            // why there is no reader; shown in the rows' place
    std::string readError_;            // why what is in view could not be read; likewise
    std::chrono::steady_clock::time_point lastArrival_;

    adodb::RowCount record_ = -1;    // the host's current record, as the reader counts; -1: none
    adodb::RowCount current_ = -1;   // its line, or the line of a group that the keyboard is on
    GroupPath groupAt_;              // that group's, where the keyboard went there; else empty
    adodb::RowCount lastPlace_ = -1; // current_, or -1 at BOF, the number of rows at EOF
    adodb::RowCount anchor_ = -1;    // where a selection with Shift begins
    int currentColumn_ = -1;
    int currentSplit_ = 0; // the one in which the current cell is framed
    bool firstPainted_ = false;
    bool repaintAsked_ = false; // of the whole grid, and not painted yet
    bool barsStale_ = false;    // the scroll bars show an older position

    wxScrollBar* vertical_ = nullptr;
    std::vector<wxScrollBar*> horizontal_; // of each split
    WheelSteps wheelY_, wheelX_;
    int textHeight_ = 0;

    struct Edited {
        int column = -1;                  // the cell entered last
        std::optional<std::string> taken; // of its text, what the recordset holds already
    };
    bool allowUpdate_ = false;
    CellEditor cellEditor_;
    RowEdit rowEdit_;
    Edited edited_;
    bool settling_ = false;       // a box or a wait is open: nothing is taken over now
    bool opensOnRelease_ = false; // the pressed cell is to be edited

    // The field goes with the grid's window, which is later than this: its last events find no one.
    std::shared_ptr<int> life_ = std::make_shared<int>();
    wxWindow* editorFrame_ = nullptr;
    wxTextCtrl* editor_ = nullptr;
    int hotColumn_ = -1; // the heading under the mouse
    int filterColumn_ = -1;

    Drag drag_ = Drag::None;
    bool pressed_ = false;   // a click began in the grid
    int pressedColumn_ = -1; // in a cell of this column: the mouse selects once it leaves the cell
    ColumnDrag columnDrag_;  // of Drag::Heading
    int dragSplit_ = 0;      // the one that it began in
    int dragGrab_ = 0;       // how far right of the heading's left edge it was taken hold of
    int dragColumn_ = -1;    // the one being sized
    adodb::RowCount dragRow_ = -1; // likewise
    int dragStart_ = 0;
    double dragWidth_ = 0; // twips; what Esc gives back
    int dragPixels_ = 0;   // the same as it was seen
    bool dragAdds_ = false;
    adodb::RowCount clickedRow_ = -1; // of the last first click, for the double-click
    wxTimer autoScroll_, arrivals_;
    wxPoint pointer_;
    std::string tip_;
    wxStockCursor pointerShape_ = wxCURSOR_DEFAULT;
};

} // namespace norvel::grid
