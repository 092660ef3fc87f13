// How a grid looks, apart from what it shows: what a layout file keeps.
#pragma once

#include "platform/grid/model/Model.h"

#include <string>
#include <vector>

namespace norvel::grid {

struct LayoutColumn {
    std::string DataField;
    std::string Caption;
    double Width = 1440; // twips
    int Order = 0;
    bool Visible = true;
    bool Translate = false; // its ValueItems
    int Presentation = 0;
    bool operator==(const LayoutColumn&) const = default;
};

struct LayoutFont {
    std::string Name; // "": the window's own
    double Size = 0;  // points; 0: the window's own
    bool Bold = false;
    bool Italic = false;
    bool operator==(const LayoutFont&) const = default;
};

struct Layout {
    // Of split 0
    bool FilterBar = true;
    bool AllowSizing = true;
    bool AllowRowSizing = false;
    bool AllowColMove = false;
    bool AlternatingRowStyle = false;
    std::uint32_t EvenRowBackColor = defaultEvenRowStyle.BackColor; // 0x00BBGGRR
    std::uint32_t OddRowBackColor = defaultOddRowStyle.BackColor;
    int FrozenColumns = 0; // shown first, never scrolled away
    // Of the grid
    int MarqueeStyle = 2; // 1: the current cell is framed, 2: the current row is highlighted
    int DataView = 0;     // 0 plain, 2 with a grouping area
    double RowHeight = 0; // twips; 0: from the font
    LayoutFont Font;
    std::vector<std::string> GroupColumns; // fields, outermost first
    std::vector<LayoutColumn> Columns;
    bool operator==(const Layout&) const = default;
};

} // namespace norvel::grid
