#include "platform/grid/export/TextEscape.h"

#include "platform/runtime/Utf8.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace norvel::grid {

namespace {

constexpr std::uint64_t ones = 0x0101010101010101U;

// The high bit of each byte that is zero; beyond the first such byte others may be set, too.
std::uint64_t zeroBytes(std::uint64_t word) {
    return (word - ones) & ~word & highBits;
}

// The first bit set is that of the first byte that may not simply be copied: control characters,
// what is not ASCII, and what HTML marks up with.
template <bool html>
std::uint64_t special(std::uint64_t word) {
    std::uint64_t found = ((word - ones * 0x20U) & ~word) | word | zeroBytes(word ^ (ones * 0x7FU));
    if constexpr (html) {
        found |= zeroBytes(word ^ (ones * '&'));
        found |= zeroBytes((word | (ones * 2U)) ^ (ones * '>')); // '<' is '>' without that bit
    }
    return found & highBits;
}

struct Cursor {
    std::string_view text;
    std::size_t at = 0;
    char* out = nullptr;

    unsigned byte(std::size_t ahead) const {
        return at + ahead < text.size() ? static_cast<unsigned char>(text[at + ahead]) : 0U;
    }
    void write(std::string_view bytes, std::size_t taken) {
        std::memcpy(out, bytes.data(), bytes.size());
        out += bytes.size();
        at += taken;
    }
    void copy(std::size_t bytes) {
        write(text.substr(at, bytes), std::min(bytes, text.size() - at));
    }
};

std::size_t lengthOf(unsigned lead) {
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// One character, whatever it is.
template <bool html>
void one(Cursor& c) {
    const unsigned lead = c.byte(0);
    if (lead == '\r' && c.byte(1) == '\n') return c.write(" ", 2);
    if (lead < 0x20 || lead == 0x7F) return c.write(" ", 1);
    if (lead == 0xC2 && c.byte(1) < 0xA0) return c.write(" ", 2);
    if (lead == 0xE2 && c.byte(1) == 0x80 && (c.byte(2) == 0xA8 || c.byte(2) == 0xA9))
        return c.write(" ", 3);
    if constexpr (html) {
        if (lead == '&') return c.write("&amp;", 1);
        if (lead == '<') return c.write("&lt;", 1);
        if (lead == '>') return c.write("&gt;", 1);
    }
    c.copy(lengthOf(lead));
}

constexpr std::size_t blockBytes = 4096;
constexpr std::size_t longest = 5; // bytes that one byte becomes

// From begin on, some four thousand bytes; where it ended.
template <bool html>
std::size_t appendBlock(GrowingBytes& out, std::string_view text, std::size_t begin) {
    const std::size_t end = std::min(text.size(), begin + blockBytes);
    const std::size_t before = out.size();
    char* const start = out.extend((end - begin) * longest + 16);
    Cursor c{text, begin, start};
    while (c.at + 8 <= end) {
        const std::uint64_t word = eightBytes(text.data() + c.at);
        std::memcpy(c.out, &word, sizeof word);
        const std::uint64_t found = special<html>(word);
        const auto plain = found == 0 ? 8U : static_cast<unsigned>(std::countr_zero(found)) / 8U;
        c.at += plain;
        c.out += plain;
        if (found != 0) one<html>(c);
    }
    while (c.at < end)
        one<html>(c);
    out.shrink(before + static_cast<std::size_t>(c.out - start));
    return c.at;
}

} // namespace

void appendText(GrowingBytes& out, std::string_view text, bool html) {
    for (std::size_t at = 0; at < text.size();)
        at = html ? appendBlock<true>(out, text, at) : appendBlock<false>(out, text, at);
}

} // namespace norvel::grid
