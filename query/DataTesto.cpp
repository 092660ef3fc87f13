#include "query/DataTesto.h"

#include "platform/runtime/Formats.h"

#include <cmath>
#include <string>

namespace norvel::query {

std::optional<Date> leggiGiorno(std::string_view testo) {
    const std::optional<Date> data = textToDate(testo);
    if (!data || std::abs(data->days) >= 1) return data;
    // Day 0 is 30 December 1899 or a time alone: only a date takes another time behind it.
    return textToDate(std::string(testo).append(" 00:00")) ? data : std::nullopt;
}

} // namespace norvel::query
