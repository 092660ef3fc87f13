// Sorts over the columns of a store: what comes before what.
#include "platform/runtime/Formats.h"
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/SortStores.h"

#include <algorithm>
#include <limits>
#include <thread>

namespace norvel::adodb {
namespace {

const Variant null = Variant::null();

// Sorts the column both ways, whole and in parts, on one thread and on all, in groups of all sizes.
void check(DataTypeEnum type, const std::vector<Variant>& values, const RowList& ascending,
           const RowList& descending) {
    for (const std::size_t groupRows : {65536U, 1U, 3U}) {
        for (const unsigned threads : {1U, 0U}) {
            const auto store = columnOf(type, values, groupRows);
            EXPECT_EQ(sorted(*store, "c", threads), ascending) << groupRows;
            EXPECT_EQ(sorted(*store, "c DESC", threads), descending) << groupRows;
            EXPECT_EQ(sorted(*store, "c", threads), ascending) << "again, " << groupRows;
        }
        const auto fresh = columnOf(type, values, groupRows);
        const auto order = orderOf(*fresh, "c");
        for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
            const RowNumber a = ascending[i];
            const RowNumber b = ascending[i + 1];
            const int compared = order->compare(*fresh, a, b);
            EXPECT_TRUE(compared < 0 || (compared == 0 && a < b)) << a << " " << b;
            EXPECT_EQ(order->compare(*fresh, b, a), -compared) << a << " " << b;
            // two rows alone, of which the column keeps nothing yet
            EXPECT_EQ(sorted(*fresh, "c", RowList{b, a}), (RowList{a, b})) << a << " " << b;
        }
    }
}

Storage storageOf(DataTypeEnum type, const std::vector<Variant>& values) {
    return columnOf(type, values)->group(0).segment(0).storage;
}

TEST(SortOrder, NamesAColumnThatIsNotThere) {
    const std::vector<ColumnInfo> columns{describeColumn("nome", adVarWChar),
                                          describeColumn("età", adInteger)};
    const auto make = [&](const char* text) {
        return errorOf([&] { SortOrder::make(parseSort(text), columns); });
    };
    EXPECT_EQ(make("manca"), adErrItemNotFound);
    EXPECT_EQ(make("nome, manca DESC"), adErrItemNotFound);
    EXPECT_EQ(make("NOME, ETÀ desc"), 0); // names in any case
    EXPECT_EQ(make("[Nome]"), 0);
    EXPECT_EQ(make(""), 0);
}

TEST(SortOrder, NamesAColumnTwice) {
    const std::vector<ColumnInfo> columns{describeColumn("nome", adVarWChar),
                                          describeColumn("citta", adVarWChar)};
    const auto make = [&](const char* text) {
        return errorOf([&] { SortOrder::make(parseSort(text), columns); });
    };
    EXPECT_EQ(make("nome, nome"), dbCantOrder);
    EXPECT_EQ(make("nome, citta, [NOME] DESC"), dbCantOrder);
    EXPECT_EQ(make("nome, manca, nome"), adErrItemNotFound);
}

TEST(SortOrder, NoKeysIsTheRowsOwnOrder) {
    const auto store = columnOf(adInteger, {std::int32_t{3}, std::int32_t{1}, std::int32_t{2}});
    EXPECT_EQ(sorted(*store, ""), (RowList{0, 1, 2}));
    EXPECT_EQ(sorted(*store, "", RowList{2, 0}), (RowList{0, 2}));
    EXPECT_EQ(orderOf(*store, "")->compare(*store, 0, 1), 0);
}

TEST(SortOrder, NoRowsAndOneRow) {
    const auto empty = columnOf(adVarWChar, {});
    EXPECT_EQ(sorted(*empty, "c"), RowList{});
    EXPECT_EQ(orderOf(*empty, "c")->merge(*empty, {}, {}), RowList{});
    const auto one = columnOf(adVarWChar, {"x"});
    EXPECT_EQ(sorted(*one, "c DESC"), RowList{0});
    EXPECT_EQ(sorted(*one, "c", RowList{}), RowList{});
}

TEST(SortOrder, Texts) {
    const std::vector<Variant> names{"Zorzi",  "rossi",  null,       "àbate",   "",
                                     "ROSSI",  "abate",  "éclair",   "d'Amico", "De Luca",
                                     "È vero", "eclair", "Esposito", "Rossi",   null};
    ASSERT_EQ(storageOf(adVarWChar, {"a"}), Storage::Text);
    check(adVarWChar, names, {2, 14, 4, 6, 3, 8, 9, 10, 11, 7, 12, 1, 5, 13, 0},
          {0, 1, 5, 13, 12, 7, 11, 10, 9, 8, 3, 6, 4, 2, 14});
}

TEST(SortOrder, TextsWithAccentsInPiecesStandWithTheComposedOnes) {
    check(adVarWChar, {"citt\u00E0", "citta", "CITTA\u0300", "cittb"}, {1, 0, 2, 3}, {3, 0, 2, 1});
}

TEST(SortOrder, LongTextsDifferAtTheirEndsOnly) {
    const std::string beginning(20'000, 'a'); // too long for the arena
    check(adLongVarWChar, {beginning + "c", beginning + "B", beginning, null, beginning + "b"},
          {3, 2, 1, 4, 0}, {0, 1, 4, 2, 3});
}

TEST(SortOrder, TextsWithBytesThatAreNoneBreakNothing) {
    const auto store = columnOf(adVarWChar, {"b", std::string("a\xE0"), std::string("\0", 1), "a"});
    RowList rows = sorted(*store, "c");
    const auto order = orderOf(*store, "c");
    for (std::size_t i = 0; i + 1 < rows.size(); ++i)
        EXPECT_LE(order->compare(*store, rows[i], rows[i + 1]), 0);
    std::ranges::sort(rows);
    EXPECT_EQ(rows, allRows(*store));
}

// Texts that repeat lie in a dictionary.
void checkDictionary(unsigned distinct, Storage storage) {
    std::vector<Variant> values;
    RowList expected, turned;
    const auto text = [](unsigned n) { return "Via " + std::to_string(10'000 + n); };
    constexpr unsigned repeats = 30;
    for (unsigned i = 0; i < distinct * repeats; ++i)
        values.emplace_back(text((i * 7) % distinct));
    for (unsigned n = 0; n < distinct; ++n)
        for (RowNumber row = 0; row < values.size(); ++row)
            if ((row * 7) % distinct == n) expected.push_back(row);
    for (unsigned n = distinct; n-- > 0;)
        turned.insert(turned.end(), expected.begin() + n * repeats,
                      expected.begin() + (n + 1) * repeats);
    const auto store = columnOf(adVarWChar, values);
    EXPECT_EQ(store->group(0).segment(0).storage, storage);
    EXPECT_EQ(sorted(*store, "c"), expected);
    EXPECT_EQ(sorted(*store, "c DESC"), turned);
    const auto groups = columnOf(adVarWChar, values, 5000); // several dictionaries
    EXPECT_EQ(sorted(*groups, "c", 1), expected);
    EXPECT_EQ(sorted(*groups, "c DESC", 1), turned);
}
TEST(SortOrder, DictionariesOfFewTexts) {
    checkDictionary(200, Storage::Dictionary8);
}
TEST(SortOrder, DictionariesOfManyTexts) {
    checkDictionary(1000, Storage::Dictionary16);
}

TEST(SortOrder, EqualTextsOfADictionaryInSeveralFormsKeepTheirRowsOrder) {
    std::vector<Variant> values;
    const char* const forms[] = {"rossi", "Rossi", "ROSSI", "", "bianchi"};
    RowList empties, whites, reds;
    for (RowNumber row = 0; row < 5000; ++row) {
        const unsigned n = row * 3 % 5;
        values.emplace_back(forms[n]);
        (n < 3 ? reds : n == 3 ? empties : whites).push_back(row);
    }
    const auto store = columnOf(adVarWChar, values);
    ASSERT_EQ(store->group(0).segment(0).storage, Storage::Dictionary8);
    RowList expected = empties;
    expected.insert(expected.end(), whites.begin(), whites.end());
    expected.insert(expected.end(), reds.begin(), reds.end());
    EXPECT_EQ(sorted(*store, "c"), expected);
}

TEST(SortOrder, WholeNumbers) {
    const auto least = std::numeric_limits<std::int64_t>::min();
    const auto most = std::numeric_limits<std::int64_t>::max();
    ASSERT_EQ(storageOf(adInteger, {std::int32_t{1}}), Storage::Int32);
    check(adInteger, {std::int32_t{5}, std::int32_t{-5}, null, std::int32_t{0}, std::int32_t{5}},
          {2, 1, 3, 0, 4}, {0, 4, 3, 1, 2});
    ASSERT_EQ(storageOf(adBigInt, {most}), Storage::Int64);
    check(adBigInt, {most, std::int64_t{0}, least, null, most - 1, std::int64_t{-1}, least + 1},
          {3, 2, 6, 5, 1, 4, 0}, {0, 4, 1, 5, 6, 2, 3});
}

TEST(SortOrder, Booleans) {
    ASSERT_EQ(storageOf(adBoolean, {true}), Storage::Boolean);
    // True is -1
    check(adBoolean, {false, true, null, true, false}, {2, 1, 3, 0, 4}, {0, 4, 1, 3, 2});
}

TEST(SortOrder, Doubles) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    ASSERT_EQ(storageOf(adDouble, {1.5}), Storage::Double);
    check(adDouble, {2.5, -infinity, null, 0.0, -0.0, -2.5, infinity, 1e-300, 2.5},
          {2, 1, 5, 3, 4, 7, 0, 8, 6}, {6, 0, 8, 7, 3, 4, 5, 1, 2});
}

TEST(SortOrder, SinglesAreEqualWhereTheirNearestSinglesAre) {
    check(adSingle, {0.1, 0.1000000001, 0.0999999999, 0.2}, {0, 1, 2, 3}, {3, 0, 1, 2});
}

TEST(SortOrder, ScaledNumbers) {
    ASSERT_EQ(storageOf(adNumeric, {1.25}), Storage::Scaled32);
    check(adNumeric, {12.5, -0.01, null, std::int32_t{12}, 12.49, 12.5}, {2, 1, 3, 4, 0, 5},
          {0, 5, 4, 3, 1, 2});
    ASSERT_EQ(storageOf(adCurrency, {std::int64_t{900'000'000'000}}), Storage::Scaled);
    check(adCurrency, {std::int64_t{900'000'000'000}, 0.0001, null, -0.0001}, {2, 3, 1, 0},
          {0, 1, 3, 2});
}

TEST(SortOrder, ScaledNumbersOfSeveralScales) {
    // groups of 1 and 3 rows have scales of their own
    check(adNumeric, {2.0, 1.25, 10.5, 1.2, 1.255, null, 10.0}, {5, 3, 1, 4, 0, 6, 2},
          {2, 6, 0, 4, 1, 3, 5});
}

TEST(SortOrder, Dates) {
    const auto day = [](int y, int m, int d, int hour = 0) {
        return Variant(*makeDate({y, m, d}, {hour, 0, 0}));
    };
    const std::vector<Variant> whole{day(2011, 3, 15), day(1899, 12, 30), null, day(1811, 5, 3)};
    ASSERT_EQ(storageOf(adDate, whole), Storage::Days);
    check(adDate, whole, {2, 3, 1, 0}, {0, 1, 3, 2});
    const std::vector<Variant> times{day(2011, 3, 15, 12), day(2011, 3, 15), null,
                                     day(2011, 3, 14, 23), day(2011, 3, 15, 12)};
    ASSERT_EQ(storageOf(adDBTimeStamp, times), Storage::Date);
    check(adDBTimeStamp, times, {2, 3, 1, 0, 4}, {0, 4, 1, 3, 2});
}

TEST(SortOrder, BytesCompareWithoutSignTheShorterFirst) {
    const std::vector<Variant> values{Bytes{0x80}, Bytes{0x7F, 0xFF}, Bytes{},  null,
                                      Bytes{0x7F}, Bytes{0, 0},       Bytes{0}, Bytes{0x80}};
    ASSERT_EQ(storageOf(adLongVarBinary, values), Storage::Bytes);
    check(adLongVarBinary, values, {3, 2, 6, 5, 4, 1, 0, 7}, {0, 7, 1, 4, 5, 6, 2, 3});
}

TEST(SortOrder, OnlyNulls) {
    ASSERT_EQ(storageOf(adVarWChar, {null, null}), Storage::Null);
    check(adVarWChar, {null, null, null}, {0, 1, 2}, {0, 1, 2});
}

TEST(SortOrder, KindsOfAMixedColumnComeOneAfterTheOther) {
    const std::vector<Variant> values{"10", std::int64_t{9},  Bytes{1}, null, Date{1.0}, 10.5,
                                      "9",  std::int64_t{10}, Date{0.5}};
    ASSERT_EQ(storageOf(adVariant, values), Storage::Mixed);
    check(adVariant, values, {3, 1, 7, 5, 8, 4, 0, 6, 2}, {2, 6, 0, 4, 8, 5, 7, 1, 3});
}

TEST(SortOrder, NumbersOfSeveralTypesCompareExactly) {
    check(adVariant,
          {9007199254740992.0, std::int64_t{9007199254740993}, std::int64_t{9007199254740991},
           1e300, -1e300, std::int64_t{9007199254740992}},
          {4, 2, 0, 5, 1, 3}, {3, 1, 0, 5, 2, 4});
}

TEST(SortOrder, ExceptionsOfOtherTypesStandWhereTheirKindStands) {
    check(adInteger,
          {std::int64_t{5}, "cinque", 5.5, null, std::int64_t{-1}, "Cinque", std::int64_t{6}},
          {3, 4, 0, 2, 6, 1, 5}, {1, 5, 6, 2, 0, 4, 3});
    check(adDouble, {1.5, "x", null, 0.5}, {2, 3, 0, 1}, {1, 0, 3, 2});
    check(adDate, {Date{3.0}, "mai", null, Date{-3.0}}, {2, 3, 0, 1}, {1, 0, 3, 2});
}

TEST(SortOrder, ObjectsAreEqualAndComeLast) {
    auto store = std::make_shared<ColumnStore>(std::vector{describeColumn("c", adVariant)});
    GroupBuilder builder(store);
    for (const Variant& value :
         {Variant(ObjectRef()), Variant("a"), Variant(std::vector<Variant>{1.0}), Variant(1.0)})
        builder.append({value});
    EXPECT_EQ(sorted(*store, "c"), (RowList{3, 1, 0, 2}));
    EXPECT_EQ(sorted(*store, "c DESC"), (RowList{0, 2, 1, 3}));
}

TEST(SortOrder, SeveralKeysEachWithItsDirection) {
    const std::vector<ColumnInfo> columns{describeColumn("citta", adVarWChar),
                                          describeColumn("eta", adInteger),
                                          describeColumn("peso", adDouble)};
    const std::vector<CellRow> rows{
        {"Roma", std::int32_t{30}, 1.0}, {"roma", std::int32_t{30}, 2.0},
        {"Bari", std::int32_t{40}, 1.0}, {null, std::int32_t{30}, 1.0},
        {"Roma", std::int32_t{20}, 3.0}, {"Bari", null, 1.0},
        {"ROMA", std::int32_t{30}, 0.5}};
    for (const std::size_t groupRows : {65536U, 2U}) {
        const auto store = storeOf(columns, rows, groupRows);
        EXPECT_EQ(sorted(*store, "citta, eta"), (RowList{3, 5, 2, 4, 0, 1, 6}));
        EXPECT_EQ(sorted(*store, "citta, eta DESC"), (RowList{3, 2, 5, 0, 1, 6, 4}));
        EXPECT_EQ(sorted(*store, "citta DESC, eta, peso DESC"), (RowList{4, 1, 0, 6, 5, 2, 3}));
        EXPECT_EQ(sorted(*store, "eta, citta DESC"), (RowList{5, 4, 0, 1, 6, 3, 2}));
        const auto order = orderOf(*store, "citta, eta DESC");
        EXPECT_EQ(order->compare(*store, 0, 1), 0);
        EXPECT_LT(order->compare(*store, 0, 4), 0);
        EXPECT_GT(order->compare(*store, 4, 0), 0);
        EXPECT_LT(order->compare(*store, 3, 5), 0);
    }
}

TEST(SortOrder, KnowsWhichOrdersAreTurnedRound) {
    const std::vector<ColumnInfo> columns{describeColumn("a", adVarWChar),
                                          describeColumn("b", adInteger)};
    const auto reverses = [&](const char* one, const char* other) {
        return SortOrder::make(parseSort(one), columns)
            ->reverses(*SortOrder::make(parseSort(other), columns));
    };
    EXPECT_TRUE(reverses("a", "a DESC"));
    EXPECT_TRUE(reverses("a DESC", "[A] asc"));
    EXPECT_TRUE(reverses("a, b DESC", "a DESC, b"));
    EXPECT_FALSE(reverses("a", "a"));
    EXPECT_FALSE(reverses("a, b", "a DESC, b"));
    EXPECT_FALSE(reverses("a, b", "b DESC, a DESC"));
    EXPECT_FALSE(reverses("a", "a DESC, b DESC"));
    EXPECT_FALSE(reverses("a", "b DESC"));
    EXPECT_FALSE(reverses("", ""));
}

TEST(SortOrder, AChangedValueSortsAnew) {
    const auto store = columnOf(adInteger, {std::int32_t{3}, std::int32_t{1}, std::int32_t{2}});
    EXPECT_EQ(sorted(*store, "c"), (RowList{1, 2, 0}));
    store->change(0, 0, std::int32_t{0});
    EXPECT_EQ(sorted(*store, "c"), (RowList{0, 1, 2}));
    EXPECT_EQ(sorted(*store, "c DESC"), (RowList{2, 1, 0}));
    store->change(0, 1, null);
    EXPECT_EQ(sorted(*store, "c"), (RowList{1, 0, 2}));
    store->change(0, 1, std::int32_t{9});
    EXPECT_EQ(sorted(*store, "c"), (RowList{0, 2, 1}));
}

// Rows, and values not yet seen between those seen, arrive after the first sort.
TEST(SortOrder, WhatIsKeptGrowsWithTheStore) {
    auto store = std::make_shared<ColumnStore>(
        std::vector{describeColumn("t", adVarWChar), describeColumn("n", adInteger)});
    GroupBuilder builder(store);
    std::vector<std::pair<int, RowNumber>> expected;
    for (int part = 0; part < 12; ++part) {
        std::vector<CellRow> rows;
        for (int i = 0; i < 300; ++i) {
            const int number = (i * 37 + part * 101) % 1000;
            expected.emplace_back(number, static_cast<RowNumber>(expected.size()));
            rows.push_back({"v" + std::to_string(1000 + number), std::int32_t{number}});
        }
        addRows(builder, 2, rows, 128);
        std::ranges::sort(expected);
        RowList wanted;
        for (const auto& each : expected)
            wanted.push_back(each.second);
        EXPECT_EQ(sorted(*store, "t"), wanted);
        EXPECT_EQ(sorted(*store, "n"), wanted);
    }
}

TEST(SortOrder, ThreadsMaySortWhileRowsArrive) {
    auto store = std::make_shared<ColumnStore>(
        std::vector{describeColumn("t", adVarWChar), describeColumn("n", adInteger)});
    std::atomic<bool> ended{false};
    const auto sorter = [&](const char* by) {
        const auto order = orderOf(*store, by);
        bool last = false;
        while (!last) {
            last = ended;
            RowList rows = allRows(*store);
            order->sort(*store, rows);
            for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
                const int compared = order->compare(*store, rows[i], rows[i + 1]);
                ASSERT_TRUE(compared < 0 || (compared == 0 && rows[i] < rows[i + 1]));
            }
            std::ranges::sort(rows);
            ASSERT_TRUE(std::ranges::adjacent_find(rows) == rows.end());
            ASSERT_TRUE(rows.empty() || rows.back() + 1 == rows.size());
        }
    };
    std::thread one(sorter, "t, n DESC");
    std::thread two(sorter, "t DESC");
    std::thread three(sorter, "n");
    GroupBuilder builder(store);
    for (int part = 0; part < 20; ++part) {
        std::vector<CellRow> rows;
        rows.reserve(200);
        for (int i = 0; i < 200; ++i)
            rows.push_back({"v" + std::to_string((i * 37 + part) % 90), std::int32_t{i % 7}});
        addRows(builder, 2, rows, 50);
    }
    ended = true;
    one.join();
    two.join();
    three.join();
}

} // namespace
} // namespace norvel::adodb
