// Dates between '#' in a filter.
#pragma once

#include <optional>
#include <string_view>

namespace norvel::adodb {

// OLE Automation days. With hyphens the day comes first (dd-mm-yyyy, as the filter bar writes it)
// or the year (yyyy-mm-dd); with slashes the month (mm/dd/yyyy, the hosts' neutral notation) or the
// year. Where that order is no date and day and month exchanged are one, it is that one. Years of
// two digits: 00-29 are 2000-2029, 30-99 are 1930-1999. A time may follow after a blank or a T
// (hh:mm or hh:mm:ss, also with dots). nullopt where the text is no date.
std::optional<double> filterDate(std::string_view text);

} // namespace norvel::adodb
