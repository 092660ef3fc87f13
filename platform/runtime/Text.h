// Text as every comparison of the system sees it: case-blind over all of Unicode, accents kept
// apart.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace norvel {

// True where the two UTF-8 texts are the same but for case ("À" equals "à", not "a").
NR_API bool equalsText(std::string_view a, std::string_view b);
// <0, 0, >0: a total order consistent with equalsText (no collation: for look-up tables, not
// lists).
NR_API int compareText(std::string_view a, std::string_view b);
// <0, 0, >0 by Italian collation, case-blind: the order in which an operator expects a list.
NR_API int collateText(std::string_view a, std::string_view b);
// The form in which case-blind equal texts are byte-equal. Folding is made once, comparing is
// cheap.
NR_API std::string foldText(std::string_view text);
// Byte position of needle in text at or after start, ignoring case; std::string::npos if absent.
NR_API std::size_t findText(std::string_view text, std::string_view needle, std::size_t start = 0);
NR_API std::string replaceText(std::string_view text, std::string_view from, std::string_view to);
NR_API std::vector<std::string> splitText(std::string_view text, std::string_view separator);
// Blanks (0x20) off both ends.
NR_API std::string trimText(std::string_view text);

NR_API bool isValidUtf8(std::string_view text);
// The text itself if it is valid UTF-8, else its bytes read as Windows-1252, which is what old
// Italian databases hold; no byte is lost.
NR_API std::string toValidUtf8(std::string_view text);
// Number of Unicode code points.
NR_API std::size_t lengthText(std::string_view text);

struct LessText {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return compareText(a, b) < 0; }
};

} // namespace norvel
