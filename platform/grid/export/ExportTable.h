// What an export or a print shows of a grid: which columns, how they are headed and aligned, in
// which order the rows come. Without a window.
#pragma once

#include "platform/grid/model/Model.h"

#include <string>
#include <vector>

namespace norvel::grid {

struct ExportColumn {
    std::string field;                 // the recordset's, by name
    std::string caption;               // of the heading
    Alignment align = Alignment::Left; // never General
    adodb::DataTypeEnum type = adodb::adVarWChar;
    double width = 1440;   // twips
    bool checkBox = false; // on paper, as in the grid
    bool operator==(const ExportColumn&) const = default;
};

struct ExportTable {
    std::vector<ExportColumn> columns; // from left to right
    std::string sort;                  // the order of the rows, as Recordset::Sort takes it
};

inline constexpr int groupView = 2; // GridStyle::DataView: with a grouping area

// The columns on show, from left to right. In the group view the group columns come first, in the
// order of the groups, shown as columns whether or not they are among those on show (a group's
// value stands in its heading row there), and the rows come by groups as the grid shows them:
// ascending, and by the rest of the host's order within a group. A group without a column of its
// own is left out. hostSort: the recordset's own order. Raises 3001 where the group view cannot
// read it.
NR_API ExportTable exportTable(const Columns& columns, const GridStyle& style,
                               const std::string& hostSort);

} // namespace norvel::grid
