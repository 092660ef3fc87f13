// Cells as spreadsheets take them from the clipboard.
#pragma once

#include "platform/grid/model/RowReader.h"

#include <string>
#include <utility>
#include <vector>

namespace norvel::grid {

// The value as its cell shows it, but whole: neither cut nor made one line. One that holds a TAB,
// a line end or a quotation mark stands in quotation marks, its own doubled, its line ends as LF.
NR_API std::string copiedCell(const Variant& value);

// The cells of the fields (numbers, in the order wanted; -1: a column without one, blank) of the
// rows [first, last] of each range, as far as there are such rows: TAB between cells, CR LF between
// rows. Errore: what the recordset raises.
NR_API std::string
copiedRows(RowReader& reader,
           const std::vector<std::pair<adodb::RowCount, adodb::RowCount>>& ranges,
           const std::vector<int>& fields);

} // namespace norvel::grid
