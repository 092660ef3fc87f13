// A table as a workbook file in the binary format that every spreadsheet program opens (.xls).
#pragma once

#include "platform/runtime/Api.h"
#include "platform/spreadsheet/Cells.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace norvel::spreadsheet {

// What did not fit: texts cut at the 32,767 characters of a cell, columns beyond the 256th.
struct WorkbookLosses {
    std::int64_t textsCut = 0;
    int columnsLeftOut = 0;
    bool any() const { return textsCut > 0 || columnsLeftOut > 0; }
};

// Writes the cells from A1 on, no heading. Past 65,536 rows further sheets follow ("Foglio1",
// "Foglio2"…). Numbers stay numbers (a double's 15 digits), dates are dates with the reader's own
// short format (with the time where there is one), Booleans are Booleans, blanks are left out.
// Dates before 1900, which the format does not have, are written as dd/mm/yyyy text; a number that
// is none (infinite) is the error value "#NUM!".
//
// Rows are read several times, by all processors; memory does not grow with their number. The file
// takes the place of what it replaces with the last step, and nothing of it stays without.
//
// Format: [MS-XLS] "Excel Binary File Format (.xls) Structure", in a file of [MS-CFB].
class NR_API WorkbookFile {
  public:
    // The source must outlive it. Raises what NewFile raises.
    WorkbookFile(const std::filesystem::path& path, const CellSource& source);
    ~WorkbookFile();
    WorkbookFile(const WorkbookFile&) = delete;
    WorkbookFile& operator=(const WorkbookFile&) = delete;

    // Writes some rows, which takes some hundredths of a second; false once the file is whole and
    // in its place. Raises what the source raises, 61, 70, 75 for the disk, 14 past 2 GB: it is
    // over then.
    bool Step();
    double Done() const; // from 0 to 1
    WorkbookLosses Losses() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace norvel::spreadsheet
