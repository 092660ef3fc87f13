// A run of consecutive rows, column by column.
#pragma once

#include "platform/adodb/store/Segment.h"
#include "platform/adodb/store/Slab.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Rows inside a group count from 0. What lies in the slab never changes.
class RowGroup {
  public:
    RowGroup(std::uint32_t rows, Slab slab, std::vector<Segment> segments)
        : rows_(rows), slab_(std::move(slab)), segments_(std::move(segments)) {}

    std::uint32_t rows() const { return rows_; }
    const Segment& segment(int column) const { return segments_[static_cast<std::size_t>(column)]; }
    std::size_t bytes() const { return slab_.size(); }

    // The row's value becomes this one, as a field of the column's type hands it out, or Null. It
    // lies among the segment's exceptions; what it takes the place of stays in the slab, unread.
    void change(int column, std::uint32_t row, const Variant& value);

  private:
    void markNull(int column, std::uint32_t row, bool null);

    std::uint32_t rows_;
    Slab slab_;
    std::vector<Segment> segments_;
    std::map<int, std::vector<std::uint64_t>> nulls_; // of columns that were changed
};

} // namespace norvel::adodb
