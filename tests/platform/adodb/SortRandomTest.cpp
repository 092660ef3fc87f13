// Random stores, sorted by the engine and by the standard library over ranks written down here.
#include "platform/runtime/Text.h"
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/SortStores.h"

#include <algorithm>
#include <random>

namespace norvel::adodb {
namespace {

// Values with the rank that each has by the rules: what is equal has the same.
struct Ranked {
    Variant value;
    int rank = 0;
};

std::vector<Ranked> ranked(const std::vector<std::vector<Variant>>& classes) {
    std::vector<Ranked> all;
    int rank = 0;
    for (const auto& equals : classes) {
        for (const Variant& value : equals)
            all.push_back({value, rank});
        ++rank;
    }
    return all;
}

const Variant null = Variant::null();

struct Pool {
    DataTypeEnum type;
    std::vector<Ranked> values;
};

const std::vector<Pool>& pools() {
    static const std::vector<Pool> all{
        {adVarWChar,
         ranked({{null},
                 {""},
                 {" "},
                 {" a", " A"},
                 {"1"}, // signs among themselves stand as each system has them
                 {"10"},
                 {"2"},
                 {"a", "A"},
                 {"à", "À", "a\u0300"},
                 {"a b", "A b"},
                 {"ab", "AB", "Ab"},
                 {"àb", "ÀB"},
                 {"abcdefgh", "ABCDEFGH"},
                 {"abcdefghà", "ABCDEFGHÀ"},
                 {"abcdefghi", "Abcdefghi"},
                 {"abcdefghij"},
                 {"ac"},
                 {"citta", "CITTA"},
                 {"città", "CITTÀ", "Citta\u0300"},
                 {"citte"},
                 {"d'Amico", "D'AMICO"},
                 {"De Luca", "de luca"},
                 {"Deluca"},
                 {"e"},
                 {"è", "È"},
                 {"z"},
                 {"z" + std::string(300, 'a')},
                 {"z" + std::string(300, 'a') + "b", "Z" + std::string(300, 'A') + "B"}})},
        {adInteger, ranked({{null},
                            {std::int64_t{-2147483648}},
                            {std::int64_t{-1}},
                            {std::int64_t{0}},
                            {std::int64_t{1}, std::int64_t{1}},
                            {std::int64_t{256}},
                            {std::int64_t{65536}},
                            {std::int64_t{2147483647}}})},
        {adBigInt, ranked({{null},
                           {std::int64_t{-9223372036854775807}},
                           {std::int64_t{-4294967296}},
                           {std::int64_t{0}},
                           {std::int64_t{9007199254740992}},
                           {std::int64_t{9007199254740993}}})},
        {adDouble,
         ranked({{null}, {-1e300}, {-1.5}, {-1e-300}, {0.0, -0.0}, {1e-300}, {1.5}, {1e300}})},
        {adNumeric, ranked({{null}, {-10.5}, {-0.01}, {0.0}, {0.5}, {0.505}, {12.0}, {12.25}})},
        {adDate, ranked({{null}, {Date{-1000.0}}, {Date{0.0}}, {Date{1.0}}, {Date{40617.0}}})},
        {adDBTimeStamp,
         ranked({{null}, {Date{-1.5}}, {Date{0.25}}, {Date{40617.0}}, {Date{40617.5}}})},
        {adBoolean, ranked({{null}, {true}, {false}})},
        {adLongVarBinary,
         ranked({{null}, {Bytes{}}, {Bytes{0}}, {Bytes{0, 1}}, {Bytes{127}}, {Bytes{200}}})},
        {adVariant, ranked({{null},
                            {-1.5},
                            {std::int64_t{1}, 1.0},
                            {1.5},
                            {Date{0.5}},
                            {Date{2.0}},
                            {""},
                            {"a", "A"},
                            {"b"},
                            {Bytes{1}}})},
        // values that are not the column's own
        {adInteger, ranked({{null},
                            {std::int64_t{-3}},
                            {0.5},
                            {std::int64_t{1}, 1.0},
                            {1.5},
                            {Date{2.0}},
                            {"a", "A"},
                            {Bytes{1}}})},
        {adVarWChar, ranked({{null}, {"1"}, {"a", "A"}, {"b"}, {"c" + std::string(20'000, 'c')}})},
    };
    return all;
}

class RandomStore {
  public:
    explicit RandomStore(std::mt19937& random) : random_(random) {
        const unsigned columns = 1 + random_() % 3;
        const unsigned rows = random_() % (random_() % 4 == 0 ? 6000 : 60);
        for (unsigned c = 0; c < columns; ++c) {
            // the last pool has texts that are slow to make
            const Pool& pool = pools()[random_() % (pools().size() - (rows > 100 ? 1 : 0))];
            columns_.push_back(describeColumn("c" + std::to_string(c), pool.type));
            std::vector<Ranked> some; // few values make many equal rows
            const std::size_t kinds = 1 + random_() % pool.values.size();
            std::ranges::sample(pool.values, std::back_inserter(some),
                                static_cast<std::ptrdiff_t>(kinds), random_);
            pools_.push_back(std::move(some));
        }
        rows_.resize(rows);
        ranks_.resize(rows);
        for (unsigned row = 0; row < rows; ++row)
            for (unsigned c = 0; c < columns; ++c) {
                const Ranked& each = pools_[c][random_() % pools_[c].size()];
                rows_[row].push_back(each.value);
                ranks_[row].push_back(each.rank);
            }
        groupRows_ = rows > 100 ? 100 + random_() % 4000 : 1 + random_() % 70;
        store_ = storeOf(columns_, rows_, groupRows_);
    }

    const ColumnStore& store() const { return *store_; }
    // Nothing is kept with this one yet.
    std::shared_ptr<ColumnStore> again() const { return storeOf(columns_, rows_, groupRows_); }

    // Keys for a sort, in text, remembered for reference().
    std::string randomSort() {
        std::vector<unsigned> order(columns_.size());
        std::iota(order.begin(), order.end(), 0U);
        std::ranges::shuffle(order, random_);
        order.resize(1 + random_() % order.size());
        keys_.clear();
        std::string text;
        for (const unsigned column : order) {
            const bool ascending = random_() % 2 == 0;
            keys_.emplace_back(column, ascending);
            text += (text.empty() ? "[c" : ", [c") + std::to_string(column) +
                    (ascending ? "]  asc" : "]  desc");
        }
        return text;
    }
    int compare(RowNumber a, RowNumber b) const {
        for (const auto& [column, ascending] : keys_)
            if (ranks_[a][column] != ranks_[b][column])
                return (ranks_[a][column] < ranks_[b][column]) == ascending ? -1 : 1;
        return 0;
    }
    RowList reference(RowList rows) const {
        std::ranges::sort(rows);
        std::ranges::stable_sort(rows, [&](RowNumber a, RowNumber b) { return compare(a, b) < 0; });
        return rows;
    }
    RowList some() {
        RowList rows;
        const unsigned oneIn = 1 + random_() % 20;
        for (RowNumber row = 0; row < store_->rows(); ++row)
            if (random_() % oneIn == 0) rows.push_back(row);
        return rows;
    }

  private:
    std::mt19937& random_;
    std::vector<ColumnInfo> columns_;
    std::vector<std::vector<Ranked>> pools_;
    std::vector<CellRow> rows_;
    std::vector<std::vector<int>> ranks_;
    std::size_t groupRows_ = 1;
    std::shared_ptr<ColumnStore> store_;
    std::vector<std::pair<unsigned, bool>> keys_;
};

class SortRandom : public testing::TestWithParam<unsigned> {
  protected:
    static constexpr int rounds = 40;
};

TEST_P(SortRandom, WholeStoresAndPartsOfThem) {
    std::mt19937 random(GetParam());
    for (int round = 0; round < rounds; ++round) {
        RandomStore made(random);
        const unsigned threads = random() % 3;
        for (int sorts = 0; sorts < 4; ++sorts) {
            const std::string sort = made.randomSort();
            RowList some = made.some();
            ASSERT_EQ(sorted(*made.again(), sort, some, threads), made.reference(some))
                << sort << ", round " << round << ", nothing kept";
            const RowList all = allRows(made.store());
            ASSERT_EQ(sorted(made.store(), sort, threads), made.reference(all))
                << sort << ", round " << round;
            std::ranges::shuffle(some, random);
            ASSERT_EQ(sorted(made.store(), sort, some, threads), made.reference(some))
                << sort << ", round " << round << ", a part";
        }
    }
}

TEST_P(SortRandom, ComparisonsAgreeWithTheSort) {
    std::mt19937 random(GetParam() + 1000);
    for (int round = 0; round < rounds; ++round) {
        RandomStore made(random);
        if (made.store().rows() == 0) continue;
        const std::string sort = made.randomSort();
        const auto order = orderOf(made.store(), sort);
        for (int i = 0; i < 200; ++i) {
            const auto a = static_cast<RowNumber>(random() % made.store().rows());
            const auto b = static_cast<RowNumber>(random() % made.store().rows());
            const int compared = order->compare(made.store(), a, b);
            ASSERT_EQ(compared < 0   ? -1
                      : compared > 0 ? 1
                                     : 0,
                      made.compare(a, b))
                << sort << ", " << a << ", " << b;
        }
    }
}

TEST_P(SortRandom, MergedListsAreOneSortedList) {
    std::mt19937 random(GetParam() + 2000);
    for (int round = 0; round < rounds; ++round) {
        RandomStore made(random);
        const std::string sort = made.randomSort();
        const bool kept = random() % 2 == 0;
        if (kept) sorted(made.store(), sort);
        RowList a, b;
        const unsigned oneIn = 2 + random() % (round % 2 == 0 ? 2 : 60);
        for (RowNumber row = 0; row < made.store().rows(); ++row)
            (random() % oneIn == 0 ? a : b).push_back(row);
        const RowList whole = made.reference(allRows(made.store()));
        a = made.reference(a);
        b = made.reference(b);
        const auto order = orderOf(made.store(), sort);
        ASSERT_EQ(order->merge(made.store(), a, b), whole) << sort << ", kept: " << kept;
        ASSERT_EQ(order->merge(made.store(), b, a), whole) << sort << ", kept: " << kept;
        ASSERT_EQ(order->merge(made.store(), a, {}), a);
        ASSERT_EQ(order->merge(made.store(), {}, a), a);
    }
}

// Texts of any letters, in the order of the one comparison that all lists use.
TEST_P(SortRandom, TextsStandInTheOrderOfTheCollation) {
    std::mt19937 random(GetParam() + 3000);
    const std::string letters[] = {"a", "A",       "à", "À", "b",      "s",   "S", "ß", "ss",
                                   "'", " ",       "-", "è", "0",      "9",   "_", ".", "z",
                                   "ñ", "a\u0301", "Œ", "я", "中",     "\t",  "€", "ı", "İ",
                                   "ǆ", "😀",       "ﬁ", "’", "\u200B", "\xE0"};
    for (int round = 0; round < rounds; ++round) {
        std::vector<Variant> values;
        const std::size_t few = 1 + random() % std::size(letters);
        for (unsigned n = random() % 400; n > 0; --n) {
            std::string text;
            for (unsigned i = random() % 14; i > 0; --i)
                text += letters[random() % few];
            values.emplace_back(std::move(text));
        }
        const auto store = columnOf(adVarWChar, values, 1 + random() % 200);
        RowList expected = allRows(*store);
        std::ranges::stable_sort(expected, [&](RowNumber a, RowNumber b) {
            return collateText(store->value(0, a).text(), store->value(0, b).text()) < 0;
        });
        ASSERT_EQ(sorted(*store, "c"), expected);
        std::ranges::sort(expected);
        std::ranges::stable_sort(expected, [&](RowNumber a, RowNumber b) {
            return collateText(store->value(0, a).text(), store->value(0, b).text()) > 0;
        });
        ASSERT_EQ(sorted(*store, "c DESC"), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SortRandom, testing::Range(1U, 6U));

} // namespace
} // namespace norvel::adodb
