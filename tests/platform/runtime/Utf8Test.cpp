// Which bytes are UTF-8, and what becomes of those that are not.
#include "platform/runtime/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norvel {
namespace {

TEST(Utf8, AcceptsWhatTheStandardAllows) {
    for (const char* text : {"", "abc", "perché", "€", "\U0001D11E", "\uFFFF", "\U0010FFFF",
                             "\uD7FF\uE000", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBF",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isValidUtf8(text)) << text;
    EXPECT_TRUE(isValidUtf8(std::string_view("a\0b", 3)));
}

TEST(Utf8, RefusesEveryMalformedSequence) {
    const std::vector<std::pair<const char*, const char*>> table = {
        {"stray continuation", "\x80"},
        {"stray continuation", "\xBF"},
        {"overlong two bytes", "\xC0\x80"},
        {"overlong two bytes", "\xC1\xBF"},
        {"overlong three bytes", "\xE0\x9F\xBF"},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF"},
        {"surrogate", "\xED\xA0\x80"},
        {"surrogate", "\xED\xBF\xBF"},
        {"beyond 10FFFF", "\xF4\x90\x80\x80"},
        {"no lead byte", "\xF5\x80\x80\x80"},
        {"no lead byte", "\xFE"},
        {"no lead byte", "\xFF"},
        {"cut after one", "\xC3"},
        {"cut after one", "\xE2"},
        {"cut after two", "\xE2\x82"},
        {"cut after three", "\xF0\x9D\x84"},
        {"no continuation", "\xC3q"},
        {"no continuation", "\xE2\x82q"},
        {"no continuation", "\xE2qq"},
        {"no continuation", "\xF0\x9D\x84q"},
        {"no continuation", "\xF0\x9Dqq"},
    };
    for (const auto& [reason, bytes] : table) {
        EXPECT_FALSE(isValidUtf8(bytes)) << reason;
        EXPECT_FALSE(isValidUtf8(std::string("prima ") + bytes)) << reason;
        EXPECT_FALSE(isValidUtf8(bytes + std::string(" dopo"))) << reason;
    }
}

// The wide steps over ASCII must see a byte at whatever place of a step it stands.
TEST(Utf8, SeesABadByteAtEveryPlace) {
    for (std::size_t length = 1; length <= 80; ++length) {
        const std::string good(length, 'x');
        ASSERT_TRUE(isValidUtf8(good));
        for (std::size_t place = 0; place < length; ++place) {
            std::string bad = good;
            bad[place] = '\xE0';
            ASSERT_FALSE(isValidUtf8(bad)) << length << " at " << place;
            ASSERT_EQ(lengthText(bad), length);
        }
    }
}

// Every sequence of up to three bytes, against the definition by code points.
TEST(Utf8, AgreesWithTheListOfAllShortSequences) {
    std::vector<bool> two(256U * 256U);
    std::vector<bool> three(256U * 256U * 256U);
    for (unsigned code = 0x80; code < 0x800; ++code)
        two[(0xC0U + (code >> 6U)) * 256U + 0x80U + (code & 0x3FU)] = true;
    for (unsigned code = 0x800; code < 0x10000; ++code) {
        if (code >= 0xD800 && code < 0xE000) continue;
        three[((0xE0U + (code >> 12U)) * 256U + 0x80U + ((code >> 6U) & 0x3FU)) * 256U + 0x80U +
              (code & 0x3FU)] = true;
    }
    std::string text(3, '\0');
    for (unsigned a = 0x80; a < 256; ++a) {
        for (unsigned b = 0x80; b < 256; ++b) {
            text[0] = static_cast<char>(a);
            text[1] = static_cast<char>(b);
            ASSERT_EQ(isValidUtf8(std::string_view(text).substr(0, 2)), two[a * 256 + b]);
            for (unsigned c = 0x80; c < 256; ++c) {
                text[2] = static_cast<char>(c);
                ASSERT_EQ(isValidUtf8(text), three[(a * 256 + b) * 256 + c]) << a << b << c;
            }
        }
    }
}

TEST(Utf8, ValidTextStaysAsItIs) {
    for (const char* text : {"", "abc", "perché", "€ 10", "\U0001D11E"})
        EXPECT_EQ(toValidUtf8(text), text);
}

TEST(Utf8, OtherBytesAreReadAsWindows1252) {
    EXPECT_EQ(toValidUtf8("perch\xE9"), "perché");
    EXPECT_EQ(toValidUtf8("citt\xE0 \x80 10"), "città € 10");
    EXPECT_EQ(toValidUtf8("\x93virgolette\x94 \x96 \x85"), "“virgolette” – …");
    EXPECT_EQ(toValidUtf8("\x8E\x9E\x9F\xFF\xA0"), "ŽžŸÿ\u00A0");
    EXPECT_EQ(toValidUtf8("gi\xC3\xA0 citt\xE0"),
              "giÃ\u00A0 città"); // one bad byte decides for all
}

TEST(Utf8, NoByteIsLost) {
    std::string every;
    for (int byte = 0; byte < 256; ++byte)
        every.push_back(static_cast<char>(byte));
    const std::string text = toValidUtf8(every);
    EXPECT_TRUE(isValidUtf8(text));
    EXPECT_EQ(lengthText(text), 256U);
    EXPECT_EQ(toValidUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(Utf8, LengthCountsCodePoints) {
    const std::vector<std::pair<const char*, std::size_t>> table = {
        {"", 0},         {"abc", 3},        {"perché", 6},
        {"€", 1},        {"\U0001D11E", 1}, {"e\u0301", 2},
        {"\xFF\xFE", 2}, {"a\x80z", 3},     {"una riga lunga abbastanza, però", 31},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(lengthText(text), expected) << text;
}

} // namespace
} // namespace norvel
