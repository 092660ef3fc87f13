#include "platform/adodb/store/Segment.h"

#include <algorithm>
#include <limits>

namespace norvel::adodb {

namespace {

template <class T>
bool fits(std::int64_t value) {
    return value >= static_cast<std::int64_t>(std::numeric_limits<T>::min()) &&
           value <= static_cast<std::int64_t>(std::numeric_limits<T>::max());
}

template <class T>
Variant narrowed(std::int64_t value) {
    return fits<T>(value) ? Variant(static_cast<T>(value)) : Variant(value);
}

Variant scaledVariant(std::int64_t mantissa, unsigned scale, DataTypeEnum type) {
    if (type == adCurrency) return Currency{mantissa}; // its scale is always 4
    return Decimal::fromScaled(mantissa, scale);
}

Variant bytesVariant(std::string_view bytes) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    return Bytes(first, first + bytes.size());
}

Variant doubleVariant(double value, DataTypeEnum type) {
    return type == adSingle ? Variant(static_cast<float>(value)) : Variant(value);
}

} // namespace

Variant integerVariant(std::int64_t value, DataTypeEnum type) {
    switch (type) {
    case adTinyInt:
        return narrowed<std::int8_t>(value);
    case adUnsignedTinyInt:
        return narrowed<std::uint8_t>(value);
    case adSmallInt:
        return narrowed<std::int16_t>(value);
    case adUnsignedSmallInt:
        return narrowed<std::uint16_t>(value);
    case adInteger:
        return narrowed<std::int32_t>(value);
    case adUnsignedInt:
        return narrowed<std::uint32_t>(value);
    case adUnsignedBigInt:
        return value >= 0 ? Variant(static_cast<std::uint64_t>(value)) : Variant(value);
    default:
        return {value};
    }
}

const Variant* Segment::exception(std::uint32_t row) const {
    if (exceptions.empty()) return nullptr;
    const auto found = std::ranges::lower_bound(exceptions, row, {}, &Exceptional::row);
    return found != exceptions.end() && found->row == row ? &found->value : nullptr;
}

Variant Segment::value(std::uint32_t row, DataTypeEnum type) const {
    if (isNull(row)) return Variant::null();
    if (const Variant* other = exception(row)) return *other;
    switch (storage) {
    case Storage::Boolean:
        return values<std::uint8_t>()[row] != 0;
    case Storage::Int32:
        return integerVariant(values<std::int32_t>()[row], type);
    case Storage::Int64:
        return integerVariant(values<std::int64_t>()[row], type);
    case Storage::Double:
        return doubleVariant(values<double>()[row], type);
    case Storage::Days:
        return Date{static_cast<double>(values<std::int32_t>()[row])};
    case Storage::Date:
        return Date{values<double>()[row]};
    case Storage::Scaled32:
        return scaledVariant(values<std::int32_t>()[row], scale, type);
    case Storage::Scaled:
        return scaledVariant(values<std::int64_t>()[row], scale, type);
    case Storage::Text:
    case Storage::Dictionary8:
    case Storage::Dictionary16:
        return text(row);
    case Storage::Bytes:
        return bytesVariant(text(row));
    case Storage::Null:
    case Storage::Mixed:
        break;
    }
    return Variant::null();
}

} // namespace norvel::adodb
