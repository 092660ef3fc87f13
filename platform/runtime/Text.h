// Text as every comparison of the system sees it: case-blind over all of Unicode, accents kept
// apart.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace norvel {

// Case is what Unicode's simple case folding takes away, one character for one and whatever the
// language: Σ, σ and ς are equal, ẞ equals ß; ß is not "ss", İ and ı are not i. An accented letter
// is the same whether it comes composed (à) or in pieces (a and a combining grave): both look alike
// to an operator. Bytes that are not UTF-8 equal themselves only.

// True where the two UTF-8 texts are the same but for case ("À" equals "à", not "a").
NR_API bool equalsText(std::string_view a, std::string_view b);
// <0, 0, >0: a total order consistent with equalsText (no collation: for look-up tables, not
// lists).
NR_API int compareText(std::string_view a, std::string_view b);
// <0, 0, >0 by Italian collation, case-blind: the order in which an operator expects a list.
NR_API int collateText(std::string_view a, std::string_view b);
// Bytes that compare (as unsigned bytes, the shorter first) as collateText compares the texts: made
// once for each text, they make long sorts cheap. They are for this process: another release of the
// system may make others.
NR_API std::string collationKey(std::string_view text);
// The same behind what key holds.
NR_API void appendCollationKey(std::string& key, std::string_view text);
// The form in which case-blind equal texts are byte-equal. Folding is made once, comparing is
// cheap.
NR_API std::string foldText(std::string_view text);

// Where a needle stands in a text, in bytes. The length is the needle's own for ASCII texts, but
// may differ from it elsewhere (à in pieces is longer than à).
struct TextMatch {
    std::size_t position = std::string::npos;
    std::size_t length = 0;
};

// The first match at or after start, ignoring case; position npos if there is none. Whole
// characters match: "a" is not found in an à that comes in pieces. An empty needle is found at
// start.
NR_API TextMatch matchText(std::string_view text, std::string_view needle, std::size_t start = 0);
// Its position only.
NR_API std::size_t findText(std::string_view text, std::string_view needle, std::size_t start = 0);
// Every from becomes to, left to right, ignoring case; an empty from changes nothing.
NR_API std::string replaceText(std::string_view text, std::string_view from, std::string_view to);
// The parts between the separators, ignoring case: one more than there are separators. An empty
// text has no parts; an empty separator leaves the text whole.
NR_API std::vector<std::string> splitText(std::string_view text, std::string_view separator);
// Blanks (0x20) off both ends.
NR_API std::string trimText(std::string_view text);

NR_API bool isValidUtf8(std::string_view text);
// The text itself if it is valid UTF-8, else its bytes read as Windows-1252, which is what old
// Italian databases hold; no byte is lost.
NR_API std::string toValidUtf8(std::string_view text);
// Number of Unicode code points; a byte that is not UTF-8 counts as one.
NR_API std::size_t lengthText(std::string_view text);

struct LessText {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return compareText(a, b) < 0; }
};

} // namespace norvel
