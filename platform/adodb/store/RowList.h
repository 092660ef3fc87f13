// Row numbers: the result of a filter, the order of a sort.
#pragma once

#include <cstdint>
#include <vector>

namespace norvel::adodb {

// Rows of a store, from 0. 32 bits: four thousand million rows are more than a store can hold.
using RowNumber = std::uint32_t;
using RowList = std::vector<RowNumber>;

} // namespace norvel::adodb
