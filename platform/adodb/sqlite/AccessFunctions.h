// The functions and the collation that the host's notation expects of its database.
#pragma once

#include <string_view>

struct sqlite3;

namespace norvel::adodb {

// datediff(interval, a, b): how many borders of the interval lie between a and b, as Access counts
// them: 'yyyy' years, 'q' quarters, 'm' months, 'd' or 'y' days, 'ww' Sundays, 'h', 'n', 's' hours,
// minutes, seconds; 'w' whole weeks. NULL where a or b is. Dates are ISO texts, Italian texts, or
// numbers by SQLite's convention; anything else is an error of the statement.
//
// nr_data: texts in byte order, but a midnight equals its day and 'T' equals the blank before a
// time.
// nr_testo: texts without case, in the order of an Italian list.
void addAccessFunctions(sqlite3* db);

// Name of the collation by which texts of Access compare.
inline constexpr const char* textCollation = "nr_testo";

// The order of nr_data: <0, 0, >0.
int compareDateTexts(std::string_view a, std::string_view b);

} // namespace norvel::adodb
