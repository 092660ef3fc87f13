// What a Variant becomes, as an automation host converts values.
#include "platform/runtime/Errore.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/NumberReading.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace norvel {
namespace {

template <typename... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <typename... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

template <typename T>
concept PlainInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

constexpr unsigned currencyDecimals = 4;

// What every conversion answers for an object: Nothing has no value, others no value of their own.
Errore errorOfObject(const ObjectRef& object) {
    return object ? erroreTipoNonCorrispondente() : erroreOggettoNonImpostato();
}

std::string invariantOf(const std::string& text) {
    std::optional<std::string> invariant = invariantNumber(text);
    if (!invariant) throw erroreTipoNonCorrispondente();
    return std::move(*invariant);
}

double doubleOfText(const std::string& text) {
    const double value = doubleOfInvariant(invariantOf(text));
    if (std::isinf(value)) throw erroreOverflow();
    return value;
}

Decimal orOverflow(const std::optional<Decimal>& value) {
    if (!value) throw erroreOverflow();
    return *value;
}

Decimal decimalOfSingle(float value) {
    std::string digits = numberToText(value); // seven digits are what a Single means
    std::replace(digits.begin(), digits.end(), ',', '.');
    return orOverflow(std::isfinite(value) ? Decimal::fromText(digits) : std::nullopt);
}

double roundedHalfToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    return up ? below + 1 : below;
}

std::int64_t integerOfDouble(double value) {
    const double whole = roundedHalfToEven(value);
    // -2^63 and 2^63 are exact; NaN compares false.
    if (!(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0)) throw erroreOverflow();
    return static_cast<std::int64_t>(whole);
}

// value times 10^scale as a whole number.
std::int64_t integerOfDecimal(const Decimal& value, unsigned scale) {
    const Decimal shifted = value.rounded(scale);
    std::uint64_t magnitude = shifted.low();
    bool fits = shifted.high() == 0;
    for (unsigned at = shifted.scale(); fits && at < scale; ++at) {
        fits = magnitude <= std::numeric_limits<std::uint64_t>::max() / 10;
        magnitude *= 10;
    }
    const std::uint64_t limit = std::uint64_t{1} << 63U;
    if (!fits || magnitude > (shifted.negative() ? limit : limit - 1)) throw erroreOverflow();
    return static_cast<std::int64_t>(shifted.negative() ? 0 - magnitude : magnitude);
}

std::int64_t integerOfUnsigned(std::uint64_t value) {
    if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        throw erroreOverflow();
    return static_cast<std::int64_t>(value);
}

template <typename Integer>
Integer narrowed(std::int64_t value) {
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max())
        throw erroreOverflow();
    return static_cast<Integer>(value);
}

bool booleanOfText(const std::string& text) {
    const std::string word(trimmedBlanks(text));
    if (equalsText(word, "True") || equalsText(word, "Vero")) return true;
    if (equalsText(word, "False") || equalsText(word, "Falso")) return false;
    return doubleOfText(word) != 0;
}

Decimal decimalOfCurrency(Currency value) {
    return Decimal::fromScaled(value.tenThousandths, currencyDecimals);
}

std::string textOfDecimal(const Decimal& value) {
    std::string text = value.toText();
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

Date dateOfDouble(double days) {
    const Date date{days};
    if (!isValidDate(date)) throw erroreOverflow();
    return date;
}

} // namespace

bool Variant::toBoolean() const {
    return std::visit(Overloaded{[](const std::string& value) { return booleanOfText(value); },
                                 [this](const auto&) { return toDouble() != 0; }},
                      value_);
}

std::int16_t Variant::toI2() const {
    return narrowed<std::int16_t>(toI8());
}
std::int32_t Variant::toI4() const {
    return narrowed<std::int32_t>(toI8());
}

std::int64_t Variant::toI8() const {
    return std::visit(
        Overloaded{[](const PlainInteger auto& value) { return static_cast<std::int64_t>(value); },
                   [](std::uint64_t value) { return integerOfUnsigned(value); },
                   [](float value) { return integerOfDouble(value); },
                   [](double value) { return integerOfDouble(value); },
                   [](Date value) { return integerOfDouble(value.days); },
                   [this](const auto&) { return integerOfDecimal(toDecimal(), 0); }},
        value_);
}

float Variant::toSingle() const {
    if (const float* const single = std::get_if<float>(&value_)) return *single;
    const double value = toDouble();
    const auto single = static_cast<float>(value);
    if (std::isinf(single) && !std::isinf(value)) throw erroreOverflow();
    return single;
}

double Variant::toDouble() const {
    return std::visit(
        Overloaded{[](std::monostate) { return 0.0; },
                   [](NullValue) -> double { throw erroreNull(); },
                   [](bool value) { return value ? -1.0 : 0.0; },
                   [](const PlainInteger auto& value) { return static_cast<double>(value); },
                   [](float value) { return static_cast<double>(value); },
                   [](double value) { return value; },
                   [](Currency value) { return decimalOfCurrency(value).toDouble(); },
                   [](Date value) { return value.days; },
                   [](const Decimal& value) { return value.toDouble(); },
                   [](const std::string& value) { return doubleOfText(value); },
                   [](const ObjectRef& value) -> double { throw errorOfObject(value); },
                   [](const auto&) -> double { throw erroreTipoNonCorrispondente(); }},
        value_);
}

Decimal Variant::toDecimal() const {
    return std::visit(
        Overloaded{[](std::uint64_t value) { return Decimal::fromParts(false, 0, value, 0); },
                   [](bool value) { return Decimal(value ? -1 : 0); },
                   [](const PlainInteger auto& value) {
                       return Decimal(static_cast<std::int64_t>(value));
                   },
                   [](float value) { return decimalOfSingle(value); },
                   [](Currency value) { return decimalOfCurrency(value); },
                   [](const Decimal& value) { return value; },
                   [](const std::string& value) {
                       return orOverflow(Decimal::fromText(invariantOf(value)));
                   },
                   [this](const auto&) { return orOverflow(Decimal::fromDouble(toDouble())); }},
        value_);
}

Currency Variant::toCurrency() const {
    if (const Currency* const value = std::get_if<Currency>(&value_)) return *value;
    return {integerOfDecimal(toDecimal(), currencyDecimals)};
}

Date Variant::toDate() const {
    if (const std::string* const value = std::get_if<std::string>(&value_)) {
        if (const std::optional<Date> date = textToDate(*value)) return *date;
    }
    if (const Date* const value = std::get_if<Date>(&value_)) return *value;
    return dateOfDouble(toDouble());
}

std::string Variant::toText() const {
    return std::visit(
        Overloaded{[](std::monostate) { return std::string(); },
                   [](NullValue) -> std::string { throw erroreNull(); },
                   [](bool value) { return booleanToText(value); },
                   [](const PlainInteger auto& value) { return std::to_string(value); },
                   [](float value) { return numberToText(value); },
                   [](double value) { return numberToText(value); },
                   [](Currency value) { return textOfDecimal(decimalOfCurrency(value)); },
                   [](Date value) { return dateToText(value); },
                   [](const Decimal& value) { return textOfDecimal(value); },
                   [](const std::string& value) { return value; },
                   [](const ObjectRef& value) -> std::string { throw errorOfObject(value); },
                   [](const auto&) -> std::string { throw erroreTipoNonCorrispondente(); }},
        value_);
}

std::string Variant::toDisplay() const {
    switch (type()) {
    case VarType::Null:
    case VarType::Object:
    case VarType::Array:
        return {};
    case VarType::Bytes:
        return "(dati binari)";
    default:
        return toText();
    }
}

bool equalsNumber(const Variant& value, double number) {
    return value.toDouble() == number;
}

} // namespace norvel
