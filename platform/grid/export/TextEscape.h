// Texts as they stand in an exported file.
#pragma once

#include "platform/adodb/store/TextDictionary.h"

#include <string_view>

namespace norvel::grid {

using adodb::GrowingBytes;

// Appends a text of valid UTF-8 as one line: control characters and line breaks as one blank (CR LF
// together), as cellText has them; html: "&", "<" and ">" as what stands for them.
void appendText(GrowingBytes& out, std::string_view text, bool html);

} // namespace norvel::grid
