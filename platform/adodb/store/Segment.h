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
    Days,         // std::int32_t, OLE Automation days without a time
    Date,         // double, OLE Automation days
    Scaled32,     // std::int32_t, to be divided by 10^scale
    Scaled,       // std::int64_t, the same
    Text,         // UTF-8 in the arena, from offsets()[row] to offsets()[row + 1]
    Dictionary8,  // std::uint8_t, the number of an entry; entries are UTF-8 in the arena. Entry 0
                  // is the empty text; equal texts may have several entries
    Dictionary16, // std::uint16_t, the same
    Bytes,        // as Text, bytes
    Mixed,        // every value that is not NULL is among the exceptions
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
    std::uint32_t entries = 0;            // of a dictionary
    const std::uint64_t* nulls = nullptr; // bit row: NULL; a null pointer where no row is
    const std::byte* data = nullptr;      // rows values; nothing of Text and Bytes
    const std::uint32_t* ends = nullptr;  // rows + 1 offsets into the arena, or entries + 1
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
    // The run of bytes of this number: a row's of Text and Bytes, an entry's of a dictionary.
    std::string_view run(std::uint32_t number) const {
        return {arena + ends[number], ends[number + 1] - ends[number]};
    }
    // A row's text or bytes, however they are stored.
    std::string_view text(std::uint32_t row) const {
        if (storage == Storage::Dictionary8) return run(values<std::uint8_t>()[row]);
        if (storage == Storage::Dictionary16) return run(values<std::uint16_t>()[row]);
        return run(row);
    }
    const Variant* exception(std::uint32_t row) const;

    // The value as a column of this type hands it to a host.
    Variant value(std::uint32_t row, DataTypeEnum type) const;
};

// An integer as a field of this type reads it; one that does not fit the type's own range reads as
// a 64-bit integer, so that nothing is lost.
Variant integerVariant(std::int64_t value, DataTypeEnum type);

} // namespace norvel::adodb
