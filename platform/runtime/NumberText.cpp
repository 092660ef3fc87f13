#include "platform/runtime/Formats.h"
#include "platform/runtime/NumberReading.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace norvel {
namespace {

constexpr std::string_view euro = "\u20AC";

// The blank at the start of text, "" if it starts with none.
std::string_view leadingBlank(std::string_view text) {
    for (const std::string_view blank : {" ", "\t", "\r", "\n", "\v", "\f", "\u00A0", "\u202F"}) {
        if (text.starts_with(blank)) return text.substr(0, blank.size());
    }
    return {};
}

std::string_view trailingBlank(std::string_view text) {
    for (const std::string_view blank : {" ", "\t", "\r", "\n", "\v", "\f", "\u00A0", "\u202F"}) {
        if (text.ends_with(blank)) return text.substr(text.size() - blank.size());
    }
    return {};
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view leadingDigits(std::string_view text) {
    return text.substr(0, static_cast<std::size_t>(
                              std::find_if_not(text.begin(), text.end(), isDigit) - text.begin()));
}

// Takes the whole part off text: digits, or groups of three behind '.'. nullopt where a '.' groups
// nothing.
std::optional<std::string> takeWholePart(std::string_view& text) {
    std::string_view group = leadingDigits(text);
    std::string digits(group);
    text.remove_prefix(group.size());
    if (!text.starts_with('.')) return digits;
    if (digits.empty() || digits.size() > 3 || digits[0] == '0') return std::nullopt;
    while (text.starts_with('.')) {
        text.remove_prefix(1);
        group = leadingDigits(text);
        if (group.size() != 3) return std::nullopt;
        digits += group;
        text.remove_prefix(3);
    }
    return digits;
}

// digits [, digits] [E [sign] digits]
std::optional<std::string> unsignedNumber(std::string_view text) {
    std::optional<std::string> result = takeWholePart(text);
    if (!result) return std::nullopt;
    std::string_view fraction;
    if (text.starts_with(',')) {
        text.remove_prefix(1);
        fraction = leadingDigits(text);
        text.remove_prefix(fraction.size());
    }
    if (result->empty() && fraction.empty()) return std::nullopt;
    if (result->empty()) result->push_back('0');
    if (!fraction.empty()) result->append(".").append(fraction);
    if (text.empty()) return result;
    if (text[0] != 'e' && text[0] != 'E') return std::nullopt;
    text.remove_prefix(1);
    const bool minus = text.starts_with('-');
    if (minus || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty() || leadingDigits(text).size() != text.size()) return std::nullopt;
    return result->append(minus ? "e-" : "e").append(text);
}

// Where the first digit that is not 0 stands, the exponent counted in: 1 for units, 2 for tens, 0
// for tenths. Tells a number too large for a double from one too small.
std::int64_t firstDigitPlace(std::string_view invariant) {
    const std::size_t e = std::min(invariant.find('e'), invariant.size());
    std::string_view digits = invariant.substr(0, e);
    if (digits.starts_with('-')) digits.remove_prefix(1);
    std::int64_t exponent = 0;
    if (e < invariant.size()) {
        const std::string_view text = invariant.substr(e + 1);
        if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc{})
            exponent = text.starts_with('-') ? std::numeric_limits<std::int32_t>::min()
                                             : std::numeric_limits<std::int32_t>::max();
    }
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    return (first < point ? point - first : point - first + 1) + exponent;
}

template <typename Float>
std::string floatToText(Float value, int digits) {
    if (std::isnan(value)) return "-1,#IND";
    if (std::isinf(value)) return value < 0 ? "-1,#INF" : "1,#INF";
    if (value == 0) return "0"; // without the sign of -0
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::general, digits);
    for (char* at = text.data(); at != result.ptr; ++at) {
        if (*at == '.') *at = ',';
        if (*at == 'e') *at = 'E';
    }
    return {text.data(), result.ptr};
}

} // namespace

std::string_view trimmedBlanks(std::string_view text) {
    for (auto blank = leadingBlank(text); !blank.empty(); blank = leadingBlank(text))
        text.remove_prefix(blank.size());
    for (auto blank = trailingBlank(text); !blank.empty(); blank = trailingBlank(text))
        text.remove_suffix(blank.size());
    return text;
}

std::optional<std::string> invariantNumber(std::string_view text) {
    text = trimmedBlanks(text);
    bool signSeen = false;
    bool euroSeen = text.ends_with(euro);
    bool negative = false;
    if (euroSeen) text = trimmedBlanks(text.substr(0, text.size() - euro.size()));
    while (!text.empty()) {
        if (!signSeen && (text[0] == '-' || text[0] == '+')) {
            signSeen = true;
            negative = text[0] == '-';
            text = trimmedBlanks(text.substr(1));
        } else if (!euroSeen && text.starts_with(euro)) {
            euroSeen = true;
            text = trimmedBlanks(text.substr(euro.size()));
        } else {
            break;
        }
    }
    std::optional<std::string> result = unsignedNumber(text);
    if (result && negative) result->insert(0, 1, '-');
    return result;
}

double doubleOfInvariant(std::string_view invariant) {
    double value = 0;
    const char* const end = invariant.data() + invariant.size();
    if (std::from_chars(invariant.data(), end, value).ec != std::errc::result_out_of_range)
        return value;
    const bool negative = invariant.starts_with('-');
    const double magnitude =
        firstDigitPlace(invariant) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -magnitude : magnitude;
}

std::string numberToText(double value) {
    return floatToText(value, 15);
}
std::string numberToText(float value) {
    return floatToText(value, 7);
}
std::string booleanToText(bool value) {
    return value ? "True" : "False";
}

std::optional<double> textToNumber(std::string_view text) {
    const std::optional<std::string> invariant = invariantNumber(text);
    if (!invariant) return std::nullopt;
    const double value = doubleOfInvariant(*invariant);
    if (std::isinf(value)) return std::nullopt;
    return value;
}

} // namespace norvel
