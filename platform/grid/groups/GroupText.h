// What the line of a group says.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/grid/model/Model.h"

#include <string>
#include <string_view>

namespace norvel::grid {

// "Caption: value (rows)". value: as a cell of the column shows it; where the cell is blank a word
// says whether there is a value at all: null. more: rows are still coming, so that there may be
// more of them.
NR_API std::string groupText(const Column& column, std::string_view value, bool null,
                             adodb::RowCount rows, bool more);

} // namespace norvel::grid
