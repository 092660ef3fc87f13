#include "platform/runtime/Formats.h"
#include "platform/runtime/NumberReading.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace norvel {
namespace {

constexpr std::int64_t secondsPerDay = 86'400;
constexpr int firstYear = 100; // as OLE Automation's DATE
constexpr int lastYear = 9999;

constexpr std::chrono::sys_days dayZero =
    std::chrono::year{1899} / std::chrono::December / std::chrono::day{30};
constexpr std::int64_t firstDay =
    (std::chrono::sys_days{std::chrono::year{firstYear} / std::chrono::January / 1} - dayZero)
        .count();
constexpr std::int64_t lastDay =
    (std::chrono::sys_days{std::chrono::year{lastYear} / std::chrono::December / 31} - dayZero)
        .count();

// A date taken apart: the day, and the second of the day, whatever the sign of the day. The
// fraction of a negative DATE counts forward from the day's midnight too.
struct DayAndSecond {
    std::int64_t day = 0;
    std::int64_t second = 0;
};

DayAndSecond takenApart(Date date) {
    if (std::isnan(date.days)) return {};
    const double days =
        std::clamp(date.days, static_cast<double>(firstDay) - 1, static_cast<double>(lastDay) + 1);
    const double whole = std::trunc(days);
    DayAndSecond result{static_cast<std::int64_t>(whole),
                        std::llround(std::abs(days - whole) * static_cast<double>(secondsPerDay))};
    if (result.second >= secondsPerDay) {
        ++result.day;
        result.second = 0;
    }
    if (result.day < firstDay) return {firstDay, 0};
    if (result.day > lastDay) return {lastDay, secondsPerDay - 1};
    return result;
}

Date putTogether(std::int64_t day, double secondOfDay) {
    const double fraction = secondOfDay / static_cast<double>(secondsPerDay);
    const auto days = static_cast<double>(day);
    return {day < 0 ? days - fraction : days + fraction};
}

std::optional<std::int64_t> dayOf(CivilDate date) {
    const auto within = [](int value, int low, int high) { return value >= low && value <= high; };
    if (!within(date.year, firstYear, lastYear) || !within(date.month, 1, 12) ||
        !within(date.day, 1, 31))
        return std::nullopt;
    const std::chrono::year_month_day civil{std::chrono::year{date.year},
                                            std::chrono::month(static_cast<unsigned>(date.month)),
                                            std::chrono::day(static_cast<unsigned>(date.day))};
    if (!civil.ok()) return std::nullopt;
    return (std::chrono::sys_days{civil} - dayZero).count();
}

bool isTime(CivilTime time) {
    return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
           time.second >= 0 && time.second < 60;
}

// Reads a text from left to right; every take… says whether it took something.
class Reader {
  public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    bool take(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    // One of the characters; 0 if none.
    char takeOneOf(std::string_view characters) {
        if (rest_.empty() || characters.find(rest_[0]) == std::string_view::npos) return '\0';
        const char c = rest_[0];
        rest_.remove_prefix(1);
        return c;
    }

    // All digits that stand here; count is 0 if there are none or more than nine.
    int takeNumber(std::size_t& count) {
        count = 0;
        int value = 0;
        while (count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9')
            ++count;
        if (count > 9) count = 0;
        for (const char digit : rest_.substr(0, count))
            value = value * 10 + (digit - '0');
        rest_.remove_prefix(count);
        return value;
    }

    // A number of one or two digits, or of exactly two; -1 if it is not there.
    int takeShort(bool exactlyTwo = false) {
        std::size_t count = 0;
        const int value = takeNumber(count);
        return count == 2 || (count == 1 && !exactlyTwo) ? value : -1;
    }

    bool takeBlanks() {
        const std::size_t before = rest_.size();
        while (take(' ') || take('\t')) {
        }
        return rest_.size() < before;
    }

    bool takeWord(std::string_view word) {
        if (!equalsText(rest_.substr(0, word.size()), word)) return false;
        rest_.remove_prefix(word.size());
        return true;
    }

  private:
    std::string_view rest_;
};

int fullYear(int year, std::size_t digits) {
    if (digits == 2) return year < 30 ? 2000 + year : 1900 + year;
    return digits == 4 ? year : -1;
}

// dd/mm/yyyy, mm/dd/yyyy where that alone is a date, yyyy-mm-dd; separators '/', '-' or '.'.
std::optional<std::int64_t> takeDate(Reader& text) {
    std::size_t firstDigits = 0;
    const int first = text.takeNumber(firstDigits);
    const char separator = text.takeOneOf("/-.");
    const int second = text.takeShort();
    if (firstDigits == 0 || separator == '\0' || second < 0 || !text.take(separator))
        return std::nullopt;
    std::size_t thirdDigits = 0;
    const int third = text.takeNumber(thirdDigits);
    if (firstDigits == 4) {
        if (thirdDigits < 1 || thirdDigits > 2) return std::nullopt;
        return dayOf({first, second, third});
    }
    if (firstDigits > 2) return std::nullopt;
    const int year = fullYear(third, thirdDigits);
    const std::optional<std::int64_t> dayFirst = dayOf({year, second, first});
    return dayFirst ? dayFirst : dayOf({year, first, second});
}

// The fraction of a second behind "14:30:00", as data sources write it; 0 if there is none.
std::optional<double> takeFraction(Reader& text) {
    if (text.takeOneOf(".,") == '\0') return 0.0;
    std::size_t digits = 0;
    const int value = text.takeNumber(digits);
    if (digits == 0) return std::nullopt;
    return value / std::pow(10.0, static_cast<double>(digits));
}

// hour on a clock of twelve, as the "AM" or "PM" behind the time says; -1 if there is no such hour.
int hourWithHalf(Reader& text, int hour) {
    Reader ahead = text;
    ahead.takeBlanks();
    const bool afternoon = ahead.takeWord("PM");
    if (!afternoon && !ahead.takeWord("AM")) return hour;
    text = ahead;
    if (hour < 1 || hour > 12) return -1;
    return hour % 12 + (afternoon ? 12 : 0);
}

// hh:mm, hh:mm:ss, hh:mm:ss.fff, with ':' or '.' between; "AM" or "PM" behind. The second of the
// day.
std::optional<double> takeTime(Reader& text) {
    CivilTime time;
    time.hour = text.takeShort();
    const char separator = text.takeOneOf(":.");
    if (time.hour < 0 || separator == '\0') return std::nullopt;
    time.minute = text.takeShort(true);
    double fraction = 0;
    if (text.take(separator)) {
        time.second = text.takeShort(true);
        const std::optional<double> behind =
            separator == ':' ? takeFraction(text) : std::optional<double>(0.0);
        if (!behind) return std::nullopt;
        fraction = *behind;
    }
    time.hour = hourWithHalf(text, time.hour);
    if (!isTime(time)) return std::nullopt;
    return time.hour * 3600 + time.minute * 60 + time.second + fraction;
}

std::string padded(int value, std::size_t width) {
    std::string text = std::to_string(value);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

std::string timeToText(CivilTime time) {
    return padded(time.hour, 2) + "." + padded(time.minute, 2) + "." + padded(time.second, 2);
}

} // namespace

std::optional<Date> makeDate(CivilDate date, CivilTime time) {
    const std::optional<std::int64_t> day = dayOf(date);
    if (!day || !isTime(time)) return std::nullopt;
    return putTogether(*day, time.hour * 3600 + time.minute * 60 + time.second);
}

CivilDate civilDate(Date date) {
    const std::chrono::year_month_day civil{dayZero + std::chrono::days{takenApart(date).day}};
    return {static_cast<int>(civil.year()), static_cast<int>(static_cast<unsigned>(civil.month())),
            static_cast<int>(static_cast<unsigned>(civil.day()))};
}

CivilTime civilTime(Date date) {
    const auto second = static_cast<int>(takenApart(date).second);
    return {second / 3600, second / 60 % 60, second % 60};
}

bool isValidDate(Date date) {
    return date.days > static_cast<double>(firstDay) - 1 &&
           date.days < static_cast<double>(lastDay) + 1;
}

std::string dateToText(Date date) {
    if (!isValidDate(date)) return numberToText(date.days);
    const DayAndSecond parts = takenApart(date);
    const CivilTime time = civilTime(date);
    if (parts.day == 0) return timeToText(time);
    const CivilDate civil = civilDate(date);
    std::string text =
        padded(civil.day, 2) + "/" + padded(civil.month, 2) + "/" + padded(civil.year, 4);
    if (parts.second != 0) text += " " + timeToText(time);
    return text;
}

std::optional<Date> textToDate(std::string_view text) {
    text = trimmedBlanks(text);
    Reader dateFirst(text);
    if (const std::optional<std::int64_t> day = takeDate(dateFirst)) {
        if (dateFirst.atEnd()) return putTogether(*day, 0);
        if (dateFirst.takeBlanks() || dateFirst.take('T')) {
            const std::optional<double> second = takeTime(dateFirst);
            if (second && dateFirst.atEnd()) return putTogether(*day, *second);
        }
    }
    Reader timeAlone(text);
    const std::optional<double> second = takeTime(timeAlone);
    if (second && timeAlone.atEnd()) return putTogether(0, *second);
    return std::nullopt;
}

} // namespace norvel
