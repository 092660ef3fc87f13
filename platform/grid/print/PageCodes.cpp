#include "platform/grid/print/PageCodes.h"

#include "platform/grid/model/CellText.h"
#include "platform/runtime/Variant.h"

#include <array>

namespace norvel::grid {

namespace {

// The letter of the code at i, 0 where none stands there.
char codeAt(std::string_view text, std::size_t i) {
    if (text[i] != '\\' || i + 1 == text.size()) return 0;
    const char letter = text[i + 1];
    return letter == 't' || letter == 'p' || letter == 'P' ? letter : '\0';
}

} // namespace

std::string withPageNumbers(std::string_view text, std::int64_t page, std::int64_t pages) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char code = codeAt(text, i);
        if (code == 'p')
            shown += std::to_string(page);
        else if (code == 'P')
            shown += std::to_string(pages);
        else {
            shown += text[i];
            continue;
        }
        ++i;
    }
    return shown;
}

PageSections pageSections(std::string_view text, std::int64_t page, std::int64_t pages) {
    std::array<std::string, 3> sections;
    std::size_t section = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (codeAt(text, i) != 't') {
            sections[section] += text[i];
            continue;
        }
        if (section + 1 < sections.size())
            ++section;
        else
            sections[section] += ' ';
        ++i;
    }
    for (std::string& s : sections)
        s = cellText(Variant(withPageNumbers(s, page, pages)));
    return {sections[0], sections[1], sections[2]};
}

} // namespace norvel::grid
