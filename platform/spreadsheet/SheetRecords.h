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

// Rows that one sheet shows.
struct SheetPart {
    std::int64_t firstRow = 0; // of the table
    std::int64_t rows = 0;
    std::uint32_t placeInSheet = 0; // of the first row
};

// The records of a part of a sheet, which is written piece by piece: begin, cells of each part,
// end. The texts of a part are numbered alike by writeTexts and writeCells.
class SheetRecords {
  public:
    // columns: of the table, those that the sheet shows.
    SheetRecords(const CellSource& source, int columns) : source_(source), columns_(columns) {}

    struct Texts {
        std::int64_t rows = 0; // of the part that were gone through
        std::int64_t uses = 0; // cells that refer to a text
        std::uint32_t count = 0;
    };
    // The texts of a part: of all its rows, or of as many as it takes to write more than limit
    // bytes.
    Texts writeTexts(CellReader& reader, SheetPart part, std::size_t limit, TextRecords& out);
    // firstText: the number of the part's first text in the whole table of texts.
    void writeCells(CellReader& reader, SheetPart part, std::uint32_t firstText, Bytes& out);

    void writeBegin(std::int64_t rows, Bytes& out) const;
    // shown: the sheet that is seen when the workbook is opened.
    static void writeEnd(bool shown, Bytes& out);

  private:
    template <class Visit>
    void eachCell(CellReader& reader, SheetPart part, Visit visit) const;
    void writeColumns(Bytes& out) const;
    // The text that stands for a cell, if one does.
    bool textOf(const Cell& cell, std::string_view& text);

    const CellSource& source_;
    int columns_;
    std::string oldDate_;
};

} // namespace norvel::spreadsheet
