// Dates as SQLite keeps them, to and from OLE Automation days.
#pragma once

#include "platform/adodb/Constants.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace norvel::adodb {

// "yyyy-mm-dd", optionally followed by a blank or 'T' and "hh:mm[:ss[.fraction]]", or such a time
// alone; years 100 to 9999. nullopt for every other text, one with a time zone included.
std::optional<double> parseIsoDate(std::string_view text);

// The text that parseIsoDate reads back, to whole seconds: "yyyy-mm-dd hh:mm:ss"; a date without a
// time for adDate and adDBDate where there is none, a time alone for adDBTime.
std::string isoText(double days, DataTypeEnum type);

// A number in a date column, by SQLite's own convention (its "Date and Time Datatype" page): a REAL
// is a Julian day, an INTEGER counts the seconds since 1970. nullopt outside the years 100 to 9999.
std::optional<double> dateFromJulianDay(double julianDay);
std::optional<double> dateFromUnixTime(std::int64_t seconds);

} // namespace norvel::adodb
