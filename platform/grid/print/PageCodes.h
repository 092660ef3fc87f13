// The codes in page headers, page footers and the preview's counter: a backslash and a letter.
#pragma once

#include "platform/runtime/Api.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace norvel::grid {

struct PageSections {
    std::string left, centre, right;
    bool operator==(const PageSections&) const = default;
};

// "\p" becomes the page's number, from 1, and "\P" the number of pages; letters' case counts. Any
// other backslash stays as it is.
NR_API std::string withPageNumbers(std::string_view text, std::int64_t page, std::int64_t pages);

// The text cut at its "\t": left, centre, right. A fourth "\t" and those behind it are blanks in
// the right section. Control characters, such as line breaks in a caption, are blanks.
NR_API PageSections pageSections(std::string_view text, std::int64_t page, std::int64_t pages);

} // namespace norvel::grid
