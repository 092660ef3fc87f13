// Sums of the first numbers of a list that changes.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace norvel::grid {

// Every step but the making takes as many steps as the logarithm of the list.
class NR_API PrefixSums {
  public:
    PrefixSums() = default;
    // numbers: positive
    explicit PrefixSums(std::vector<std::int64_t> numbers);

    std::int64_t Size() const { return static_cast<std::int64_t>(tree_.size()); }
    // Of the first count numbers.
    std::int64_t Sum(std::int64_t count) const;
    void Add(std::int64_t index, std::int64_t by);
    // The number in which the unit of this index lies when all are laid side by side: the greatest
    // index whose Sum is not above position.
    std::int64_t IndexAt(std::int64_t position) const;

  private:
    std::vector<std::int64_t> tree_; // entry i: the sum of the numbers of a block that ends with i
};

} // namespace norvel::grid
