// A row looked for by the values of some of its columns.
#pragma once

#include "platform/adodb/store/ColumnStore.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Texts are the same byte by byte, numbers whatever their types, and Null is Null.
bool sameValue(const Variant& a, const Variant& b);

// The first of the rows from..to-1 that has these values (column, value); nullopt where none has.
std::optional<std::int64_t> findRow(const ColumnStore& store,
                                    const std::vector<std::pair<int, Variant>>& cells,
                                    std::int64_t from, std::int64_t to);

} // namespace norvel::adodb
