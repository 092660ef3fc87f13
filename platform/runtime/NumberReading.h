// Numbers in Italian texts, for the readers of this folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvel {

// The number that an Italian text holds, in invariant notation ("-1234.5e3"); nullopt if it holds
// none.
std::optional<std::string> invariantNumber(std::string_view text);

// A number in invariant notation as a double; infinite where it is too large for one.
double doubleOfInvariant(std::string_view invariant);

// Blanks off both ends: spaces, tabs, line ends, and the no-break spaces of formatted numbers.
std::string_view trimmedBlanks(std::string_view text);

} // namespace norvel
