#include "platform/runtime/Decimal.h"

#include "platform/runtime/Errore.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace norvel {
namespace {

constexpr unsigned maximumScale = 28;
constexpr std::string_view largestMantissa = "79228162514264337593543950335"; // 2^96 - 1

// An unsigned whole number wide enough for 96 bits times 10^28, in limbs of 32 bits, lowest first.
struct Wide {
    std::array<std::uint32_t, 7> limbs{};

    explicit Wide(std::uint32_t high, std::uint64_t low)
        : limbs{static_cast<std::uint32_t>(low), static_cast<std::uint32_t>(low >> 32U), high} {}

    void multiplyAdd(std::uint32_t factor, std::uint32_t summand) {
        std::uint64_t carry = summand;
        for (std::uint32_t& limb : limbs) {
            carry += std::uint64_t{limb} * factor;
            limb = static_cast<std::uint32_t>(carry);
            carry >>= 32U;
        }
    }

    // Divides in place, returns the remainder.
    std::uint32_t divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (auto limb = limbs.rbegin(); limb != limbs.rend(); ++limb) {
            rest = (rest << 32U) | *limb;
            *limb = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
        return static_cast<std::uint32_t>(rest);
    }

    bool isZero() const {
        return std::all_of(limbs.begin(), limbs.end(),
                           [](std::uint32_t limb) { return limb == 0; });
    }

    std::string digits() const {
        Wide rest = *this;
        std::string result;
        do {
            result.push_back(static_cast<char>('0' + rest.divide(10)));
        } while (!rest.isZero());
        std::reverse(result.begin(), result.end());
        return result;
    }
};

bool fitsMantissa(std::string_view digits) {
    return digits.size() < largestMantissa.size() ||
           (digits.size() == largestMantissa.size() && digits <= largestMantissa);
}

bool anyNonZero(std::string_view digits) {
    return digits.find_first_not_of('0') != std::string_view::npos;
}

std::string withoutLeadingZeros(std::string_view digits) {
    const std::size_t first = digits.find_first_not_of('0');
    return std::string(first == std::string_view::npos ? "0" : digits.substr(first));
}

// digits without their last drop ones, rounded half to even; more says that what was cut off before
// was not all zeros.
std::string roundedDigits(const std::string& digits, std::size_t drop, bool more) {
    if (drop == 0) return digits;
    if (drop > digits.size()) return "0";
    std::string kept = "0" + digits.substr(0, digits.size() - drop);
    const std::string_view gone = std::string_view(digits).substr(digits.size() - drop);
    const bool beyondHalf =
        gone[0] > '5' || (gone[0] == '5' && (anyNonZero(gone.substr(1)) || more));
    const bool half = gone[0] == '5' && !beyondHalf;
    if (beyondHalf || (half && (kept.back() - '0') % 2 == 1)) {
        std::size_t at = kept.size() - 1;
        for (; kept[at] == '9'; --at)
            kept[at] = '0';
        ++kept[at];
    }
    return withoutLeadingZeros(kept);
}

struct Mantissa {
    std::uint32_t high = 0;
    std::uint64_t low = 0;
};

Mantissa mantissaOf(std::string_view digits) {
    Wide wide(0, 0);
    for (const char digit : digits)
        wide.multiplyAdd(10, static_cast<std::uint32_t>(digit - '0'));
    return {wide.limbs[2], (std::uint64_t{wide.limbs[1]} << 32U) | wide.limbs[0]};
}

// A number taken apart: digits times 10^exponent, more where digits beyond those kept were not 0.
struct Parts {
    bool negative = false;
    bool more = false;
    std::string digits;
    std::int64_t exponent = 0;
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Digits beyond what any Decimal holds only tell on which side of a half the number lies.
constexpr std::size_t digitsKept = 60;

void addDigit(Parts& parts, char digit, bool fraction) {
    if (parts.digits.size() < digitsKept) {
        if (digit != '0' || !parts.digits.empty()) parts.digits.push_back(digit);
        if (fraction) --parts.exponent;
    } else {
        parts.more = parts.more || digit != '0';
        if (!fraction) ++parts.exponent;
    }
}

// "E+12" at the end of a number; false if it is something else.
bool readExponent(std::string_view text, std::int64_t& exponent) {
    constexpr std::int64_t beyondAnything = 1'000'000'000'000;
    if (text.empty()) return true;
    if (text[0] != 'e' && text[0] != 'E') return false;
    text.remove_prefix(1);
    const bool negative = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) text.remove_prefix(1);
    if (text.empty() || !std::all_of(text.begin(), text.end(), isDigit)) return false;
    std::int64_t value = 0;
    for (const char digit : text)
        value = std::min(beyondAnything, value * 10 + (digit - '0'));
    exponent += negative ? -value : value;
    return true;
}

std::optional<Parts> takeApart(std::string_view text) {
    Parts parts;
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        parts.negative = text[at++] == '-';
    std::size_t count = 0;
    for (; at < text.size() && isDigit(text[at]); ++at, ++count)
        addDigit(parts, text[at], false);
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && isDigit(text[at]); ++at, ++count)
            addDigit(parts, text[at], true);
    }
    if (count == 0 || !readExponent(text.substr(at), parts.exponent)) return std::nullopt;
    return parts;
}

// Brings the parts into a Decimal's range: scale 0 to 28, 96 bits.
std::optional<Decimal> assembled(Parts parts) {
    if (parts.digits.empty()) return Decimal();
    if (parts.exponent > 0) {
        if (parts.digits.size() + static_cast<std::uint64_t>(parts.exponent) >
            largestMantissa.size())
            return std::nullopt;
        parts.digits.append(static_cast<std::size_t>(parts.exponent), '0');
        parts.exponent = 0;
    }
    const auto scale = static_cast<std::uint64_t>(-parts.exponent);
    std::uint64_t drop = scale > maximumScale ? scale - maximumScale : 0;
    std::string digits = roundedDigits(parts.digits, drop, parts.more);
    while (!fitsMantissa(digits)) {
        if (++drop > scale) return std::nullopt;
        digits = roundedDigits(parts.digits, drop, parts.more);
    }
    const Mantissa mantissa = mantissaOf(digits);
    const bool zero = mantissa.high == 0 && mantissa.low == 0;
    return Decimal::fromParts(parts.negative && !zero, mantissa.high, mantissa.low,
                              zero ? 0 : static_cast<unsigned>(scale - drop));
}

std::strong_ordering compareMagnitudes(const Decimal& a, const Decimal& b) {
    Wide left(a.high(), a.low());
    Wide right(b.high(), b.low());
    for (unsigned scale = a.scale(); scale < b.scale(); ++scale)
        left.multiplyAdd(10, 0);
    for (unsigned scale = b.scale(); scale < a.scale(); ++scale)
        right.multiplyAdd(10, 0);
    return std::lexicographical_compare_three_way(left.limbs.rbegin(), left.limbs.rend(),
                                                  right.limbs.rbegin(), right.limbs.rend());
}

bool isZero(const Decimal& value) {
    return value.high() == 0 && value.low() == 0;
}

} // namespace

Decimal::Decimal(std::int64_t value) : Decimal(fromScaled(value, 0)) {}

Decimal Decimal::fromScaled(std::int64_t mantissa, unsigned scale) {
    const auto magnitude = static_cast<std::uint64_t>(mantissa);
    return fromParts(mantissa < 0, 0, mantissa < 0 ? 0 - magnitude : magnitude, scale);
}

Decimal Decimal::fromParts(bool negative, std::uint32_t high, std::uint64_t low, unsigned scale) {
    if (scale > maximumScale) throw erroreArgomento();
    Decimal result;
    result.negative_ = negative;
    result.high_ = high;
    result.low_ = low;
    result.scale_ = static_cast<std::uint8_t>(scale);
    return result;
}

std::optional<Decimal> Decimal::fromDouble(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, 14);
    std::optional<Parts> parts =
        takeApart({text.data(), static_cast<std::size_t>(end.ptr - text.data())});
    while (parts->digits.size() > 1 && parts->digits.back() == '0') {
        parts->digits.pop_back();
        ++parts->exponent;
    }
    return assembled(std::move(*parts));
}

std::optional<Decimal> Decimal::fromText(std::string_view text) {
    std::optional<Parts> parts = takeApart(text);
    if (!parts) return std::nullopt;
    return assembled(std::move(*parts));
}

Decimal Decimal::rounded(unsigned decimals) const {
    if (scale_ <= decimals) return *this;
    const std::size_t drop = scale_ - decimals;
    const std::string digits = roundedDigits(Wide(high_, low_).digits(), drop, false);
    const Mantissa mantissa = mantissaOf(digits);
    return fromParts(negative_, mantissa.high, mantissa.low, decimals);
}

// Correctly rounded, as reading the digits is.
double Decimal::toDouble() const {
    const std::string text = toText();
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string Decimal::toText() const {
    std::string digits = Wide(high_, low_).digits();
    if (scale_ > 0) {
        if (digits.size() <= scale_) digits.insert(0, scale_ + 1 - digits.size(), '0');
        digits.insert(digits.size() - scale_, 1, '.');
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
    }
    return negative_ && !norvel::isZero(*this) ? "-" + digits : digits;
}

bool Decimal::operator==(const Decimal& other) const {
    return std::is_eq(*this <=> other);
}

std::strong_ordering Decimal::operator<=>(const Decimal& other) const {
    const bool minus = negative_ && !norvel::isZero(*this);
    const bool otherMinus = other.negative_ && !norvel::isZero(other);
    if (minus != otherMinus)
        return minus ? std::strong_ordering::less : std::strong_ordering::greater;
    return minus ? compareMagnitudes(other, *this) : compareMagnitudes(*this, other);
}

} // namespace norvel
