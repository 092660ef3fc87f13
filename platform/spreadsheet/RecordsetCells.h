// The rows of a recordset as cells of a workbook.
#pragma once

#include "platform/adodb/client/ColumnRows.h"
#include "platform/spreadsheet/Cells.h"

#include <optional>
#include <vector>

namespace norvel::spreadsheet {

// The rows on show from the current one on, every field a column. Numbers of more than 15 digits,
// which a cell's number does not hold, are texts, so that no digit is lost; a date before the first
// day of the calendar is a time of day; bytes say "(binario)".
class RecordsetCells : public CellSource {
  public:
    // Errore 13 for a recordset that is not of this system's own making, 3704 for a closed one, and
    // the error of a fetch that broke off.
    explicit RecordsetCells(const adodb::Recordset& recordset);

    std::int64_t rows() const override { return count_; }
    int columns() const override { return rows_->store().columnCount(); }
    CellKind columnKind(int column) const override;
    std::unique_ptr<CellReader> reader() const override;

  private:
    class Reader;
    adodb::RowNumber rowAt(std::int64_t row) const;

    std::optional<adodb::ColumnRows> rows_;
    std::int64_t first_ = 0, count_ = 0;
    std::optional<adodb::RowList> numbers_; // none: rows lie in the order in which they show
};

} // namespace norvel::spreadsheet
