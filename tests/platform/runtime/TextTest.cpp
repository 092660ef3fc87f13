// Texts as the system compares, finds and takes them apart: case-blind, accents kept apart.
#include "platform/runtime/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace norvel {
namespace {

struct PairCase {
    const char* a;
    const char* b;
    bool equal;
    const char* what;
};

const std::vector<PairCase>& pairs() {
    static const std::vector<PairCase> all = {
        {"", "", true, "nothing"},
        {"", "a", false, "nothing and something"},
        {"abc", "ABC", true, "ASCII case"},
        {"abc", "abd", false, "another letter"},
        {"abc", "abcd", false, "a beginning"},
        {"@[`{", "@[`{", true, "signs beside the letters"},
        {"@", "`", false, "signs 32 apart"},
        {"[", "{", false, "signs 32 apart"},
        {"à", "À", true, "accented case"},
        {"à", "a", false, "accent and none"},
        {"à", "á", false, "two accents"},
        {"CITTÀ", "città", true, "a word"},
        {"PERCHÉ", "perchè", false, "acute and grave"},
        {"Ñandú", "ñANDÚ", true, "Spanish"},
        {"ÅNGSTRÖM", "ångström", true, "Swedish"},
        {"\u212B", "å", true, "the unit sign is the letter"},
        {"\u212A", "k", true, "the Kelvin sign is a k"},
        {"\u2126", "ω", true, "the Ohm sign is an omega"},
        {"ΑΘΗΝΑ", "αθηνα", true, "Greek"},
        {"ΟΔΟΣ", "οδος", true, "final sigma"},
        {"σ", "ς", true, "both small sigmas"},
        {"МОСКВА", "москва", true, "Cyrillic"},
        {"ǅ", "ǆ", true, "titlecase"},
        {"Ǆ", "ǅ", true, "titlecase"},
        {"\U00010400", "\U00010428", true, "beyond 16 bits"},
        {"straße", "STRASSE", false, "one letter for one"},
        {"ẞ", "ß", true, "the capital sharp s"},
        {"İ", "i", false, "dotted capital I"},
        {"ı", "I", false, "dotless i"},
        {"I", "i", true, "whatever the language"},
        {"ﬁ", "fi", false, "a ligature is a letter"},
        {"e\u0301", "é", true, "composed and not"},
        {"E\u0301", "é", true, "composed and not, other case"},
        {"e\u0301", "e", false, "an accent in pieces"},
        {"e\u0301\u0323", "e\u0323\u0301", true, "marks in another order"},
        {"J\u030C", "ǰ", true, "a capital that exists in pieces only"},
        {"가", "\u1100\u1161", true, "Hangul"},
        {"日本", "日本", true, "no case at all"},
        {"xe\u0301y", "XÉY", true, "amid ASCII"},
        {"abce\u0301", "abce", false, "behind equal ASCII"},
        {"\xE0", "\xC0", false, "bytes that are no text"},
        {"a\xE0z", "A\xE0Z", true, "equal bytes that are no text"},
        {"\xE0", "à", false, "a byte is not the letter"},
        {"\xFF\u0301", "\xFF\u0301", true, "a mark on a stray byte"},
    };
    return all;
}

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

TEST(Text, EqualsButForCase) {
    for (const PairCase& row : pairs()) {
        EXPECT_EQ(equalsText(row.a, row.b), row.equal) << row.what;
        EXPECT_EQ(equalsText(row.b, row.a), row.equal) << row.what;
    }
}

TEST(Text, FoldedTextsAreByteEqualWhereTheTextsAreEqual) {
    for (const PairCase& row : pairs()) {
        EXPECT_EQ(foldText(row.a) == foldText(row.b), row.equal) << row.what;
        EXPECT_EQ(foldText(foldText(row.a)), foldText(row.a)) << row.what;
    }
    EXPECT_EQ(foldText("Ragione SOCIALE, 12"), "ragione sociale, 12");
    EXPECT_EQ(foldText("È"), "è");
}

TEST(Text, FoldsEveryAsciiByteAtEveryPlace) {
    for (int byte = 0; byte < 128; ++byte) {
        const char c = static_cast<char>(byte);
        const char low = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        for (std::size_t length = 1; length <= 20; ++length)
            ASSERT_EQ(foldText(std::string(length, c)), std::string(length, low)) << byte;
    }
}

TEST(Text, EveryPairOfCasesInUnicodesOneForOneTableIsEqual) {
    // Ranges of letters whose capitals stand 32 before them, or next to them.
    for (char32_t c = 0xE0; c <= 0xFE; ++c) {
        if (c == 0xF7) continue; // the division sign
        const std::string low = {'\xC3', static_cast<char>(0x80 | (c & 0x3F))};
        const std::string high = {'\xC3', static_cast<char>(0x80 | ((c - 32) & 0x3F))};
        EXPECT_TRUE(equalsText(low, high)) << low << high;
    }
    EXPECT_FALSE(equalsText("×", "÷"));
}

TEST(Text, CompareIsATotalOrderThatAgreesWithEquals) {
    std::vector<std::string> texts;
    for (const PairCase& row : pairs())
        texts.insert(texts.end(), {row.a, row.b});
    texts.insert(texts.end(), {"a", "a b", "a-b", "ab", "z", "Zà", "à", "zz", "e\u0301z", "ez"});
    for (const std::string& a : texts) {
        for (const std::string& b : texts) {
            const int order = compareText(a, b);
            ASSERT_EQ(order, -compareText(b, a)) << a << " and " << b;
            ASSERT_EQ(order == 0, equalsText(a, b)) << a << " and " << b;
            ASSERT_EQ(order, sign(foldText(a).compare(foldText(b)))) << a << " and " << b;
        }
    }
}

TEST(Text, TablesFindTheirKeysInAnyCase) {
    std::map<std::string, int, LessText> table{{"CampoRicerca", 1}, {"Città", 2}};
    EXPECT_EQ(table.count("camporicerca"), 1U);
    EXPECT_EQ(table.count(std::string_view("CITTÀ")), 1U);
    EXPECT_EQ(table.count("citta"), 0U);
    EXPECT_FALSE(table.emplace("CITTA\u0300", 3).second);
}

TEST(Text, CollatesAsAnItalianList) {
    std::vector<std::string> names = {"Zorzi",  "È vero", "De Luca", "d'Amico", "éclair",   "Rossi",
                                      "eclair", "abate",  "Àbate",   "ROSSI",   "Esposito", ""};
    std::stable_sort(names.begin(), names.end(),
                     [](const auto& a, const auto& b) { return collateText(a, b) < 0; });
    EXPECT_EQ(names, (std::vector<std::string>{"", "abate", "Àbate", "d'Amico", "De Luca", "È vero",
                                               "eclair", "éclair", "Esposito", "Rossi", "ROSSI",
                                               "Zorzi"}));
    EXPECT_EQ(collateText("rossi", "ROSSI"), 0);
    EXPECT_LT(collateText("citta", "città"), 0);
    EXPECT_EQ(collateText("e\u0301", "É"), 0);
    EXPECT_NE(collateText("a\xE0", "b"), 0); // bytes that are no text break nothing
}

struct FindCase {
    const char* text;
    const char* needle;
    std::size_t start;
    std::size_t position;
    std::size_t length;
};

constexpr std::size_t absent = std::string::npos;

TEST(Text, FindsIgnoringCase) {
    const std::vector<FindCase> table = {
        {"SELECT * FROM t", "from", 0, 9, 4},
        {"select a from b", "SELECT ", 0, 0, 7},
        {"aXbxc", "x", 2, 3, 1},
        {"aXbxc", "x", 4, absent, 0},
        {"abc", "abcd", 0, absent, 0},
        {"abc", "c", 2, 2, 1},
        {"abc", "c", 3, absent, 0},
        {"abc", "c", 99, absent, 0},
        {"aaab", "AAB", 0, 1, 3},
        {"", "a", 0, absent, 0},
        {"", "", 0, 0, 0},
        {"abc", "", 2, 2, 0},
        {"abc", "", 3, 3, 0},
        {"abc", "", 4, absent, 0},
        {"la CITTÀ bella", "città", 0, 3, 6},
        {"la CITTÀ bella", "BELLA", 0, 10, 5},
        {"la CITTÀ bella", "citta", 0, absent, 0},
        {"la citta bella", "CITTÀ", 0, absent, 0},
        {"è è", "È", 1, 3, 2},
        {"cafe\u0301 e te", "CAFÉ", 0, 0, 6},
        {"te\u0301", "É", 0, 1, 3},
        {"cafe\u0301 e te", "cafe", 0, absent, 0},
        {"cafe\u0301 e te", "E", 0, 7, 1},
        {"café", "\u0301", 0, absent, 0},
        {"10 \u212A", "k", 0, 3, 3},
        {"10 k", "\u212A", 0, 3, 1},
        {"ΟΔΟΣ και οδος", "ΟΔΟΣ", 1, 16, 8},
        {"a\xE0"
         "b x",
         "B", 0, 2, 1},
        {"a\xE0"
         "b",
         "\xE0", 0, 1, 1},
        {"a\xE0"
         "b",
         "à", 0, absent, 0},
        {"\U00010400x", "\U00010428X", 0, 0, 5},
    };
    for (const FindCase& row : table) {
        EXPECT_EQ(findText(row.text, row.needle, row.start), row.position)
            << row.text << ", " << row.needle;
        const TextMatch match = matchText(row.text, row.needle, row.start);
        EXPECT_EQ(match.position, row.position) << row.text << ", " << row.needle;
        EXPECT_EQ(match.length, row.length) << row.text << ", " << row.needle;
    }
}

// A text made of pieces, and where the pieces begin and end.
struct PieceText {
    std::string text;
    std::vector<std::size_t> bounds = {0};
};

// Every text of up to so many of the pieces.
std::vector<PieceText> everyText(const std::vector<std::string>& pieces, std::size_t most) {
    std::vector<PieceText> all = {{}};
    for (std::size_t from = 0, length = 0; length < most; ++length) {
        const std::size_t to = all.size();
        for (; from < to; ++from) {
            for (const std::string& piece : pieces) {
                PieceText longer = all[from];
                longer.text += piece;
                longer.bounds.push_back(longer.text.size());
                all.push_back(longer);
            }
        }
    }
    return all;
}

TextMatch firstPartThatEquals(const PieceText& text, const std::string& needle, std::size_t start) {
    for (const std::size_t from : text.bounds) {
        for (const std::size_t to : text.bounds) {
            if (from >= start && to > from && equalsText(text.text.substr(from, to - from), needle))
                return {from, to - from};
        }
    }
    return {};
}

TEST(Text, FindsTheFirstPartThatEquals) {
    for (const PieceText& text : everyText({"a", "A", "à", "À", "k", "\u212A", "\xE0"}, 4)) {
        for (const char* needle : {"a", "à", "K", "aA", "àk", "Kà", "k\xE0", "aÀa"}) {
            for (const std::size_t start : text.bounds) {
                const TextMatch first = firstPartThatEquals(text, needle, start);
                const TextMatch match = matchText(text.text, needle, start);
                ASSERT_EQ(match.position, first.position) << text.text << ", " << needle << start;
                ASSERT_EQ(match.length, first.length) << text.text << ", " << needle << start;
            }
        }
    }
}

TEST(Text, ComparingMeansComparingTheFoldedForms) {
    std::vector<PieceText> texts =
        everyText({"a", "B", "À", "\u0300", "\u0323", "\u212A", "’", "\xE0"}, 3);
    for (std::size_t text = texts.size(); text-- > 0;) // behind a long equal beginning
        texts.push_back({"Ragione sociale " + texts[text].text, {}});
    for (std::size_t at = 0; at < texts.size(); ++at) {
        const std::string& a = texts[at].text;
        for (std::size_t step = 1; step < 40; ++step) {
            const std::string& b = texts[(at * 7 + step * step) % texts.size()].text;
            const int bytes = foldText(a).compare(foldText(b));
            ASSERT_EQ(compareText(a, b), bytes < 0 ? -1 : bytes > 0 ? 1 : 0) << a << " and " << b;
            ASSERT_EQ(equalsText(a, b), bytes == 0) << a << " and " << b;
        }
    }
}

TEST(Text, Replaces) {
    const std::vector<std::vector<const char*>> table = {
        {"a*b*c", "*", "%", "a%b%c"},
        {"aXbxc", "X", "", "abc"},
        {"aaaa", "aa", "a", "aa"},
        {"abc", "", "x", "abc"},
        {"abc", "z", "x", "abc"},
        {"", "z", "x", ""},
        {"x=NULL or y=null", "=Null", " IS NULL", "x IS NULL or y IS NULL"},
        {"Città, CITTÀ, citta", "città", "borgo", "borgo, borgo, citta"},
        {"cafe\u0301 CAFÉ cafe", "café", "te", "te te cafe"},
        {"ab", "b", "bb", "abb"},
        {"d'Ami", "'", "''", "d''Ami"},
        {"è-è-è", "-", "È", "èÈèÈè"},
    };
    for (const auto& row : table)
        EXPECT_EQ(replaceText(row[0], row[1], row[2]), row[3]) << row[0];
}

TEST(Text, Splits) {
    using Parts = std::vector<std::string>;
    EXPECT_EQ(splitText("a;b", ";"), (Parts{"a", "b"}));
    EXPECT_EQ(splitText("a", ";"), (Parts{"a"}));
    EXPECT_EQ(splitText(";", ";"), (Parts{"", ""}));
    EXPECT_EQ(splitText("a;;b;", ";"), (Parts{"a", "", "b", ""}));
    EXPECT_EQ(splitText("", ";"), (Parts{}));
    EXPECT_EQ(splitText("abc", ""), (Parts{"abc"}));
    EXPECT_EQ(splitText("uno AND due and tre", " And "), (Parts{"uno", "due", "tre"}));
    EXPECT_EQ(splitText("Roma ;§; Forlì ;§; Bari", " ;§; "), (Parts{"Roma", "Forlì", "Bari"}));
    EXPECT_EQ(splitText("aÈbèc", "è"), (Parts{"a", "b", "c"}));
}

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(trimText("  a b  "), "a b");
    EXPECT_EQ(trimText("a"), "a");
    EXPECT_EQ(trimText("   "), "");
    EXPECT_EQ(trimText(""), "");
    EXPECT_EQ(trimText(" \ta\n "), "\ta\n");
    EXPECT_EQ(trimText("\u00A0a"), "\u00A0a");
}

TEST(Text, LongTextsKeepTheirPlaces) {
    const std::string filler = std::string(100'000, 'x') + "è";
    const std::string text = filler + "Ago" + filler + "AGO";
    EXPECT_EQ(findText(text, "ago"), filler.size());
    EXPECT_EQ(findText(text, "ago", filler.size() + 1), 2 * filler.size() + 3);
    EXPECT_EQ(replaceText(text, "aGo", "").size(), 2 * filler.size());
    EXPECT_EQ(splitText(text, "X").size(), 200'001U);
    std::string many;
    for (int i = 0; i < 50'000; ++i)
        many += "é;";
    EXPECT_EQ(splitText(many, ";").size(), 50'001U);
    std::string marks = "E";
    for (int i = 0; i < 10'000; ++i)
        marks += "\u0301";
    EXPECT_EQ(foldText(marks).size(), marks.size() - 1); // é, and the other marks
}

} // namespace
} // namespace norvel
