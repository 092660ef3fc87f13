// The rows of a grid as a file: one spec, one entry for every format.
#pragma once

#include "platform/grid/export/ExportRows.h"

#include <filesystem>
#include <memory>
#include <string>

namespace norvel::grid {

enum class ExportFormat {
    Delimited, // a line a row, a delimiter between values
    Html,      // a page with a table
};

struct ExportSpec {
    ExportFormat format = ExportFormat::Delimited;
    // Delimited
    std::string delimiter = ";";
    std::string prefix, suffix; // around each value
    bool headings = true;       // a first line of captions
    // Html
    std::string title; // of the page
};

// Writes a table to a file in UTF-8, values as the cells show them, long texts whole.
//
// Delimited: a byte-order mark, so that spreadsheet programs see UTF-8; lines end in CR LF. Nothing
// is quoted or escaped: a delimiter inside a value stays as it is, and since a line end inside a
// value shows as a blank, a row is a line.
// Html: a complete page that is read on the screen and on paper, where the headings stand on each
// sheet; columns are aligned as in the grid.
//
// The file takes the place of what it replaces when the last step is done; a failure, or the end of
// this object before, leaves what was there. Memory does not grow with the rows: of a recordset of
// this system's own making the columns are read by all processors, of any other blocks of rows.
class NR_API ExportFile {
  public:
    // Raises what ExportRows raises, and 70, 75, 76 where the file cannot be made.
    ExportFile(adodb::Recordset& host, ExportTable table, const ExportSpec& spec,
               const std::filesystem::path& file);
    ~ExportFile();
    ExportFile(const ExportFile&) = delete;
    ExportFile& operator=(const ExportFile&) = delete;

    // Writes some rows, which takes some hundredths of a second; false once the file is whole and
    // in its place. Raises what the recordset raises, 61, 70, 75: the export is over then. The
    // owner of the recordset calls it.
    bool Step();
    double Done() const; // from 0 to 1

  private:
    class Rows;
    class ColumnPieces;
    class ValueBlocks;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace norvel::grid
