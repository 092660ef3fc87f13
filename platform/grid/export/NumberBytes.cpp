#include "platform/grid/export/NumberBytes.h"

#include "platform/runtime/Formats.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstring>
#include <string>

namespace norvel::grid {

namespace {

constexpr std::size_t longestInteger = 20;

void append(GrowingBytes& out, const std::string& text) {
    std::memcpy(out.extend(text.size()), text.data(), text.size());
}

char* twoDigits(char* at, unsigned value) {
    at[0] = static_cast<char>('0' + value / 10);
    at[1] = static_cast<char>('0' + value % 10);
    return at + 2;
}

} // namespace

void appendInteger(GrowingBytes& out, std::int64_t value) {
    const std::size_t before = out.size();
    char* const start = out.extend(longestInteger);
    const auto end = std::to_chars(start, start + longestInteger, value);
    out.shrink(before + static_cast<std::size_t>(end.ptr - start));
}

// A double that is the one nearest to a number of at most 15 digits, four of them decimals, is
// written as that number: 15 digits are what every double keeps.
void appendDouble(GrowingBytes& out, double value) {
    constexpr double tenThousand = 1e4;
    constexpr double most = 1e14; // below 15 digits
    const double scaled = std::nearbyint(value * tenThousand);
    if (std::abs(scaled) < most && scaled / tenThousand == value)
        return appendScaled(out, static_cast<std::int64_t>(scaled), 4);
    append(out, numberToText(value));
}

void appendScaled(GrowingBytes& out, std::int64_t mantissa, unsigned scale) {
    for (; scale > 0 && mantissa % 10 == 0; --scale)
        mantissa /= 10;
    if (scale == 0) return appendInteger(out, mantissa);
    constexpr std::size_t longest = 2 * longestInteger;
    const std::size_t before = out.size();
    char* const start = out.extend(longest);
    char* at = start;
    auto rest = static_cast<std::uint64_t>(mantissa);
    if (mantissa < 0) {
        *at++ = '-';
        rest = 0 - rest;
    }
    std::uint64_t unit = 1;
    for (unsigned i = 0; i < scale; ++i)
        unit *= 10;
    at = std::to_chars(at, start + longest, rest / unit).ptr;
    *at++ = ',';
    rest %= unit;
    for (unit /= 10; unit > 0; unit /= 10) {
        *at++ = static_cast<char>('0' + rest / unit);
        rest %= unit;
    }
    out.shrink(before + static_cast<std::size_t>(at - start));
}

void appendDays(GrowingBytes& out, std::int32_t days) {
    using namespace std::chrono;
    const Date date{static_cast<double>(days)};
    if (days == 0 || !isValidDate(date)) return append(out, dateToText(date));
    constexpr sys_days dayZero = year{1899} / December / day{30};
    const year_month_day civil{dayZero + std::chrono::days{days}};
    char* at = out.extend(10);
    at = twoDigits(at, static_cast<unsigned>(civil.day()));
    *at++ = '/';
    at = twoDigits(at, static_cast<unsigned>(civil.month()));
    *at++ = '/';
    const auto number = static_cast<unsigned>(static_cast<int>(civil.year()));
    twoDigits(twoDigits(at, number / 100), number % 100);
}

} // namespace norvel::grid
