// A value as a cell shows it: one short line of valid text.
#pragma once

#include "platform/runtime/Variant.h"

#include <cstddef>
#include <string>

namespace norvel::grid {

// The longest text a cell keeps, in bytes of UTF-8: more than the widest screen shows, so that a
// text of megabytes costs a cell no more than a name.
inline constexpr std::size_t maxCellBytes = 1024;

// The value as one line: Null and Empty blank; control characters and line breaks as one blank (CR
// LF together); bytes that are no UTF-8 read as Windows-1252; a longer text cut at a character,
// with "…" behind it; a BLOB as "(binario)", an object or an array as "(oggetto)". Never raises.
NR_API std::string cellText(const Variant& value);
// The same with a text of any length whole: for what is not a screen.
NR_API std::string wholeCellText(const Variant& value);

} // namespace norvel::grid
