// One sheet of a workbook as records.
#pragma once

#include "platform/spreadsheet/Cells.h"
#include "platform/spreadsheet/SharedStrings.h"

#include <cstdint>
#include <string>

namespace norvel::spreadsheet {

inline constexpr std::int64_t rowsPerSheet = 65536;
inline constexpr int columnsPerSheet = 256;

// The formats of cells, as their numbers in the workbook's table of formats.
enum class CellFormat : std::uint16_t { General = 15, Date = 16, DateAndTime = 17, Time = 18 };

// The part of a table that one sheet shows.
struct SheetPart {
    std::int64_t firstRow = 0;
    std::int64_t rows = 0;
    int columns = 0;
};

// Both read the part from its beginning; they number texts alike.
class SheetRecords {
  public:
    SheetRecords(const CellSource& source, CellReader& reader, SheetPart part)
        : source_(source), reader_(reader), part_(part) {}

    // The sheet's texts; how many cells refer to one.
    std::int64_t writeTexts(TextRecords& out, TextNumbers& numbers);
    // The sheet from its beginning to its end record. firstText: the number of its first text in
    // the whole table. first: the sheet that is shown when the workbook is opened.
    void writeCells(Bytes& out, std::uint32_t firstText, bool first);

  private:
    template <class Visit>
    void eachCell(Visit visit);
    void writeColumns(Bytes& out) const;
    void writeWindow(Bytes& out, bool first) const;
    // The text that stands for a cell, if one does.
    bool textOf(const Cell& cell, std::string_view& text);

    const CellSource& source_;
    CellReader& reader_;
    SheetPart part_;
    std::string oldDate_;
};

} // namespace norvel::spreadsheet
