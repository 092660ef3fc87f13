#include "platform/adodb/store/IsoDate.h"

#include "platform/runtime/Formats.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>

namespace norvel::adodb {

namespace {

constexpr double julianDayOfZero = 2415018.5; // 30 December 1899, midnight
constexpr double unixDayOfZero = 25569;       // 1 January 1970 in OLE days
constexpr double firstDay = -657434;          // 1 January 100
constexpr double endDay = 2958466;            // 1 January 10000

// OLE days before day 0 carry the time of day as a fraction away from zero.
std::optional<double> fromLinear(double days) {
    if (!(days >= firstDay && days < endDay)) return std::nullopt;
    if (days >= 0) return days;
    const double day = std::floor(days);
    return day - (days - day);
}

// Reads exactly digits digits at position; -1 where they are not digits.
int number(std::string_view text, std::size_t position, std::size_t digits) {
    if (text.size() < position + digits) return -1;
    int value = 0;
    for (std::size_t i = position; i < position + digits; ++i) {
        const unsigned digit = static_cast<unsigned char>(text[i]) - unsigned{'0'};
        if (digit > 9) return -1;
        value = value * 10 + static_cast<int>(digit);
    }
    return value;
}

bool isLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int daysInMonth(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : days[month - 1];
}

// Days since 30 December 1899. Years are counted from March, so that the leap day comes last.
int dayNumber(int year, int month, int day) {
    const int shiftedYear = month > 2 ? year : year - 1;
    const int shiftedMonth = month > 2 ? month - 3 : month + 9;
    const int daysBefore = 365 * shiftedYear + shiftedYear / 4 - shiftedYear / 100 +
                           shiftedYear / 400 + (153 * shiftedMonth + 2) / 5;
    constexpr int dayZero = 693900; // 30 December 1899 by the count above
    return daysBefore + day - dayZero;
}

// The fraction of a day that "hh:mm[:ss[.fraction]]" is; -1 where the text is no time.
double parseTime(std::string_view text) {
    const int hour = number(text, 0, 2);
    const int minute = number(text, 3, 2);
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || text[2] != ':') return -1;
    double seconds = hour * 3600.0 + minute * 60.0;
    if (text.size() == 5) return seconds / 86400.0;
    const int second = number(text, 6, 2);
    if (second < 0 || second > 59 || text[5] != ':') return -1;
    seconds += second;
    if (text.size() == 8) return seconds / 86400.0;
    if (text[8] != '.' || text.size() == 9 || text.size() > 18) return -1;
    const int fraction = number(text, 9, text.size() - 9);
    if (fraction < 0) return -1;
    seconds += fraction / std::pow(10.0, static_cast<double>(text.size() - 9));
    return seconds / 86400.0;
}

} // namespace

std::optional<double> parseIsoDate(std::string_view text) {
    if (text.size() >= 5 && text[2] == ':') {
        const double time = parseTime(text);
        return time < 0 ? std::nullopt : std::optional(time);
    }
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const int year = number(text, 0, 4);
    const int month = number(text, 5, 2);
    const int day = number(text, 8, 2);
    if (year < 100 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month))
        return std::nullopt;
    const double days = dayNumber(year, month, day);
    if (text.size() == 10) return days;
    if (text[10] != ' ' && text[10] != 'T') return std::nullopt;
    const double time = parseTime(text.substr(11));
    if (time < 0) return std::nullopt;
    return days < 0 ? days - time : days + time;
}

std::string isoText(double days, DataTypeEnum type) {
    const CivilDate date = civilDate({days});
    const CivilTime time = civilTime({days});
    std::array<char, 32> text{};
    const auto print = [&](const char* format, auto... parts) {
        std::snprintf(text.data(), text.size(), format, parts...);
        return std::string(text.data());
    };
    std::string clock = print("%02d:%02d:%02d", time.hour, time.minute, time.second);
    if (type == adDBTime) return clock;
    std::string day = print("%04d-%02d-%02d", date.year, date.month, date.day);
    const bool midnight = time.hour == 0 && time.minute == 0 && time.second == 0;
    return midnight && (type == adDate || type == adDBDate) ? day : day + " " + clock;
}

std::optional<double> dateFromJulianDay(double julianDay) {
    return fromLinear(julianDay - julianDayOfZero);
}

std::optional<double> dateFromUnixTime(std::int64_t seconds) {
    return fromLinear(static_cast<double>(seconds) / 86400.0 + unixDayOfZero);
}

} // namespace norvel::adodb
