#include "platform/runtime/Utf8.h"

#include "platform/runtime/Text.h"

#include <array>
#include <bit>

namespace norvel {
namespace {

// Windows-1252, 0x80 to 0x9F; the five bytes it leaves open keep their own number, as Windows
// itself reads them.
constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

std::size_t asciiPrefix(std::string_view text) {
    const char* const data = text.data();
    const std::size_t size = text.size();
    std::size_t at = 0;
    for (; at + 32 <= size; at += 32) {
        const std::uint64_t any = eightBytes(data + at) | eightBytes(data + at + 8) |
                                  eightBytes(data + at + 16) | eightBytes(data + at + 24);
        if ((any & highBits) != 0) break;
    }
    for (; at + 8 <= size; at += 8) {
        const std::uint64_t high = eightBytes(data + at) & highBits;
        if (high == 0) continue;
        if constexpr (std::endian::native == std::endian::little)
            return at + static_cast<std::size_t>(std::countr_zero(high)) / 8;
        break;
    }
    while (at < size && isAscii(data[at]))
        ++at;
    return at;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto byte = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
    if (codePoint < 0x80U) {
        byte(codePoint);
    } else if (codePoint < 0x800U) {
        byte(0xC0U | (codePoint >> 6U));
        byte(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000U) {
        byte(0xE0U | (codePoint >> 12U));
        byte(0x80U | ((codePoint >> 6U) & 0x3FU));
        byte(0x80U | (codePoint & 0x3FU));
    } else {
        byte(0xF0U | (codePoint >> 18U));
        byte(0x80U | ((codePoint >> 12U) & 0x3FU));
        byte(0x80U | ((codePoint >> 6U) & 0x3FU));
        byte(0x80U | (codePoint & 0x3FU));
    }
}

bool isValidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        at += asciiPrefix(text.substr(at));
        // Letters beyond ASCII come in runs.
        while (at < text.size() && !isAscii(text[at])) {
            const CodePoint point = decodeUtf8(text, at);
            if (!point.valid) return false;
            at += point.length;
        }
    }
    return true;
}

std::string toValidUtf8(std::string_view text) {
    if (isValidUtf8(text)) return std::string(text);
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        const bool table = byte >= 0x80U && byte < 0xA0U;
        appendUtf8(result, table ? windows1252[byte - 0x80U] : static_cast<char32_t>(byte));
    }
    return result;
}

std::size_t lengthText(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        const std::size_t ascii = isAscii(text[at]) ? asciiPrefix(text.substr(at)) : 0;
        if (ascii > 0) {
            count += ascii - 1;
            at += ascii;
        } else {
            at += decodeUtf8(text, at).length;
        }
    }
    return count;
}

} // namespace norvel
