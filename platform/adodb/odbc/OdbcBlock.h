// A block of rows that the driver fills at one call.
#pragma once

#include "platform/adodb/odbc/OdbcStatement.h"
#include "platform/adodb/odbc/OdbcTypes.h"
#include "platform/adodb/store/Batch.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Columns are bound to buffers of as many rows as a few hundred kilobytes hold. A text longer than
// its buffer is fetched again by itself, and its column gets more room in the blocks that follow.
class OdbcBlock {
  public:
    // Sets the statement's cursor: call prepare() before the statement is executed.
    OdbcBlock(OdbcStatement& statement, const std::vector<OdbcColumn>& columns);
    ~OdbcBlock();
    OdbcBlock(const OdbcBlock&) = delete;
    OdbcBlock& operator=(const OdbcBlock&) = delete;

    // The kind of cursor that long values of this server need.
    static void prepare(OdbcStatement& statement);

    bool atEnd() const { return row_ >= rows_; }
    // The next rows; false where there are none.
    bool fetch();
    // Puts the current row into the batch and goes on to the next; false, and nothing happened,
    // where it no longer fits.
    bool store(Batch& batch);

  private:
    // How a value that did not fit its buffer is had.
    enum class LongValues : std::uint8_t {
        ByPosition, // SQLSetPos and SQLGetData, within the block
        BySelf,     // the row again, as a block of its own: needs a cursor that goes back
        RowByRow,   // columns without a limit are not bound; blocks of one row
    };
    struct Buffer {
        std::size_t width = 0;
        std::size_t wanted = 0; // what its values will take in the next layout
        bool bound = true;
        std::unique_ptr<char[]> values;
        std::unique_ptr<SQLLEN[]> lengths;
        const char* at(std::size_t row) const { return values.get() + row * width; }
    };

    static LongValues longValuesOf(const OdbcConnection& connection);
    void layOut();
    void bind();
    void unbind();
    bool growable(std::size_t column) const;
    bool cut(std::size_t column, std::size_t row) const;
    void repair();
    void readByPosition(const std::vector<std::pair<std::size_t, std::size_t>>& cells);
    void readBySelf(const std::vector<std::pair<std::size_t, std::size_t>>& cells);
    void readUnbound();
    std::string wholeValue(std::size_t column);
    bool storeCell(Batch& batch, std::size_t column) const;
    bool storeRun(Batch& batch, std::size_t column, const char* data, std::size_t length) const;

    OdbcStatement& statement_;
    const std::vector<OdbcColumn>& columns_;
    LongValues longValues_;
    std::vector<Buffer> buffers_;
    std::size_t capacity_ = 1; // rows
    SQLULEN fetched_ = 0;      // written by the driver
    std::size_t rows_ = 0;
    std::size_t row_ = 0;
    std::uint64_t before_ = 0; // rows of the blocks before this one
    bool stale_ = true;        // the layout does not fit what was seen of the values
    bool moved_ = false; // the cursor was set on single rows: the next block is asked by number
    std::map<std::pair<std::size_t, std::size_t>, std::string> longs_; // (column, row)
};

} // namespace norvel::adodb
