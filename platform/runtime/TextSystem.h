// What the text routines need of the system's Unicode tables: ICU here, the system's own routines
// elsewhere. Everything is safe to call from any thread.
#pragma once

#include <string>
#include <string_view>

namespace norvel::system_text {

// Simple case folding (one code point for one): what remains of c when case is ignored.
char32_t foldCodePoint(char32_t c);

// True where c never joins what stands before it, so that text may be composed piece by piece.
bool startsSegment(char32_t c);

// True where c, standing alone, is already in composed form.
bool isComposed(char32_t c);

// A segment (valid UTF-8: a code point and the combining ones behind it) composed and folded.
std::string foldSegment(std::string_view segment);

// <0, 0, >0 by Italian collation, case-blind.
int collate(std::string_view a, std::string_view b);

// Bytes in the order of collate, none of them 0, behind what key holds.
void appendCollationKey(std::string& key, std::string_view text);

} // namespace norvel::system_text
