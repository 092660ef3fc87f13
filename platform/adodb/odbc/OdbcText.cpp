#include "platform/adodb/odbc/OdbcText.h"

#include "platform/runtime/Utf8.h"

namespace norvel::adodb {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHigh(SQLWCHAR unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLow(SQLWCHAR unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::vector<SQLWCHAR> odbcWide(std::string_view text) {
    std::vector<SQLWCHAR> wide;
    wide.reserve(text.size() + 1);
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint point = decodeUtf8(text, at);
        at += point.length;
        const char32_t value = point.valid ? point.value : replacement;
        if (value < 0x10000) {
            wide.push_back(static_cast<SQLWCHAR>(value));
        } else {
            wide.push_back(static_cast<SQLWCHAR>(0xD800 + ((value - 0x10000) >> 10U)));
            wide.push_back(static_cast<SQLWCHAR>(0xDC00 + ((value - 0x10000) & 0x3FFU)));
        }
    }
    wide.push_back(0);
    return wide;
}

std::string odbcNarrow(const SQLWCHAR* text, std::size_t length) {
    std::string narrow;
    narrow.reserve(length);
    for (std::size_t i = 0; i < length; ++i) {
        const SQLWCHAR unit = text[i];
        if (isHigh(unit) && i + 1 < length && isLow(text[i + 1])) {
            appendUtf8(narrow, 0x10000 + ((char32_t{unit} - 0xD800) << 10U) +
                                   (char32_t{text[i + 1]} - 0xDC00));
            ++i;
        } else {
            appendUtf8(narrow, isHigh(unit) || isLow(unit) ? replacement : char32_t{unit});
        }
    }
    return narrow;
}

} // namespace norvel::adodb
