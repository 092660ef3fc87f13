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

// Length of the run of ASCII at the start of text.
std::size_t asciiPrefix(std::string_view text);

// One code point, or (valid false, length 1) a byte that belongs to no well-formed sequence.
struct CodePoint {
    char32_t value = 0;
    unsigned length = 1;
    bool valid = false;
};

// The code point at position, which must lie inside text.
CodePoint decodeUtf8(std::string_view text, std::size_t position);

void appendUtf8(std::string& text, char32_t codePoint);

} // namespace norvel
