// The grid without its window: what hosts set, columns and splits. Geometry in twips. Names are
// those that hosts of such a grid know (Column::DataField, Split::AllowColMove).
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Text.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::grid {

enum class Alignment { General, Left, Center, Right };

// Where the keyboard is: in the data rows, in a filter cell, in a data cell being edited.
enum class Area { Data, FilterCell, CellEdit };

// An image of width times height pixels, red, green, blue, from the top left.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgb;
};

// How a heading looks beside its text.
struct HeadingStyle {
    std::shared_ptr<const Picture> ForegroundPicture;
    int ForegroundPicturePosition = 0;         // 1: shown at the right edge; any other: hidden
    bool TransparentForegroundPicture = false; // what has the colour of the top left pixel
};

// How a column's values are shown instead of what they are.
struct ValueItems {
    bool Translate = false;
    int Presentation = 0; // 4: a check box, where Translate is set; any other: as text
    bool operator==(const ValueItems&) const = default;
};
inline constexpr int presentationNormal = 0;
inline constexpr int presentationCheckBox = 4;

// A column. Its index in the collection is constant; Order is where it is shown.
struct Column {
    std::string DataField;
    std::string Caption;
    double Width = 1440; // twips
    int Order = 0;
    bool Visible = true;
    bool Grouped = false; // shown as groups of rows instead of a column; the grid's own matter
    Alignment Align = Alignment::General; // General: by the field's type
    adodb::DataTypeEnum DataType = adodb::adVarWChar;
    bool FilterCombo = false; // shows a drop-down list of values in the filter cell
    std::string FilterText;   // what stands in the filter cell
    std::string FilterError;  // why that is no filter: the cell is marked and says it as its tip
    HeadingStyle Heading;
    grid::ValueItems ValueItems;
    bool Locked = true; // not to be edited, even where the grid allows updates

    bool IsShown() const { return Visible && !Grouped; } // as a column
};

struct Style {
    std::uint32_t BackColor; // 0x00BBGGRR
    bool operator==(const Style&) const = default;
};

inline constexpr Style defaultEvenRowStyle{0x00F7F1EB};
inline constexpr Style defaultOddRowStyle{0x00FFFFFF};

struct Split {
    bool FilterBar = true;
    bool AllowSizing = true;
    bool AllowRowSizing = false;
    bool AllowColMove = false;
    bool AlternatingRowStyle = false;
    Style EvenRowStyle = defaultEvenRowStyle;
    Style OddRowStyle = defaultOddRowStyle;
    // Of those shown, from the left: they never scroll away. Where they would leave the others less
    // than a quarter of the split's width, only as many as do not.
    int FrozenColumns = 0;
    bool operator==(const Split&) const = default;
};

struct FontStyle {
    std::string Name; // "": the window's own
    double Size = 0;  // points; 0: the window's own
    bool Bold = false;
    bool Italic = false;
    bool operator==(const FontStyle&) const = default;
};

inline constexpr int dataViewNormal = 0;
inline constexpr int dataViewGroups = 2; // with a grouping area

inline constexpr int marqueeCell = 1; // the current cell alone is framed
inline constexpr int marqueeRow = 2;  // its row is highlighted, too

// What holds for the whole grid.
struct GridStyle {
    int MarqueeStyle = marqueeRow;
    int DataView = 0;     // 0: plain, 2: with a grouping area
    double RowHeight = 0; // twips; 0: from the font
    FontStyle Font;
    std::vector<std::string> GroupColumns; // fields, outermost first
    bool operator==(const GridStyle&) const = default;
};

class NR_API Columns {
  public:
    int Count() const { return static_cast<int>(items_.size()); }
    // By index; Errore 3265 on a bad index.
    Column& Item(int index);
    const Column& Item(int index) const;
    int IndexOf(std::string_view dataField) const; // case-blind; -1 on a miss
    void Clear() { items_.clear(); }
    void Add(Column column);
    // The indexes of the visible columns from left to right: by Order, equals by index.
    std::vector<int> Shown() const;
    // The same without those that are shown as groups.
    std::vector<int> Ungrouped() const;
    // The same with those that are hidden.
    std::vector<int> InOrder() const;

  private:
    std::vector<Column> items_;
};

// General alignment resolved by the type of the field: numbers right, dates, Booleans and check
// boxes centred, everything else left.
NR_API Alignment alignmentOf(const Column& column);
NR_API bool isIntegerType(adodb::DataTypeEnum type);
NR_API bool isNumberType(adodb::DataTypeEnum type);
NR_API bool isDateType(adodb::DataTypeEnum type);
NR_API bool isBinaryType(adodb::DataTypeEnum type);

} // namespace norvel::grid
