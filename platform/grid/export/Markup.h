// What stands around the values of a table in each format of file.
#pragma once

#include "platform/grid/export/ExportFile.h"

#include <string>
#include <vector>

namespace norvel::grid {

// A file is head, rows, tail; a row is, for each column, what stands before its value and the
// value, then the row's end.
struct Markup {
    std::string head, tail;
    std::vector<std::string> before; // one a column
    std::string rowEnd;
    bool html = false; // values are escaped
};

Markup markupOf(const ExportTable& table, const ExportSpec& spec);

} // namespace norvel::grid
