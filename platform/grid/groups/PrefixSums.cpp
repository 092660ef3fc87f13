#include "platform/grid/groups/PrefixSums.h"

#include <bit>
#include <utility>

namespace norvel::grid {

// Entry i (from 1) holds as many numbers as the lowest bit of i says.
PrefixSums::PrefixSums(std::vector<std::int64_t> numbers) : tree_(std::move(numbers)) {
    for (std::size_t i = 1; i <= tree_.size(); ++i) {
        const std::size_t above = i + (i & (~i + 1));
        if (above <= tree_.size()) tree_[above - 1] += tree_[i - 1];
    }
}

std::int64_t PrefixSums::Sum(std::int64_t count) const {
    std::int64_t sum = 0;
    for (auto i = static_cast<std::size_t>(count); i > 0; i &= i - 1)
        sum += tree_[i - 1];
    return sum;
}

void PrefixSums::Add(std::int64_t index, std::int64_t by) {
    for (auto i = static_cast<std::size_t>(index) + 1; i <= tree_.size(); i += i & (~i + 1))
        tree_[i - 1] += by;
}

std::int64_t PrefixSums::IndexAt(std::int64_t position) const {
    std::size_t at = 0;
    for (std::size_t step = std::bit_floor(tree_.size()); step > 0; step /= 2) {
        if (at + step > tree_.size() || tree_[at + step - 1] > position) continue;
        at += step;
        position -= tree_[at - 1];
    }
    return static_cast<std::int64_t>(at);
}

} // namespace norvel::grid
