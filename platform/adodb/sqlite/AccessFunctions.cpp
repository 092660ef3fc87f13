#include "platform/adodb/sqlite/AccessFunctions.h"

#include "platform/adodb/sqlite/AccessNotation.h"
#include "platform/adodb/store/IsoDate.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <optional>

namespace norvel::adodb {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

std::optional<double> oleDays(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return dateFromUnixTime(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return dateFromJulianDay(sqlite3_value_double(value));
    case SQLITE_TEXT:
        break;
    default:
        return std::nullopt;
    }
    if (const auto days = parseIsoDate(textOf(value))) return days;
    const auto date = textToDate(textOf(value));
    return date ? std::optional(date->days) : std::nullopt;
}

// A moment as a day number and the seconds of that day, and as a calendar date.
struct Moment {
    explicit Moment(double ole) : day(static_cast<std::int64_t>(std::trunc(ole))) {
        seconds = static_cast<std::int64_t>(std::llround(std::abs(ole - std::trunc(ole)) * 86400));
        date = civilDate(Date{static_cast<double>(day)});
    }
    std::int64_t day;
    std::int64_t seconds = 0;
    CivilDate date;
    std::int64_t total() const { return day * 86400 + seconds; }
    std::int64_t months() const { return std::int64_t{date.year} * 12 + date.month - 1; }
};

std::int64_t floorDiv(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

// The number of the interval that the moment lies in; the difference of two is the answer.
std::optional<std::int64_t> intervalNumber(std::string_view interval, const Moment& m) {
    if (equalsText(interval, "yyyy")) return m.date.year;
    if (equalsText(interval, "q")) return floorDiv(m.months(), 3);
    if (equalsText(interval, "m")) return m.months();
    if (equalsText(interval, "d") || equalsText(interval, "y")) return m.day;
    if (equalsText(interval, "ww")) return floorDiv(m.day - 1, 7); // day 1 was a Sunday
    if (equalsText(interval, "h")) return floorDiv(m.total(), 3600);
    if (equalsText(interval, "n")) return floorDiv(m.total(), 60);
    if (equalsText(interval, "s")) return m.total();
    return std::nullopt;
}

std::optional<std::int64_t> difference(std::string_view interval, double a, double b) {
    const Moment from(a);
    const Moment to(b);
    if (equalsText(interval, "w")) return (to.day - from.day) / 7;
    const auto first = intervalNumber(interval, from);
    const auto last = intervalNumber(interval, to);
    if (!first || !last) return std::nullopt;
    return *last - *first;
}

void datediff(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[1]) == SQLITE_NULL ||
        sqlite3_value_type(arguments[2]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto a = oleDays(arguments[1]);
    const auto b = oleDays(arguments[2]);
    if (!a || !b) {
        sqlite3_result_error(context, "datediff: un argomento non è una data", -1);
        return;
    }
    if (const auto days = difference(textOf(arguments[0]), *a, *b))
        sqlite3_result_int64(context, *days);
    else
        sqlite3_result_error(context, "datediff: intervallo sconosciuto", -1);
}

bool isMidnight(std::string_view time) {
    if (!time.starts_with("00:00")) return false;
    return time.find_first_not_of("0:.", 5) == std::string_view::npos;
}

// A text without the midnight at its end.
std::string_view dayOf(std::string_view text) {
    const bool dated = text.size() >= 16 && text[4] == '-' && text[7] == '-' &&
                       (text[10] == ' ' || text[10] == 'T');
    return dated && isMidnight(text.substr(11)) ? text.substr(0, 10) : text;
}

char separatorAsBlank(std::string_view text, std::size_t at) {
    return at == 10 && text[at] == 'T' && text[4] == '-' ? ' ' : text[at];
}

int collate(void* /*unused*/, int lengthA, const void* a, int lengthB, const void* b) {
    return compareDateTexts({static_cast<const char*>(a), static_cast<std::size_t>(lengthA)},
                            {static_cast<const char*>(b), static_cast<std::size_t>(lengthB)});
}

int collateTexts(void* /*unused*/, int lengthA, const void* a, int lengthB, const void* b) {
    return collateText({static_cast<const char*>(a), static_cast<std::size_t>(lengthA)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(lengthB)});
}

} // namespace

int compareDateTexts(std::string_view a, std::string_view b) {
    const std::string_view left = dayOf(a);
    const std::string_view right = dayOf(b);
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        const auto l = static_cast<unsigned char>(separatorAsBlank(left, i));
        const auto r = static_cast<unsigned char>(separatorAsBlank(right, i));
        if (l != r) return l < r ? -1 : 1;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

void addAccessFunctions(sqlite3* db) {
    sqlite3_create_function_v2(db, "datediff", 3,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               datediff, nullptr, nullptr, nullptr);
    sqlite3_create_collation_v2(db, dateCollation, SQLITE_UTF8, nullptr, collate, nullptr);
    sqlite3_create_collation_v2(db, textCollation, SQLITE_UTF8, nullptr, collateTexts, nullptr);
}

} // namespace norvel::adodb
