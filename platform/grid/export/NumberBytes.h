// Numbers and dates as numberToText and dateToText write them, straight into bytes.
#pragma once

#include "platform/grid/export/TextEscape.h"

#include <cstdint>

namespace norvel::grid {

void appendInteger(GrowingBytes& out, std::int64_t value);
void appendDouble(GrowingBytes& out, double value);
// mantissa / 10^scale; a currency's scale is 4.
void appendScaled(GrowingBytes& out, std::int64_t mantissa, unsigned scale);
void appendDays(GrowingBytes& out, std::int32_t days); // OLE Automation days at midnight

} // namespace norvel::grid
