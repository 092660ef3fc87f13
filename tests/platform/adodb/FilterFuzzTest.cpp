// Filter and sort texts with something wrong in them: each is read, or refused with 3001.
#include "platform/adodb/filter/FilterProgram.h"
#include "platform/adodb/sort/SortOrder.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <iterator>
#include <random>

namespace norvel::adodb {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto timeForEach = std::chrono::milliseconds(1500);

constexpr const char* filters[] = {
    "nome='Rossi'",
    "nome LIKE '*d''Ami*' AND [data nascita] >= #15-03-2011 12:30#",
    "(a=1 AND b=2) OR (c=-3.5e-7 AND d<>NULL) OR nome='x'",
    "prezzo=$50.00 OR attivo = FALSE or attivo=True",
    "codice=#'1'# AND [a]]b]<>'%' AND note=NULL",
    "((((codice>1e308))))",
    "citt\u00e0 like 'Forl\u00ec%' AND nome<>'' AND nome > 'a'",
};
constexpr const char* sorts[] = {"nome", "[data nascita]  DESC, nome ASC", "[a]]b] asc",
                                 "codice,nome  desc , [città]", "[ASC] DESC"};
constexpr const char* bits[] = {"'", "''",         "#",        "[",    "]",     "(",    ")",
                                "*", "%",          "=",        "<",    ">",     "<>",   ",",
                                " ", "AND",        " OR ",     "NULL", "e9",    "-",    ".",
                                "$", "\xC3",       "\xF0\x9F", "\x01", "à",     "DESC", "LIKE ",
                                "1", "9999999999", "True",     "\n",   "e-400", "\xFF"};

// One text with a few changes made at random places.
template <class List>
std::string mutated(const List& texts, std::mt19937& random) {
    std::string text = texts[random() % std::size(texts)];
    for (unsigned changes = random() % 6; changes > 0; --changes) {
        const std::size_t at = random() % (text.size() + 1);
        const std::size_t length = random() % 8;
        switch (random() % 5) {
        case 0:
            text.insert(at, bits[random() % std::size(bits)]);
            break;
        case 1:
            text.erase(at, length);
            break;
        case 2:
            text.insert(at, text.substr(random() % (text.size() + 1), length * 4));
            break;
        case 3:
            if (at < text.size()) text[at] = static_cast<char>(random());
            break;
        default:
            text += (random() % 2 == 0 ? " AND " : " OR ") +
                    std::string(texts[random() % std::size(texts)]);
        }
    }
    if (random() % 50 == 0) text.insert(random() % (text.size() + 1), 1, '\0');
    return text;
}

// Runs a reading over and over until the time is up; at least one text is read, one is refused.
template <class List, class Read>
void fuzz(const List& texts, Read read) {
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << "\n";
    std::mt19937 random(seed);
    int accepted = 0;
    int refused = 0;
    for (const auto end = Clock::now() + timeForEach; Clock::now() < end;) {
        const std::string text = mutated(texts, random);
        const auto error = errorOf([&] { read(text); });
        ASSERT_TRUE(error == 0 || error == adErrInvalidArgument || error == adErrItemNotFound)
            << error << " from seed " << seed << ": " << text;
        ++(error == 0 ? accepted : refused);
    }
    EXPECT_GT(accepted, 0) << "seed " << seed;
    EXPECT_GT(refused, 0) << "seed " << seed;
}

TEST(FilterFuzz, AFilterTextIsReadOrRefused) {
    fuzz(filters, [](const std::string& text) {
        // What is read is well formed: every clause has a name, and values as their kind has them.
        for (const auto& group : parseFilter(text).groups) {
            ASSERT_FALSE(group.empty()) << text;
            for (const FilterClause& clause : group) {
                const bool number = clause.value.kind == FilterValue::Kind::Number;
                ASSERT_FALSE(number && clause.value.text.empty()) << text;
            }
        }
    });
}

TEST(FilterFuzz, AFilterThatIsReadCompilesOrIsRefusedForItsColumns) {
    const std::vector<ColumnInfo> columns{
        describeColumn("nome", adVarWChar),     describeColumn("codice", adInteger),
        describeColumn("a", adBigInt),          describeColumn("b", adDouble),
        describeColumn("c", adDecimal),         describeColumn("d", adVarWChar),
        describeColumn("data nascita", adDate), describeColumn("prezzo", adCurrency),
        describeColumn("attivo", adBoolean),    describeColumn("note", adLongVarBinary),
        describeColumn("a]b", adVarWChar),      describeColumn("città", adVarWChar)};
    fuzz(filters, [&](const std::string& text) {
        const auto program = FilterProgram::compile(parseFilter(text), columns);
        ASSERT_TRUE(program);
    });
}

TEST(FilterFuzz, ASortTextIsReadOrRefused) {
    fuzz(sorts, [](const std::string& text) { parseSort(text); });
}

} // namespace
} // namespace norvel::adodb
