// The values of a column as small numbers in the same order.
#pragma once

#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace norvel::adodb {

// Equal values have equal ranks; NULL has 0. Ranks of one list compare among themselves only.
using Ranks = std::vector<std::uint32_t>;

// The rank of each of the rows, which ascend, by the order of compareCells.
Ranks rankRows(const ColumnStore& store, int column, std::span<const RowNumber> rows,
               unsigned threads);

// The ranks of all rows of a column, kept with the store. Any thread may ask.
class KeptRanks {
  public:
    // Those that are there; null where they do not reach so many rows.
    std::shared_ptr<const Ranks> reaching(std::size_t rows) const;
    // Computes them for all rows that the store holds by now where they do not reach so many. One
    // thread computes, the others wait for it.
    std::shared_ptr<const Ranks> extended(const ColumnStore& store, int column, std::size_t rows,
                                          unsigned threads);
    std::size_t bytes() const; // of memory

  private:
    mutable std::mutex mutex_;
    std::mutex computing_;
    std::shared_ptr<const Ranks> ranks_;
};

} // namespace norvel::adodb
