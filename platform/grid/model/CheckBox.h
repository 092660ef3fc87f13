// Values shown as check boxes.
#pragma once

#include "platform/grid/model/Model.h"

#include <optional>
#include <string_view>

namespace norvel::grid {

enum class Check { Blank, Clear, Checked };

NR_API bool showsCheckBoxes(const Column& column);

// What a cell's text (CellText.h) is as a check box: none for a Null, a clear one for 0 and False,
// a checked one for any other number and True. nullopt: it is no such value, and is shown as the
// text.
NR_API std::optional<Check> checkOf(std::string_view cellText);

} // namespace norvel::grid
