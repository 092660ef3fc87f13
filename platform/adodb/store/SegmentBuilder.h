// Gathers a column's values and lays them out as one exact segment.
#pragma once

#include "platform/adodb/store/Batch.h"
#include "platform/adodb/store/ColumnInfo.h"
#include "platform/adodb/store/Segment.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace norvel::adodb {

// A run of bytes that grows without being written twice.
class GrowingBytes {
  public:
    char* extend(std::size_t bytes) {
        if (bytes > capacity_ - size_) grow(bytes);
        char* at = data_.get() + size_;
        size_ += bytes;
        return at;
    }
    char* data() { return data_.get(); }
    std::size_t size() const { return size_; }
    void shrink(std::size_t size) { size_ = size; }

  private:
    void grow(std::size_t bytes);
    std::unique_ptr<char[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

// Values arrive as batches or one by one; finish() copies them out, so that the same scratch memory
// serves every group. A value that the column's representation cannot hold without loss goes to the
// exceptions as it came.
class SegmentBuilder {
  public:
    explicit SegmentBuilder(DataTypeEnum type);

    // Rows from..to-1 of the batch, which gives up its long values.
    void append(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    // A value that is of the column's type already, or of any other, or Null.
    void append(const Variant& value);

    std::uint32_t rows() const { return rows_; }
    // What the rows so far will take of a slab, a multiple of 64.
    std::size_t slabBytes() const;
    // What they hold, roughly, exceptions included.
    std::size_t weight() const;
    // Lays the rows out in slab (slabBytes() bytes) and starts afresh.
    Segment finish(std::byte* slab);

  private:
    struct Layout {
        Storage storage;
        std::size_t nulls; // bytes
        std::size_t data;
        std::size_t arena;
    };
    Layout layout() const;
    void copyData(const Layout& layout, std::byte* to);
    void copyNulls(std::byte* to) const;

    void startRows(std::uint32_t count);
    void markNull(std::uint32_t row) {
        nullFlags_[row] = 1;
        ++nulls_;
    }
    void except(std::uint32_t row, Variant value);
    void exceptRaw(std::uint32_t row, const Batch& batch, RawKind kind, RawValue value);

    void appendIntegers(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendBooleans(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendDoubles(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendDates(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendScaled(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendRuns(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void appendMixed(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void makeValid(std::uint32_t firstRow, std::size_t firstByte);

    void setInteger(std::uint32_t row, std::int64_t value);
    bool scaleInteger(std::uint32_t row, std::int64_t value);
    bool scaleReal(std::uint32_t row, double value);
    bool scaleDecimal(std::uint32_t row, const Decimal& value);
    void raiseScale(unsigned scale);
    void setRun(std::uint32_t row, std::string_view run);
    bool setTyped(std::uint32_t row, const Variant& value);

    DataTypeEnum type_;
    StorageClass class_;
    std::uint32_t rows_ = 0;
    std::uint32_t nulls_ = 0;
    std::uint8_t scale_ = 0;
    std::int64_t least_ = 0; // of the integers so far, 0 included
    std::int64_t greatest_ = 0;
    std::int64_t widest_ = 0; // greatest magnitude of the scaled numbers
    std::size_t exceptionBytes_ = 0;
    std::vector<std::uint8_t> nullFlags_;
    std::vector<std::int64_t> integers_; // integers, Booleans, scaled numbers
    std::vector<double> doubles_;        // doubles, dates
    std::vector<std::uint32_t> ends_;    // of texts and bytes in the arena
    GrowingBytes arena_;
    std::vector<Exceptional> exceptions_;
};

} // namespace norvel::adodb
