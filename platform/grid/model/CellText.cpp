#include "platform/grid/model/CellText.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"

#include <limits>
#include <string_view>

namespace norvel::grid {

namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

// The length of the longest beginning of at most limit bytes that ends between two characters.
std::size_t cutLength(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) return text.size();
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80)
        --limit;
    return limit;
}

// How many bytes at i are one control character or line break: C0, DEL, C1, U+2028, U+2029; 0 if
// none.
std::size_t controlLength(std::string_view text, std::size_t i) {
    const auto byte = [&](std::size_t k) {
        return k < text.size() ? static_cast<unsigned char>(text[k]) : 0U;
    };
    if (byte(i) == '\r' && byte(i + 1) == '\n') return 2;
    if (byte(i) < 0x20 || byte(i) == 0x7F) return 1;
    if (byte(i) == 0xC2 && byte(i + 1) >= 0x80 && byte(i + 1) <= 0x9F) return 2;
    if (byte(i) == 0xE2 && byte(i + 1) == 0x80 && (byte(i + 2) == 0xA8 || byte(i + 2) == 0xA9))
        return 3;
    return 0;
}

std::string oneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t control = controlLength(text, i);
        line += control ? ' ' : text[i];
        i += control ? control : 1;
    }
    return line;
}

std::string textCell(std::string_view text, std::size_t longest) {
    const std::size_t length = cutLength(text, longest);
    std::string shown = oneLine(toValidUtf8(text.substr(0, length)));
    if (length < text.size()) shown += ellipsis;
    return shown;
}

std::string cellOf(const Variant& value, std::size_t longest) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Null:
        return {};
    case VarType::String:
        return textCell(value.text(), longest);
    case VarType::Bytes:
        return "(binario)";
    case VarType::Object:
    case VarType::Array:
        return "(oggetto)";
    default:
        break;
    }
    try {
        return value.toDisplay();
    } catch (const Errore&) { // a date or a number out of every range: the cell says so
        return "#Errore";
    }
}

} // namespace

std::string cellText(const Variant& value) {
    return cellOf(value, maxCellBytes);
}

std::string wholeCellText(const Variant& value) {
    return cellOf(value, std::numeric_limits<std::size_t>::max());
}

} // namespace norvel::grid
