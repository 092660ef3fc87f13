// Bytes and code points of UTF-8, for the text routines of this folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace norvel {

inline constexpr std::uint64_t highBits = 0x8080808080808080U;

inline std::uint64_t eightBytes(const char* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

inline bool isAscii(char c) {
    return (static_cast<unsigned char>(c) & 0x80U) == 0;
}

inline char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Eight bytes of ASCII in small letters: a byte's high bit is set by the first sum from 'A' up, by
// the second past 'Z'.
inline std::uint64_t lowerAscii(std::uint64_t eight) {
    constexpr std::uint64_t ones = 0x0101010101010101U;
    const std::uint64_t capitals =
        (eight + ones * (0x80U - 'A')) & ~(eight + ones * (0x7FU - 'Z')) & highBits;
    return eight | (capitals >> 2U);
}

// Length of the run of ASCII at the start of text.
std::size_t asciiPrefix(std::string_view text);

// One code point, or (valid false, length 1) a byte that belongs to no well-formed sequence.
struct CodePoint {
    char32_t value = 0;
    unsigned length = 1;
    bool valid = false;
};

// The code point at position, which must lie inside text. Unicode 15, table 3-7: which second bytes
// there are depends on the first.
inline CodePoint decodeUtf8(std::string_view text, std::size_t position) {
    const auto* const at = reinterpret_cast<const unsigned char*>(text.data()) + position;
    const std::size_t left = text.size() - position;
    const unsigned first = at[0];
    const auto tail = [at](std::size_t index) { return at[index] & 0x3FU; };
    const auto isTail = [at](std::size_t index) { return (at[index] & 0xC0U) == 0x80U; };
    if (first < 0x80U) return {first, 1, true};
    const CodePoint bad{first, 1, false};
    if (first < 0xC2U || first > 0xF4U || left < 2) return bad;
    if (first < 0xE0U)
        return isTail(1) ? CodePoint{((first & 0x1FU) << 6U) | tail(1), 2, true} : bad;
    const unsigned low = first == 0xE0U ? 0xA0U : first == 0xF0U ? 0x90U : 0x80U;
    const unsigned high = first == 0xEDU ? 0x9FU : first == 0xF4U ? 0x8FU : 0xBFU;
    if (left < 3 || at[1] < low || at[1] > high || !isTail(2)) return bad;
    const char32_t three = (tail(1) << 6U) | tail(2);
    if (first < 0xF0U) return {((first & 0x0FU) << 12U) | three, 3, true};
    if (left < 4 || !isTail(3)) return bad;
    return {((first & 0x07U) << 18U) | (three << 6U) | tail(3), 4, true};
}

void appendUtf8(std::string& text, char32_t codePoint);

} // namespace norvel
