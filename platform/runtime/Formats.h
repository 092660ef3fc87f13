// Numbers, dates and Booleans as text and back, by Italian conventions whatever the host's locale:
// decimal comma, dd/mm/yyyy, "True"/"False".
#pragma once

#include "platform/runtime/Variant.h"

#include <optional>
#include <string>
#include <string_view>

namespace norvel {

struct CivilDate {
    int year = 1899, month = 12, day = 30;
    bool operator==(const CivilDate&) const = default;
};
struct CivilTime {
    int hour = 0, minute = 0, second = 0;
    bool operator==(const CivilTime&) const = default;
};

// A double with up to 15 significant digits, decimal comma, as a host converts numbers to text
// ("1234,5", "1E+20"); single precision has 7 digits.
NR_API std::string numberToText(double value);
NR_API std::string numberToText(float value);
// "03/05/2011", with " 14.30.00" behind it when the time is not midnight; a pure time (day 0) is
// the time alone. A number of days that is no valid date is shown as the number.
NR_API std::string dateToText(Date date);
NR_API std::string booleanToText(bool value); // "True" / "False"

// Italian reading: blanks around, sign, '.' as thousands separator, ',' as decimal separator,
// exponent, "€". nullopt where the text is no number.
NR_API std::optional<double> textToNumber(std::string_view text);
// The platform's date test, Italian: dd/mm/yyyy (also - and .), yyyy-mm-dd, two-digit years
// (00-29 are 2000-2029, 30-99 are 1930-1999), optional time; mm/dd/yyyy where the day-first reading
// is no date but this one is. nullopt where the text is no date.
NR_API std::optional<Date> textToDate(std::string_view text);

// True for 1 January 100 to 31 December 9999, the range of an automation host's dates.
NR_API bool isValidDate(Date date);
// nullopt where there is no such day or time, or not in that range.
NR_API std::optional<Date> makeDate(CivilDate date, CivilTime time = {});
// The nearest valid date's; a time within half a second of midnight is the next day's.
NR_API CivilDate civilDate(Date date);
NR_API CivilTime civilTime(Date date); // rounded to whole seconds

} // namespace norvel
