// Collation keys beside the comparison they stand for.
#include "platform/runtime/Text.h"
#include "platform/runtime/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace norvel {
namespace {

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

// Every text with every other. Returns how many pairs were looked at.
std::size_t checkPairs(const std::vector<std::string>& texts) {
    std::vector<std::string> keys;
    keys.reserve(texts.size());
    for (const std::string& text : texts)
        keys.push_back(collationKey(text));
    std::size_t pairs = 0;
    for (std::size_t a = 0; a < texts.size(); ++a)
        for (std::size_t b = a; b < texts.size(); ++b, ++pairs)
            if (sign(keys[a].compare(keys[b])) != collateText(texts[a], texts[b])) {
                ADD_FAILURE() << "«" << texts[a] << "», «" << texts[b] << "»";
                return pairs;
            }
    return pairs;
}

std::string utf8(char32_t c) {
    std::string text;
    appendUtf8(text, c);
    return text;
}

TEST(CollationKey, NamesAsAnOperatorExpectsThem) {
    std::vector<std::string> names = {"Zorzi",  "Rossi", "d'Amico", "De Luca", "éclair",   "È vero",
                                      "eclair", "abate", "Àbate",   "ROSSI",   "Esposito", ""};
    std::ranges::stable_sort(names, {}, collationKey);
    EXPECT_EQ(names, (std::vector<std::string>{"", "abate", "Àbate", "d'Amico", "De Luca", "È vero",
                                               "eclair", "éclair", "Esposito", "Rossi", "ROSSI",
                                               "Zorzi"}));
    EXPECT_EQ(collationKey("rossi"), collationKey("ROSSI"));
    EXPECT_EQ(collationKey("citta\u0300"), collationKey("CITTÀ"));
    EXPECT_NE(collationKey("citta"), collationKey("città"));
}

TEST(CollationKey, EveryAsciiCharacterAloneAndBetweenOthers) {
    std::vector<std::string> texts;
    for (char c = 0; c >= 0 && c < 127; ++c) {
        texts.emplace_back(1, c);
        texts.push_back(std::string("a") + c + "b");
    }
    for (const char* text : {"", "a", "ab", "aa", "b", "abc"})
        texts.emplace_back(text);
    checkPairs(texts);
}

TEST(CollationKey, PairsOfAsciiCharacters) {
    // what stands side by side may be one unit of the collation
    std::vector<std::string> texts;
    for (char a = 32; a < 127; ++a)
        for (char b = 32; b < 127; b = static_cast<char>(b + 5))
            texts.push_back({a, b});
    EXPECT_GT(checkPairs(texts), 1'000'000U);
}

TEST(CollationKey, EveryCharacterUpToLatinExtended) {
    std::vector<std::string> texts;
    for (char32_t c = 1; c < 0x250; ++c) {
        texts.push_back(utf8(c));
        texts.push_back("a" + utf8(c));
        texts.push_back(utf8(c) + "z");
    }
    EXPECT_GT(checkPairs(texts), 1'000'000U);
}

TEST(CollationKey, RandomTextsOfLettersThatJoin) {
    const std::vector<std::string> letters = {
        "a",      "A",      "à",      "À",    "b",  "c", "C",  "e",  "È", "h",      "i",     "l",
        "L",      "·",      "s",      "S",    "ß",  "z", "'",  "’",  " ", "-",      "_",     ".",
        "0",      "1",      "9",      "10",   "ñ",  "n", "N",  "œ",  "o", "æ",      "ø",     "ç",
        "\u0300", "\u0301", "\u0327", "dž",   "ǆ",  "ﬁ", "я",  "中", "€", "ı",      "İ",     "K",
        "\t",     "\n",     "\x01",   "\x7F", "  ", "#", "\\", "{",  "~", "\u200B", "\u00AD"};
    std::mt19937 random(31);
    for (int round = 0; round < 12; ++round) {
        std::vector<std::string> texts;
        // few letters make texts that differ late, or in case or accents alone
        const std::size_t few = round % 3 == 0 ? 4 : round % 3 == 1 ? 20 : letters.size();
        for (int i = 0; i < 400; ++i) {
            std::string text;
            for (unsigned n = random() % 12; n > 0; --n)
                text += letters[random() % few];
            texts.push_back(std::move(text));
        }
        checkPairs(texts);
    }
}

TEST(CollationKey, AccentsBehindAndBeforeManyLetters) {
    const std::vector<std::string> accents = {"à", "À", "è", "é", "ö", "ç", "ñ", "a\u0300", "ß"};
    std::mt19937 random(33);
    std::vector<std::string> texts;
    for (int i = 0; i < 1200; ++i) {
        std::string text;
        for (unsigned n = random() % 4; n < 4; ++n) {
            text += std::string(random() % (i % 3 == 0 ? 4 : 110), random() % 30 == 0 ? 'b' : 'a');
            if (random() % 3 > 0) text += accents[random() % (i % 2 == 0 ? 3 : accents.size())];
        }
        texts.push_back(std::move(text));
    }
    checkPairs(texts);
}

TEST(CollationKey, NamesAndAddressesOfAllLengths) {
    const std::vector<std::string> words = {
        "Rossi", "ROSSI", "rossi", "Rosso",  "S.r.l.",    "srl",   "S.p.A.",  "spa",
        "&",     "Figli", "figli", "d'Asti", "Via",       "via",   "Niccolò", "nicolo",
        "1",     "12",    "n. 3",  "(Bari)", "dell'Arno", "Città", "citta"};
    std::mt19937 random(32);
    std::vector<std::string> texts;
    for (int i = 0; i < 1500; ++i) {
        std::string text = words[random() % words.size()];
        for (unsigned n = random() % 6; n > 0; --n)
            text += (random() % 8 == 0 ? "  " : " ") + words[random() % words.size()];
        texts.push_back(std::move(text));
    }
    EXPECT_GT(checkPairs(texts), 1'000'000U);
}

TEST(CollationKey, LongTextsThatDifferAtTheirEnds) {
    const std::string beginning(100'000, 'a');
    checkPairs({beginning, beginning + "a", beginning + "A", beginning + "à", beginning + "b",
                beginning + " ", "À" + beginning, "b"});
}

} // namespace
} // namespace norvel
