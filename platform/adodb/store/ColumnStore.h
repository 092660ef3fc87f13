// The rows of a recordset: columns in row groups.
#pragma once

#include "platform/adodb/store/ColumnInfo.h"
#include "platform/adodb/store/DerivedData.h"
#include "platform/adodb/store/RowGroup.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace norvel::adodb {

// One thread publishes groups, any thread reads those published: a group never changes after, and
// the count of rows is what makes it visible. Rows count from 0. Filters and sorts work on the
// segments of whole groups and keep what they derive (folded texts, keys) beside the group's
// number. The owner alone changes a value, while nothing runs over the store; what was derived from
// that column is dropped then.
class ColumnStore {
  public:
    explicit ColumnStore(std::vector<ColumnInfo> columns);
    ~ColumnStore();
    ColumnStore(const ColumnStore&) = delete;
    ColumnStore& operator=(const ColumnStore&) = delete;

    const std::vector<ColumnInfo>& columns() const { return columns_; }
    int columnCount() const { return static_cast<int>(columns_.size()); }

    std::int64_t rows() const { return rows_.load(std::memory_order_acquire); }
    std::size_t groups() const { return groups_.load(std::memory_order_acquire); }
    // index below groups()
    const RowGroup& group(std::size_t index) const { return *slot(index).group; }
    std::int64_t firstRow(std::size_t index) const { return slot(index).firstRow; }
    std::size_t bytes() const { return bytes_.load(std::memory_order_relaxed); }

    struct Place {
        const RowGroup* group = nullptr;
        std::uint32_t row = 0;
    };
    // row below rows()
    Place find(std::int64_t row) const;
    Variant value(int column, std::int64_t row) const;

    // Sets one value: of the column's type, or of any other, or Null.
    void change(int column, std::int64_t row, const Variant& value);

    // What runs over the columns keep between them; it is no part of the rows' value.
    DerivedData& derived() const { return derived_; }

    // Adds a group of one row or more behind the others. One thread at a time.
    void publish(std::unique_ptr<RowGroup> group);

  private:
    struct Slot {
        std::unique_ptr<RowGroup> group;
        std::int64_t firstRow = 0;
    };
    // Chunk k holds firstChunk << k slots, so that a slot stays where it is while the directory
    // grows and a small recordset pays for a small directory.
    static constexpr std::size_t firstChunk = 16;
    static constexpr std::size_t chunkCount = 40;
    struct Position {
        std::size_t chunk;
        std::size_t slot;
    };
    static Position position(std::size_t index);
    std::size_t groupOf(std::int64_t row) const; // row below rows()
    const Slot& slot(std::size_t index) const {
        const Position p = position(index);
        return chunks_[p.chunk][p.slot];
    }

    std::vector<ColumnInfo> columns_;
    mutable DerivedData derived_;
    std::array<std::unique_ptr<Slot[]>, chunkCount> chunks_;
    std::atomic<std::size_t> groups_{0};
    std::atomic<std::int64_t> rows_{0};
    std::atomic<std::size_t> bytes_{0};
};

} // namespace norvel::adodb
