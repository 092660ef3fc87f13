// The order of values of any types, as a sort sees it.
#pragma once

#include "platform/adodb/store/Segment.h"
#include "platform/runtime/Variant.h"

#include <cstdint>

namespace norvel::adodb {

// Values of different kinds in one column come in this order. Null: Empty, too. Number: Booleans,
// too, True being -1 as for the hosts, so that it comes before False. Other (objects, arrays): all
// equal.
enum class CellKind : std::uint8_t { Null, Number, Date, Text, Bytes, Other };

CellKind cellKind(const Variant& value);

// A double as an integer in the same order: -0 is 0, and what is no number stands before all.
std::uint64_t realKey(double value);
// A whole number as one without a sign, in the same order.
std::uint64_t wholeKey(std::int64_t value);

// A number of any type, in exact order among whole numbers and decimals. Where one of those and a
// double are nearest to the same double, the double counts as the whole number it is, or as its
// shortest decimal of up to 15 digits: a double 0.1 equals a decimal 0.1.
struct NumberKey {
    std::uint64_t nearest = 0; // realKey of the nearest double
    Decimal exact;

    bool operator==(const NumberKey&) const = default;
    bool operator<(const NumberKey& other) const {
        return nearest != other.nearest ? nearest < other.nearest : exact < other.exact;
    }
};
NumberKey numberKey(double value);
NumberKey numberKey(const Decimal& value);
// value is of the kind Number
NumberKey numberKey(const Variant& value);

// <0, 0, >0. Texts by collateText, bytes as unsigned bytes, the shorter first.
int compareCells(const Variant& a, const Variant& b);
// The same of two rows of a column of this type.
int compareCells(const Segment& a, std::uint32_t rowA, const Segment& b, std::uint32_t rowB,
                 DataTypeEnum type);

} // namespace norvel::adodb
