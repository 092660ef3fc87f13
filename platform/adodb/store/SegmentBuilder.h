// Gathers a column's values and lays them out as one exact segment.
#pragma once

#include "platform/adodb/store/Batch.h"
#include "platform/adodb/store/ColumnInfo.h"
#include "platform/adodb/store/Segment.h"
#include "platform/adodb/store/TextDictionary.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace norvel::adodb {

// Values arrive as batches or one by one; finish() copies them out, so that the same scratch memory
// serves every group. A value that the column's representation cannot hold without loss goes to the
// exceptions as it came. Texts that repeat are kept once: they are numbered as long as that pays,
// and a column whose texts hardly repeat is no longer tried after its first larger group.
class SegmentBuilder {
  public:
    explicit SegmentBuilder(DataTypeEnum type);

    // Rows from..to-1 of the batch, which gives up its long values.
    void append(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    // A value that is of the column's type already, or of any other, or Null.
    void append(const Variant& value);

    std::uint32_t rows() const { return rows_; }
    // Settles how the rows so far will lie; what they take of a slab, a multiple of 64.
    std::size_t prepare();
    // What they hold, roughly, exceptions included.
    std::size_t weight() const;
    // Lays the rows out in slab (prepare()'s bytes) and starts afresh.
    Segment finish(std::byte* slab);

  private:
    // Bytes of each part, in the order of the slab; each part starts at a multiple of 8.
    struct Layout {
        Storage storage = Storage::Null;
        std::size_t nulls = 0;
        std::size_t data = 0;
        std::size_t ends = 0;
        std::size_t arena = 0;
    };
    void layNumbers();
    void layRuns();
    void copyData(std::byte* to) const;
    void copyRuns(Segment& segment, std::byte* to) const;
    void copyNulls(std::byte* to) const;
    void startAfresh();

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
    std::uint32_t appendNumbered(const Batch& batch, int column, std::uint32_t from,
                                 std::uint32_t to);
    bool dictionaryPays() const;
    void giveUpDictionary(std::uint32_t rows);
    void repairDictionary();
    void appendMixed(const Batch& batch, int column, std::uint32_t from, std::uint32_t to);
    void makeValid(std::uint32_t firstRow, std::size_t firstByte);

    void setInteger(std::uint32_t row, std::int64_t value);
    void setDays(std::uint32_t row, double days);
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
    std::int64_t widest_ = 0;       // greatest magnitude of the scaled numbers
    bool wholeDays_ = true;         // no date so far has a time
    bool numbering_;                // texts go into the dictionary
    bool tryNumbering_;             // and will in the next group
    std::size_t numberedBytes_ = 0; // what the numbered texts would take one by one
    Layout layout_;
    std::size_t exceptionBytes_ = 0;
    std::vector<std::uint8_t> nullFlags_;
    std::vector<std::int64_t> integers_; // integers, Booleans, scaled numbers
    std::vector<double> doubles_;        // doubles, dates
    std::vector<std::uint32_t> ends_;    // of texts and bytes in the arena
    GrowingBytes arena_;
    std::vector<std::uint16_t> numbers_; // of texts in the dictionary
    TextDictionary dictionary_;
    std::vector<Exceptional> exceptions_;
};

} // namespace norvel::adodb
