#include "platform/adodb/store/RawConversion.h"

#include "platform/adodb/store/IsoDate.h"
#include "platform/adodb/store/Segment.h"
#include "platform/runtime/Text.h"

#include <charconv>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::int64_t exactInDouble = std::int64_t{1} << 53;

Variant bytesVariant(std::string_view bytes) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return Bytes(first, first + bytes.size());
}

} // namespace

Variant rawVariant(const Batch& batch, RawKind kind, RawValue value) {
    switch (kind) {
    case RawKind::Integer:
        return integerVariant(value.integer, adInteger);
    case RawKind::Real:
        return value.real;
    case RawKind::Date:
        return Date{value.real};
    case RawKind::Text:
        return toValidUtf8(batch.text(value));
    case RawKind::Bytes:
        return bytesVariant(batch.text(value));
    case RawKind::LongText:
        if (isValidUtf8(*value.longValue)) return std::move(*value.longValue);
        return toValidUtf8(*value.longValue);
    case RawKind::LongBytes:
        return bytesVariant(*value.longValue);
    case RawKind::Null:
        break;
    }
    return Variant::null();
}

std::optional<bool> rawBoolean(const Batch& batch, RawKind kind, RawValue value) {
    if (kind == RawKind::Integer) return value.integer != 0;
    if (kind == RawKind::Real) return value.real != 0;
    if (kind != RawKind::Text) return std::nullopt;
    const std::string_view text = batch.text(value);
    if (equalsText(text, "true")) return true;
    if (equalsText(text, "false")) return false;
    return std::nullopt;
}

std::optional<double> rawDouble(RawKind kind, RawValue value) {
    if (kind == RawKind::Real) return value.real;
    if (kind == RawKind::Integer && value.integer <= exactInDouble &&
        value.integer >= -exactInDouble)
        return static_cast<double>(value.integer);
    return std::nullopt;
}

std::optional<double> rawDate(const Batch& batch, RawKind kind, RawValue value) {
    switch (kind) {
    case RawKind::Text:
        return parseIsoDate(batch.text(value));
    case RawKind::Date:
        return value.real;
    case RawKind::Real:
        return dateFromJulianDay(value.real);
    case RawKind::Integer:
        return dateFromUnixTime(value.integer);
    default:
        return std::nullopt;
    }
}

std::optional<Decimal> rawDecimal(const Batch& batch, RawKind kind, RawValue value) {
    if (kind != RawKind::Text) return std::nullopt;
    const std::string_view text = batch.text(value);
    if (text.size() > 28) return std::nullopt;
    return Decimal::fromText(text);
}

std::optional<Decimal> shortestDecimal(double value) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const auto number = Decimal::fromText({digits, static_cast<std::size_t>(end - digits)});
    if (!number || number->toDouble() != value) return std::nullopt;
    return number;
}

std::int64_t powerOfTen(unsigned exponent) {
    constexpr std::int64_t powers[] = {1,
                                       10,
                                       100,
                                       1'000,
                                       10'000,
                                       100'000,
                                       1'000'000,
                                       10'000'000,
                                       100'000'000,
                                       1'000'000'000,
                                       10'000'000'000,
                                       100'000'000'000,
                                       1'000'000'000'000,
                                       10'000'000'000'000,
                                       100'000'000'000'000,
                                       1'000'000'000'000'000,
                                       10'000'000'000'000'000,
                                       100'000'000'000'000'000,
                                       1'000'000'000'000'000'000};
    return powers[exponent];
}

std::uint8_t startScale(DataTypeEnum type) {
    return type == adCurrency ? 4 : 2;
}

bool isWholeNumber(VarType type) {
    switch (type) {
    case VarType::I1:
    case VarType::I2:
    case VarType::I4:
    case VarType::I8:
    case VarType::UI1:
    case VarType::UI2:
    case VarType::UI4:
        return true;
    default:
        return false;
    }
}

} // namespace norvel::adodb
