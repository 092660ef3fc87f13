// Sorts of so many rows that all threads take part.
#include "platform/runtime/Text.h"
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/SortStores.h"

#include <algorithm>
#include <functional>
#include <random>

namespace norvel::adodb {
namespace {

const Variant null = Variant::null();

// Values made of whole numbers, of which the least comes first.
struct Kind {
    const char* name;
    DataTypeEnum type;
    unsigned numbers; // so many different ones
    std::function<Variant(unsigned number, unsigned row)> value;
};

std::string padded(unsigned number) {
    const std::string digits = std::to_string(number);
    return std::string(7 - digits.size(), '0') + digits;
}

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all{
        {"texts", adVarWChar, 1'000'000, [](unsigned n, unsigned) { return Variant(padded(n)); }},
        // equal for many words, then few values, then many
        {"texts that begin alike", adVarWChar, 200'000,
         [](unsigned n, unsigned) {
             return Variant(std::string(40, 'c') + padded(n / 100'000) +
                            std::string(30, n % 2 == 0 ? 'a' : 'A') + padded(n));
         }},
        {"accents and case", adVarWChar, 30'000,
         [](unsigned n, unsigned row) {
             const std::string ends = row % 2 == 0 ? "a,à,b," : "A,À,B,";
             return Variant("Città " + padded(n / 3) + splitText(ends, ",")[n % 3]);
         }},
        {"few texts", adVarWChar, 300, [](unsigned n, unsigned) { return Variant(padded(n)); }},
        // whole groups of the one, and of the other
        {"few texts, then many", adVarWChar, 200'000,
         [](unsigned n, unsigned row) { return Variant(padded(row < 70'000 ? n % 50 : n)); }},
        {"NULLs and one text", adVarWChar, 2,
         [](unsigned n, unsigned) { return n == 0 ? null : Variant("sempre lo stesso testo"); }},
        {"whole numbers", adInteger, 5'000,
         [](unsigned n, unsigned) { return Variant(static_cast<std::int32_t>(n) - 2500); }},
        {"wide whole numbers", adBigInt, 1'000'000,
         [](unsigned n, unsigned) {
             return Variant((static_cast<std::int64_t>(n) - 500'000) * 9'000'000'000'000);
         }},
        {"doubles", adDouble, 1'000'000,
         [](unsigned n, unsigned) { return Variant((n - 500'000.0) / 7); }},
        {"doubles and NULLs", adDouble, 100,
         [](unsigned n, unsigned) { return n == 0 ? null : Variant(n * 1.5 - 70); }},
        {"money", adNumeric, 1'000'000,
         [](unsigned n, unsigned) { return Variant((static_cast<double>(n) - 300'000) / 100); }},
        {"Booleans", adBoolean, 2, [](unsigned n, unsigned) { return Variant(n == 0); }},
        {"dates", adDate, 20'000,
         [](unsigned n, unsigned) { return Variant(Date{static_cast<double>(n) + 10'000}); }},
        {"times", adDBTimeStamp, 900'000,
         [](unsigned n, unsigned) { return Variant(Date{40'000 + n / 1000.0}); }},
        {"of several types", adVariant, 60'000,
         [](unsigned n, unsigned row) {
             if (n < 20'000)
                 return row % 2 == 0 ? Variant(static_cast<double>(n))
                                     : Variant(static_cast<std::int64_t>(n));
             if (n < 40'000) return Variant(Date{static_cast<double>(n)});
             return Variant(padded(n));
         }},
    };
    return all;
}

class SortLarge : public testing::TestWithParam<std::size_t> {
  protected:
    static constexpr RowNumber rows = 100'000;

    SortLarge() : kind(kinds()[GetParam()]) {
        std::mt19937 random(static_cast<unsigned>(GetParam()) + 7);
        std::vector<CellRow> values;
        for (RowNumber row = 0; row < rows; ++row) {
            unsigned number = static_cast<unsigned>(random()) % kind.numbers;
            if (std::string(kind.name) == "few texts, then many" && row < 70'000) number %= 50;
            numbers.push_back(number);
            others.push_back(static_cast<unsigned>(random()) % 3);
            values.push_back({kind.value(number, row), static_cast<std::int32_t>(others.back())});
        }
        store = storeOf({describeColumn("c", kind.type), describeColumn("n", adInteger)}, values,
                        35'000);
    }
    RowList reference(RowList list, bool ascending) const {
        std::ranges::stable_sort(list, [&](RowNumber a, RowNumber b) {
            return ascending ? numbers[a] < numbers[b] : numbers[a] > numbers[b];
        });
        return list;
    }
    RowList every(unsigned n) const {
        RowList list;
        for (RowNumber row = 0; row < rows; row += n)
            list.push_back(row);
        return list;
    }

    const Kind& kind;
    std::vector<unsigned> numbers;
    std::vector<unsigned> others;
    std::shared_ptr<ColumnStore> store;
};

TEST_P(SortLarge, WholeStore) {
    for (const unsigned threads : {1U, 0U}) {
        store->derived().forget(0);
        ASSERT_TRUE(sorted(*store, "c", threads) == reference(every(1), true)) << kind.name;
        ASSERT_TRUE(sorted(*store, "c DESC", threads) == reference(every(1), false)) << kind.name;
    }
}

TEST_P(SortLarge, Parts) {
    for (const bool kept : {false, true})
        for (const unsigned n : {3U, 40U, 1000U}) {
            if (kept) sorted(*store, "c");
            ASSERT_TRUE(sorted(*store, "c", every(n)) == reference(every(n), true))
                << kind.name << ", one in " << n;
            ASSERT_TRUE(sorted(*store, "c DESC", every(n)) == reference(every(n), false))
                << kind.name << ", one in " << n;
        }
}

TEST_P(SortLarge, BehindAnotherKey) {
    RowList expected = every(1);
    std::ranges::stable_sort(expected, [&](RowNumber a, RowNumber b) {
        return others[a] != others[b] ? others[a] > others[b] : numbers[a] < numbers[b];
    });
    ASSERT_TRUE(sorted(*store, "n DESC, c") == expected) << kind.name;
    expected = every(1);
    std::ranges::stable_sort(expected, [&](RowNumber a, RowNumber b) {
        return numbers[a] != numbers[b] ? numbers[a] > numbers[b] : others[a] < others[b];
    });
    ASSERT_TRUE(sorted(*store, "c DESC, n") == expected) << kind.name;
}

TEST_P(SortLarge, MergedLists) {
    const auto order = orderOf(*store, "c");
    RowList a, b;
    for (RowNumber row = 0; row < rows; ++row)
        (row % 25'000 < 100 ? a : b).push_back(row);
    a = reference(a, true);
    b = reference(b, true);
    const RowList whole = reference(every(1), true);
    ASSERT_TRUE(order->merge(*store, a, b) == whole) << kind.name;
    sorted(*store, "c");
    ASSERT_TRUE(order->merge(*store, b, a) == whole) << kind.name;
}

INSTANTIATE_TEST_SUITE_P(Kinds, SortLarge, testing::Range(std::size_t{0}, kinds().size()));

// A recordset without a source has a group for each of its rows.
TEST(SortManyGroups, OneRowEach) {
    auto store = std::make_shared<ColumnStore>(
        std::vector{describeColumn("t", adVarWChar), describeColumn("n", adInteger)});
    GroupBuilder builder(store);
    std::vector<unsigned> numbers;
    std::mt19937 random(8);
    for (int row = 0; row < 100'000; ++row) {
        numbers.push_back(static_cast<unsigned>(random()) % 5000);
        builder.append({padded(numbers.back()), static_cast<std::int32_t>(numbers.back())});
    }
    RowList expected = allRows(*store);
    std::ranges::stable_sort(expected, {}, [&](RowNumber row) { return numbers[row]; });
    ASSERT_TRUE(sorted(*store, "t") == expected);
    ASSERT_TRUE(sorted(*store, "n") == expected);
}

} // namespace
} // namespace norvel::adodb
