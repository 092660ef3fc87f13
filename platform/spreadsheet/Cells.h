// What goes into a workbook: cells, row by row, from any source.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace norvel::spreadsheet {

enum class CellKind : std::uint8_t {
    Blank,
    Number,
    Boolean, // number: 0 is False
    Date,    // number: OLE Automation days, midnight or not
    Time,    // number: the part of a day
    Text,    // UTF-8
};

struct Cell {
    CellKind kind = CellKind::Blank;
    double number = 0;
    std::string_view text;
};

// Reads rows for one thread.
class CellReader {
  public:
    virtual ~CellReader();
    // Up to count rows from first, row after row, columns() cells each; the cells and their texts
    // hold until the next call. Fewer rows than asked only at the end. Raises Errore.
    virtual std::span<const Cell> read(std::int64_t first, std::size_t count) = 0;
};

// A table of cells that does not change while it is read.
class CellSource {
  public:
    virtual ~CellSource();
    virtual std::int64_t rows() const = 0;
    virtual int columns() const = 0;
    // What the column mostly holds: it decides the width that shows it.
    virtual CellKind columnKind(int column) const = 0;
    // Called on the owner's thread; the reader may then be used on another one.
    virtual std::unique_ptr<CellReader> reader() const = 0;
};

} // namespace norvel::spreadsheet
