// Texts that name a day.
#pragma once

#include "platform/runtime/Variant.h"

#include <optional>
#include <string_view>

namespace norvel::query {

// The platform's date test (day first, month first where that alone is a date, year first), but for
// a bare time of day, which names no day: "15.03" on the way to "15.03.2011" is none.
std::optional<Date> leggiGiorno(std::string_view testo);

} // namespace norvel::query
