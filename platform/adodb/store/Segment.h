// The values of one column in one row group.
#pragma once

#include "platform/adodb/Constants.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// How a segment's values lie in memory.
enum class Storage : std::uint8_t {
    Null,    // every value is NULL
    Boolean, // std::uint8_t, 0 or 1
    Int32,
    Int64,
    Double,
    Date,   // double, OLE Automation days
    Scaled, // std::int64_t, to be divided by 10^scale
    Text,   // UTF-8 in the arena, from offsets[row] to offsets[row + 1]
    Bytes,  // the same with bytes
    Mixed,  // every value that is not NULL is among the exceptions
};

// A value that the column's own type cannot hold without loss (a text in an INTEGER column), or one
// too long for the arena.
struct Exceptional {
    std::uint32_t row = 0;
    Variant value;
};

// Immutable once published; a predicate runs over nulls and values, then looks at the exceptions.
// The memory belongs to the row group's slab. Where a row is NULL or exceptional its place in the
// values is 0 or an empty text.
struct Segment {
    Storage storage = Storage::Null;
    std::uint8_t scale = 0;
    std::uint32_t rows = 0;
    const std::uint64_t* nulls = nullptr; // bit row: NULL; a null pointer where no row is
    const std::byte* data = nullptr;      // rows values, or rows + 1 offsets
    const char* arena = nullptr;
    std::vector<Exceptional> exceptions; // ascending rows

    bool isNull(std::uint32_t row) const {
        return storage == Storage::Null ||
               (nulls && (nulls[row / 64] >> (row % 64) & std::uint64_t{1}) != 0);
    }
    template <class T>
    std::span<const T> values() const {
        return {reinterpret_cast<const T*>(data), rows};
    }
    std::span<const std::uint32_t> offsets() const {
        return {reinterpret_cast<const std::uint32_t*>(data), std::size_t{rows} + 1};
    }
    std::string_view text(std::uint32_t row) const {
        const auto o = offsets();
        return {arena + o[row], o[row + 1] - o[row]};
    }
    const Variant* exception(std::uint32_t row) const;

    // The value as a column of this type hands it to a host.
    Variant value(std::uint32_t row, DataTypeEnum type) const;
};

// An integer as a field of this type reads it; one that does not fit the type's own range reads as
// a 64-bit integer, so that nothing is lost.
Variant integerVariant(std::int64_t value, DataTypeEnum type);

} // namespace norvel::adodb
