// The language of filter texts.
#include "platform/adodb/filter/Criteria.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <random>

namespace norvel::adodb {
namespace {

// The tree as a text of its own: groups between braces.
std::string shown(const Criteria& criteria) {
    constexpr const char* ops[] = {"=", "<>", "<", "<=", ">", ">=", "~"};
    constexpr const char* marks[] = {"NULL", "n:", "q:", "h:", "b:"};
    std::string out;
    for (const auto& group : criteria.groups) {
        out += "{";
        for (const FilterClause& clause : group)
            out += "(" + clause.name + ops[static_cast<int>(clause.op)] +
                   marks[static_cast<int>(clause.value.kind)] + clause.value.text + ")";
        out += "}";
    }
    return out;
}

struct Case {
    const char* text;
    const char* tree;
};

TEST(FilterGrammar, Texts) {
    const Case cases[] = {
        {"", ""},
        {"   ", ""},
        {"nome='Rossi'", "{(nome=q:Rossi)}"},
        {"nome LIKE '*d''Ami*'", "{(nome~q:*d'Ami*)}"},
        {"nome like 'Ros%'", "{(nome~q:Ros%)}"},
        {"nome LIKE '*'", "{(nome~q:*)}"},
        {"nome LIKE '**'", "{(nome~q:**)}"},
        {"nome LIKE 'a_b?[c]'", "{(nome~q:a_b?[c])}"},
        {"[data nascita] >= #15-03-2011#", "{(data nascita>=h:15-03-2011)}"},
        {"[a]]b]=1", "{(a]b=n:1)}"},
        {"[And]=1", "{(And=n:1)}"},
        {"città<>NULL", "{(città<>NULL)}"},
        {"note=NULL AND citta<>NULL AND citta<>''", "{(note=NULL)(citta<>NULL)(citta<>q:)}"},
        {"prezzo=12.5", "{(prezzo=n:12.5)}"},
        {"prezzo < -0.5e-3", "{(prezzo<n:-0.5e-3)}"},
        {"prezzo=$50.00", "{(prezzo=n:50.00)}"},
        {"attivo=True or attivo = FALSE", "{(attivo=b:True)}{(attivo=b:False)}"},
        {"codice=#'1'#", "{(codice=h:'1')}"},
        {"(a=1 AND b=2) OR c=3", "{(a=n:1)(b=n:2)}{(c=n:3)}"},
        {"(a=1 OR b=2) OR c=3", "{(a=n:1)}{(b=n:2)}{(c=n:3)}"},
        {"(a=1 AND b=2) AND c=3", "{(a=n:1)(b=n:2)(c=n:3)}"},
        {"(a=1 AND b=2) OR (c=3 AND d=4)", "{(a=n:1)(b=n:2)}{(c=n:3)(d=n:4)}"},
        {"(a=1 OR b=2)", "{(a=n:1)}{(b=n:2)}"},
        {"a=1 OR b=2 AND c=3", "{(a=n:1)}{(b=n:2)(c=n:3)}"}, // AND binds tighter
        {"a=1\r\nAND\tb=2", "{(a=n:1)(b=n:2)}"},
        {"((((a=1))))", "{(a=n:1)}"},
        {"a=1 AND(b=2)", "{(a=n:1)(b=n:2)}"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(shown(parseFilter(each.text)), each.tree) << each.text;
}

TEST(FilterGrammar, WhatBreaksItIs3001) {
    const char* texts[] = {"a",
                           "a=",
                           "=1",
                           "a=1 AND ",
                           "AND a=1",
                           "a=1 b=2",
                           "a=1 AND AND b=2",
                           "a=1 OR",
                           "()",
                           "(a=1",
                           "a=1)",
                           "(a=1 OR b=2) AND c=3",
                           "c=3 AND (a=1 OR b=2)",
                           "NOT a=1",
                           "a IS NULL",
                           "a IN (1,2)",
                           "a BETWEEN 1 AND 2",
                           "a=b",
                           "a='x",
                           "a=#1-1-2011",
                           "[a=1",
                           "a LIKE '*x'",
                           "a LIKE '%x'",
                           "a LIKE 'x*y'",
                           "a LIKE '*x*y*'",
                           "a LIKE '***'",
                           "a LIKE 5",
                           "a LIKE NULL",
                           "a<NULL",
                           "a>=NULL",
                           "a=12,5",
                           "a=12abc",
                           "a=1e",
                           "a=--1",
                           "a=\"x\"",
                           "a=1;",
                           "a=1 -- x",
                           "a+1=2",
                           "data nascita=1",
                           "a=.",
                           "OR=1",
                           "a==1",
                           "a=1 XOR b=2",
                           "a=1 ORb=2",
                           "a !=1",
                           "()a=1",
                           "a=(1)"};
    for (const char* text : texts)
        EXPECT_EQ(errorOf([&] { parseFilter(text); }), adErrInvalidArgument) << text;
}

TEST(FilterGrammar, TheReasonIsItalianAndNamesWhatIsWrong) {
    EXPECT_NE(descriptionOf([] { parseFilter("a='x"); }).find("apice"), std::string::npos);
    EXPECT_NE(descriptionOf([] { parseFilter("(a=1 OR b=2) AND c=3"); }).find("alternative"),
              std::string::npos);
}

TEST(FilterGrammar, DepthAndLengthCostNoStackAndNoSquare) {
    const std::size_t many = 200'000;
    std::string deep(many, '(');
    deep += "a=1" + std::string(many, ')');
    EXPECT_EQ(shown(parseFilter(deep)), "{(a=n:1)}");
    std::string nested;
    for (std::size_t i = 0; i < many; ++i)
        nested += "(a=1 OR ";
    EXPECT_EQ(parseFilter(nested + "b=2" + std::string(many, ')')).groups.size(), many + 1);
    std::string chain = "a=1";
    for (std::size_t i = 0; i < many; ++i)
        chain += " AND a=1";
    EXPECT_EQ(parseFilter(chain).groups.front().size(), many + 1);
}

// Whatever comes is parsed or refused with 3001.
TEST(FilterGrammar, RandomTextsAreReadOrRefused) {
    std::mt19937 random(20261121);
    const std::string pieces[] = {
        "a",          "[a b]", "=",    "<>",   "<",    ">=",   " LIKE ", "'x*'",  "''",   "'",
        "#1-1-2011#", "#",     "12.5", "-",    "e",    "$",    "NULL",   " AND ", " OR ", "(",
        ")",          "[",     "]",    "\xC3", "True", "\x01", " ",      "*",     "%",    "città"};
    int read = 0;
    for (int round = 0; round < 100'000; ++round) {
        std::string text;
        for (unsigned n = random() % 9; n > 0; --n)
            text += pieces[random() % std::size(pieces)];
        const auto error = errorOf([&] { parseFilter(text); });
        ASSERT_TRUE(error == 0 || error == adErrInvalidArgument) << text;
        read += error == 0;
    }
    EXPECT_GT(read, 1000);
}

} // namespace
} // namespace norvel::adodb
