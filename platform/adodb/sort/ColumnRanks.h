// The values of a column as small numbers in the same order, and its rows in that order.
#pragma once

#include "platform/adodb/sort/RadixSort.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

namespace norvel::adodb {

// What is known of a list of rows by the values of one column. Places are those in the list.
struct ColumnOrder {
    // Of each place; equal values have equal ranks, greater ones greater.
    Room<std::uint32_t> ranks;
    Room<std::uint32_t> places; // by their values, NULLs first, equal ones ascending
    Room<std::uint64_t> fresh;  // bit i: places[i] has another value than the one before

    bool startsRun(std::size_t i) const {
        return (fresh[i / 64] >> (i % 64) & std::uint64_t{1}) != 0;
    }
    // All places; descending, equal ones ascend all the same. list has as many.
    void list(std::vector<std::uint32_t>& list, bool ascending, unsigned threads) const;
    // Those of these places that it knows of, each named once, in any order.
    std::vector<std::uint32_t> picked(std::span<const std::uint32_t> some, bool ascending,
                                      unsigned threads) const;
    std::size_t values() const { // that differ
        return places.size() == 0 ? 0 : std::size_t{ranks[places[places.size() - 1]]} + 1;
    }
    std::size_t bytes() const; // of memory
};

// The order of the rows, which ascend, as compareCells has it.
ColumnOrder orderRows(const ColumnStore& store, int column, std::span<const RowNumber> rows,
                      unsigned threads);

// The order of all rows of a column, kept with the store. Any thread may ask.
class KeptOrder {
  public:
    // The one that is there; null where it does not reach so many rows.
    std::shared_ptr<const ColumnOrder> reaching(std::size_t rows) const;
    // Makes it for all rows that the store holds by now where it does not reach so many. One thread
    // computes, the others wait for it.
    std::shared_ptr<const ColumnOrder> extended(const ColumnStore& store, int column,
                                                std::size_t rows, unsigned threads);
    std::size_t bytes() const; // of memory

  private:
    mutable std::mutex mutex_;
    std::mutex computing_;
    std::shared_ptr<const ColumnOrder> order_;
};

} // namespace norvel::adodb
