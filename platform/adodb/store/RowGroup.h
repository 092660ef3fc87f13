// A run of consecutive rows, column by column.
#pragma once

#include "platform/adodb/store/Segment.h"
#include "platform/adodb/store/Slab.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Immutable. Rows inside a group count from 0.
class RowGroup {
  public:
    RowGroup(std::uint32_t rows, Slab slab, std::vector<Segment> segments)
        : rows_(rows), slab_(std::move(slab)), segments_(std::move(segments)) {}

    std::uint32_t rows() const { return rows_; }
    const Segment& segment(int column) const { return segments_[static_cast<std::size_t>(column)]; }
    std::size_t bytes() const { return slab_.size(); }

  private:
    std::uint32_t rows_;
    Slab slab_;
    std::vector<Segment> segments_;
};

} // namespace norvel::adodb
