// A small recordset of this system's own making, of every kind of value, for the tests of exports.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/grid/model/Model.h"

#include <vector>

namespace norvel::tests {

// codice (Long), nome (text), prezzo (Currency), peso (Double), data (Date), attivo (Boolean),
// note (long text): three rows, the last one Null but for its codice.
adodb::RecordsetRef articles();
// Fields as name and type, rows as values in their order. Its current record is the first.
adodb::RecordsetRef
fabricated(const std::vector<std::pair<std::string, adodb::DataTypeEnum>>& fields,
           const std::vector<std::vector<Variant>>& rows);
// A column for each field in their order, its caption the name with a capital.
grid::Columns columnsOf(adodb::Recordset& recordset);

} // namespace norvel::tests
