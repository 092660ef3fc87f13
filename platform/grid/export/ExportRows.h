// The rows of an export or a print, read from a clone: the host's current record never moves.
#pragma once

#include "platform/adodb/client/ColumnRows.h"
#include "platform/grid/export/ExportTable.h"

#include <optional>
#include <string>
#include <vector>

namespace norvel::grid {

// The rows under the recordset's filter and the table's order, as they stand when this is made. The
// owner thread alone uses it. Reading raises what the recordset raises.
class NR_API ExportRows {
  public:
    // All rows must be there: whoever exports has waited for the fetch. Errore: that of a fetch
    // that broke off; 3704, 3711 and what else a recordset raises that cannot be cloned.
    ExportRows(adodb::Recordset& host, ExportTable table);

    const ExportTable& Table() const { return table_; }
    adodb::RowCount Count() const { return count_; }

    // The rows [first, first + count), as far as they exist, as cells show them, only that a long
    // text is whole: texts[column][row]. A column whose field the recordset does not have is empty.
    // first may be any row: for a preview that shows some of them.
    std::vector<std::vector<std::string>> Texts(adodb::RowCount first, adodb::RowCount count);
    // The same as values, Null for a column without a field.
    adodb::RowBlock Values(adodb::RowCount first, adodb::RowCount count);

    // The field of each column of the table in the recordset, -1: none.
    const std::vector<int>& FieldNumbers() const { return fields_; }
    // The rows as columns, where the recordset is of this system's own making.
    const std::optional<adodb::ColumnRows>& AsColumns() const { return columns_; }

  private:
    ExportTable table_;
    adodb::RecordsetRef clone_;
    std::vector<int> fields_;
    std::vector<Variant> asked_; // those of them that there are
    adodb::RowCount count_ = 0;
    std::optional<adodb::ColumnRows> columns_;
};

} // namespace norvel::grid
