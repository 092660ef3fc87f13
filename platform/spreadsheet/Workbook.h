// A table as a workbook file in the binary format that every spreadsheet program opens (.xls).
#pragma once

#include "platform/runtime/Api.h"
#include "platform/spreadsheet/Cells.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace norvel::spreadsheet {

// What did not fit: texts cut at the 32,767 characters of a cell, columns beyond the 256th.
struct WorkbookLosses {
    std::int64_t textsCut = 0;
    int columnsLeftOut = 0;
    bool any() const { return textsCut > 0 || columnsLeftOut > 0; }
};

// done: rows written, of all the passes together a fraction from 0 to 1. False: stop.
using WorkbookProgress = std::function<bool(double done)>;

// Writes the cells from A1 on, no heading. Past 65,536 rows further sheets follow ("Foglio1",
// "Foglio2"…). Numbers stay numbers (a double's 15 digits), dates are dates with the reader's own
// short format (with the time where there is one), Booleans are Booleans, blanks are left out.
// Dates before 1900, which the format does not have, are written as dd/mm/yyyy text; a number that
// is none (infinite) is the error value "#NUM!".
//
// Rows are read several times, by several threads; memory does not grow with their number. The
// file is made or written over. Raises what the source raises, 71 for the disk, 14 past 2 GB, and
// 3712 when the progress function stopped it; the file is then worthless, and the caller's to
// remove.
//
// Format: [MS-XLS] "Excel Binary File Format (.xls) Structure", in a file of [MS-CFB].
NR_API WorkbookLosses writeWorkbook(const std::filesystem::path& path, const CellSource& source,
                                    const WorkbookProgress& progress = {});

} // namespace norvel::spreadsheet
