// What stands on one page, as shapes and texts in twips: everything is decided here, so that the
// preview at any zoom and the paper show the same.
#pragma once

#include "platform/grid/export/ExportTable.h"
#include "platform/grid/print/PageLayout.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::grid {

// The fonts of a page: cells and headings, page header, page footer.
enum class PageFont { Cell, Header, Footer };
inline constexpr std::size_t pageFonts = 3;

// What decides about texts: their widths and the height of a line, twips.
struct PageTextSizes {
    std::function<double(PageFont font, std::string_view text)> width;
    std::array<double, pageFonts> lineHeight{};
};

struct PageColumn {
    std::string caption;
    Alignment align = Alignment::Left; // never General
    adodb::DataTypeEnum type = adodb::adVarWChar;
    double width = 1440; // twips
    bool checkBox = false;
};

// What is printed, apart from the rows.
struct PrintTable {
    PrintSettings settings;
    std::vector<PageColumn> columns;
    bool stripes = false;                                    // alternating rows
    std::uint32_t evenRow = 0x00FFFFFF, oddRow = 0x00FFFFFF; // their backgrounds, 0x00BBGGRR
    double rowHeight = 0;                                    // 0: from the font
};

// The table of a grid: columns as an export has them, with the grid's check boxes and stripes.
NR_API PrintTable printTable(const ExportTable& table, const Split& split, const GridStyle& style,
                             const PrintSettings& settings);
NR_API PageHeights pageHeights(const PrintTable& table, const PageTextSizes& sizes);
NR_API PageLayout pageLayout(const PrintTable& table, const PageTextSizes& sizes,
                             adodb::RowCount rows);

struct PageFill {
    Box box;
    std::uint32_t colour = 0; // 0x00BBGGRR
    bool operator==(const PageFill&) const = default;
};
// One line of text, cut to fit: centred vertically in its box, aligned horizontally.
struct PageText {
    std::string text;
    Box box;
    Alignment align = Alignment::Left;
    PageFont font = PageFont::Cell;
    bool operator==(const PageText&) const = default;
};
struct PageCheck { // a check box
    Box box;
    bool checked = false;
    bool operator==(const PageCheck&) const = default;
};
struct PageLine { // thin, from its beginning to the right or downwards
    double x = 0, y = 0, length = 0;
    bool across = true;
    bool operator==(const PageLine&) const = default;
};

// Painted in this order.
struct PageContents {
    std::vector<PageFill> fills;
    std::vector<PageLine> lines;
    std::vector<PageText> texts;
    std::vector<PageCheck> checks;
};

// The contents of a page, from 1. rows: those of the page's place, values[column of the
// table][row]. Texts that are too long end with "…"; numbers and dates, whose beginning would be a
// wrong value, become "#". Check boxes stand as in the grid (CheckBox.h).
NR_API PageContents pageContents(const PrintTable& table, const PageLayout& layout,
                                 adodb::RowCount page, const adodb::RowBlock& rows,
                                 const PageTextSizes& sizes);

// A row's background as it is printed: light enough for black texts and for the printer's ink.
NR_API std::uint32_t printedColour(std::uint32_t colour);

} // namespace norvel::grid
