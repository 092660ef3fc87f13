#include "platform/adodb/sort/CellOrder.h"

#include "platform/runtime/Text.h"

#include <bit>
#include <cmath>
#include <compare>

namespace norvel::adodb {

namespace {

constexpr std::uint64_t signBit = std::uint64_t{1} << 63U;

// Whole doubles up to 96 bits exactly, others by their shortest decimal; 0 where there is none: no
// decimal is near those.
Decimal decimalOf(double value) {
    constexpr double two64 = 18446744073709551616.0;
    constexpr double two96 = two64 * 4294967296.0;
    const double size = std::fabs(value);
    if (std::isfinite(value) && size < two96 && std::trunc(value) == value) {
        const double high = std::floor(size / two64);
        return Decimal::fromParts(value < 0, static_cast<std::uint32_t>(high),
                                  static_cast<std::uint64_t>(size - high * two64), 0);
    }
    return Decimal::fromDouble(value).value_or(Decimal());
}

template <class T>
int order(const T& a, const T& b) {
    if (a < b) return -1;
    return b < a ? 1 : 0;
}

bool holdsText(const Segment& segment, std::uint32_t row) {
    const bool texts = segment.storage == Storage::Text ||
                       segment.storage == Storage::Dictionary8 ||
                       segment.storage == Storage::Dictionary16;
    return texts && !segment.isNull(row) && segment.exception(row) == nullptr;
}

} // namespace

CellKind cellKind(const Variant& value) {
    if (value.isEmpty() || value.isNull()) return CellKind::Null;
    if (value.isNumeric()) return CellKind::Number;
    switch (value.type()) {
    case VarType::Date:
        return CellKind::Date;
    case VarType::String:
        return CellKind::Text;
    case VarType::Bytes:
        return CellKind::Bytes;
    default:
        return CellKind::Other;
    }
}

std::uint64_t realKey(double value) {
    if (std::isnan(value)) return 0;
    const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
    return (bits & signBit) != 0 ? ~bits : bits | signBit;
}

std::uint64_t wholeKey(std::int64_t value) {
    return static_cast<std::uint64_t>(value) ^ signBit;
}

NumberKey numberKey(double value) {
    return {realKey(value), decimalOf(value)};
}

NumberKey numberKey(const Decimal& value) {
    return {realKey(value.toDouble()), value};
}

NumberKey numberKey(const Variant& value) {
    const bool real = value.type() == VarType::R4 || value.type() == VarType::R8;
    return real ? numberKey(value.toDouble()) : numberKey(value.toDecimal());
}

int compareCells(const Variant& a, const Variant& b) {
    const CellKind kind = cellKind(a);
    if (const int kinds = order(kind, cellKind(b)); kinds != 0) return kinds;
    switch (kind) {
    case CellKind::Number:
        return order(numberKey(a), numberKey(b));
    case CellKind::Date:
        return order(realKey(a.toDate().days), realKey(b.toDate().days));
    case CellKind::Text:
        return collateText(a.text(), b.text());
    case CellKind::Bytes:
        return order(a.bytes(), b.bytes());
    default:
        return 0;
    }
}

int compareCells(const Segment& a, std::uint32_t rowA, const Segment& b, std::uint32_t rowB,
                 DataTypeEnum type) {
    if (holdsText(a, rowA) && holdsText(b, rowB)) return collateText(a.text(rowA), b.text(rowB));
    return compareCells(a.value(rowA, type), b.value(rowB, type));
}

} // namespace norvel::adodb
