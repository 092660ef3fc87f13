// The language of sort texts.
#include "platform/adodb/sort/SortOrder.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <random>

namespace norvel::adodb {
namespace {

// The keys as a text of its own: each name between braces, with its direction.
std::string shown(const std::vector<SortKey>& keys) {
    std::string out;
    for (const SortKey& key : keys)
        out += "{" + key.name + (key.ascending ? "+" : "-") + "}";
    return out;
}

struct Case {
    const char* text;
    const char* keys;
};

TEST(SortText, Texts) {
    const Case cases[] = {
        {"", ""},
        {"   ", ""},
        {"\t\r\n", ""},
        {"nome", "{nome+}"},
        {"nome ASC", "{nome+}"},
        {"nome DESC", "{nome-}"},
        {"nome desc", "{nome-}"},
        {"nome Asc", "{nome+}"},
        {"  nome\t\r\n DESC  ", "{nome-}"},
        {"[nome]  asc", "{nome+}"}, // two blanks, as a heading writes it
        {"[nome]  desc", "{nome-}"},
        {"[nome]asc", "{nome+}"},
        {"[nome]DESC,citta", "{nome-}{citta+}"},
        {"[data nascita]", "{data nascita+}"},
        {"[ data ]", "{ data +}"}, // the blanks are the name's
        {"[a]]b] DESC", "{a]b-}"},
        {"[]]]", "{]+}"},
        {"[a]]]", "{a]+}"},
        {"[a,b] DESC, c", "{a,b-}{c+}"},
        {"[a[b]", "{a[b+}"},
        {"[ASC] desc, [desc]", "{ASC-}{desc+}"},
        {"città DESC", "{città-}"},
        {"_a$1.b", "{_a$1.b+}"},
        {"1", "{1+}"},
        {"cognome,nome,eta", "{cognome+}{nome+}{eta+}"},
        {"cognome DESC , nome ASC,eta", "{cognome-}{nome+}{eta+}"},
        {"ascendente", "{ascendente+}"},
        {"descrizione desc", "{descrizione-}"},
        {"a, A", "{a+}{A+}"}, // whether they are one column is not the text's affair
    };
    for (const Case& each : cases)
        EXPECT_EQ(shown(parseSort(each.text)), each.keys) << each.text;
}

TEST(SortText, WhatBreaksItIs3001) {
    const char* texts[] = {
        ",",         "nome,",         ",nome",      "a,,b",       "nome nome",  "nome ASC DESC",
        "nome ASCE", "nome -",        "nome;citta", "nome ASC b", "a b c",      "[",
        "[nome",     "[nome]]",       "[]",         "[] DESC",    "nome]",      "[a] [b]",
        "[a]b",      "ASC",           "DESC",       "asc desc",   "nome, DESC", "'nome'",
        "\"nome\"",  "data nascita",  "nome 1",     "(nome)",     "nome+1",     "*",
        "-nome",     "nome ASC,,eta", "nome [ASC]", "nome\x01",   "nome DESC;", "nome -- x",
    };
    for (const char* text : texts)
        EXPECT_EQ(errorOf([&] { parseSort(text); }), adErrInvalidArgument) << text;
    EXPECT_EQ(errorOf([] { parseSort(std::string_view("nome\0", 5)); }), adErrInvalidArgument);
}

TEST(SortText, SaysInItalianWhatBreaksIt) {
    EXPECT_NE(descriptionOf([] { parseSort("[nome"); }).find("parentesi quadra"),
              std::string::npos);
    EXPECT_NE(descriptionOf([] { parseSort("nome,"); }).find("manca il nome di un campo"),
              std::string::npos);
}

// Whatever comes is read or refused with 3001; a name that comes out goes in again, in brackets.
TEST(SortText, HostileTextsAreReadOrRefused) {
    std::mt19937 random(20);
    const std::string bits[] = {"[", "]", "]]", ",",    " ",  "nome", "ASC",  "desc",
                                "a", "à", "'",  "\xC3", "\n", "1",    "\xFF", "."};
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (unsigned n = random() % 9; n > 0; --n)
            text += bits[random() % std::size(bits)];
        std::vector<SortKey> keys;
        const auto number = errorOf([&] { keys = parseSort(text); });
        ASSERT_TRUE(number == 0 || number == adErrInvalidArgument) << text;
        std::string again;
        for (const SortKey& key : keys) {
            ASSERT_FALSE(key.name.empty()) << text;
            again += again.empty() ? "[" : ", [";
            for (const char c : key.name)
                again += c == ']' ? "]]" : std::string(1, c);
            again += key.ascending ? "]  asc" : "]  desc";
        }
        ASSERT_EQ(shown(parseSort(again)), shown(keys)) << text;
    }
}

TEST(SortText, AVeryLongTextIsRead) {
    std::string text = "c0";
    for (int i = 1; i < 20'000; ++i)
        text += ", [c" + std::to_string(i) + "] DESC";
    EXPECT_EQ(parseSort(text).size(), 20'000U);
}

} // namespace
} // namespace norvel::adodb
