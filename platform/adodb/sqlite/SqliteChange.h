// Writes one row to a SQLite table.
#pragma once

#include "platform/adodb/provider/Provider.h"
#include "platform/adodb/sqlite/SqliteHandle.h"

#include <memory>
#include <vector>

namespace norvel::adodb {

// Session::change. Dates are written as ISO text, without a time where there is none and the column
// is a DATE; decimals as their digits, which the column's affinity makes numbers; True is 1.
std::vector<Variant> changeRow(const std::shared_ptr<SqliteHandle>& handle,
                               const RowChange& change);

} // namespace norvel::adodb
