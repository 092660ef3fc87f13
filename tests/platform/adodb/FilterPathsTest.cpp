// Every way that a filter runs (scans of folded texts, typed comparisons, sets, rows left over by
// other conditions) against the question asked of each row by itself.
#include "platform/adodb/store/GroupBuilder.h"
#include "tests/platform/adodb/AdodbTest.h"
#include "tests/platform/adodb/FilterMixture.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <random>

namespace norvel::adodb {
namespace {

RowList byRows(const ColumnStore& store, const FilterProgram& program) {
    RowList rows;
    for (RowNumber row = 0; row < store.rows(); ++row)
        if (program.matches(store, row)) rows.push_back(row);
    return rows;
}

// What a run over everything, over parts and over lists of rows finds is what the rows say.
void check(const ColumnStore& store, const std::string& filter, std::mt19937& random) {
    const std::string shown = filter.substr(0, 200);
    const auto program = compiled(store, filter);
    const RowList expected = byRows(store, *program);
    const auto last = static_cast<RowNumber>(store.rows());
    RowList found;
    program->run(store, 0, last, found, 1 + random() % 2);
    ASSERT_EQ(found, expected) << shown;

    const RowNumber begin = static_cast<RowNumber>(random() % (last + 1));
    const RowNumber end = begin + static_cast<RowNumber>(random() % (last - begin + 1));
    RowList part{7};
    program->run(store, begin, end, part);
    RowList wanted{7};
    std::ranges::copy_if(expected, std::back_inserter(wanted),
                         [&](RowNumber row) { return row >= begin && row < end; });
    ASSERT_EQ(part, wanted) << shown << ", from " << begin << " to " << end;

    RowList listed;
    const unsigned sparse = 1 + random() % 30;
    for (RowNumber row = 0; row < last; ++row)
        if (random() % sparse == 0) listed.push_back(row);
    for (const bool mixed : {false, true}) {
        if (mixed) {
            std::ranges::shuffle(listed, random);
            if (!listed.empty()) listed.push_back(listed.front()); // twice
        }
        RowList over;
        program->runOver(store, listed, over);
        RowList kept;
        std::ranges::copy_if(listed, std::back_inserter(kept), [&](RowNumber row) {
            return std::ranges::binary_search(expected, row);
        });
        ASSERT_EQ(over, kept) << shown << (mixed ? ", in any order" : "");
    }
}

// A group of one column of texts, byte for byte as they are.
std::unique_ptr<RowGroup> groupOf(const std::vector<std::optional<std::string>>& texts) {
    const std::size_t rows = texts.size();
    std::string arena;
    std::vector<std::uint32_t> ends{0};
    std::vector<std::uint64_t> nulls((rows + 63) / 64);
    for (std::size_t row = 0; row < rows; ++row) {
        if (texts[row])
            arena += *texts[row];
        else
            nulls[row / 64] |= std::uint64_t{1} << (row % 64);
        ends.push_back(static_cast<std::uint32_t>(arena.size()));
    }
    Slab slab(nulls.size() * 8 + ends.size() * 4 + arena.size() + 64);
    Segment segment;
    segment.storage = Storage::Text;
    segment.rows = static_cast<std::uint32_t>(rows);
    std::byte* to = slab.data();
    segment.nulls = reinterpret_cast<const std::uint64_t*>(to);
    std::memcpy(to, nulls.data(), nulls.size() * 8);
    to += nulls.size() * 8;
    segment.ends = reinterpret_cast<const std::uint32_t*>(to);
    std::memcpy(to, ends.data(), ends.size() * 4);
    to += ends.size() * 4;
    segment.arena = reinterpret_cast<const char*>(to);
    std::memcpy(to, arena.data(), arena.size());
    std::vector<Segment> segments;
    segments.push_back(std::move(segment));
    return std::make_unique<RowGroup>(static_cast<std::uint32_t>(rows), std::move(slab),
                                      std::move(segments));
}

std::string word(std::mt19937& random, unsigned longest, unsigned kinds) {
    std::string text;
    for (unsigned n = random() % (longest + 1); n > 0; --n)
        text += oddPieces()[random() % kinds];
    return text;
}

TEST(FilterPaths, TextsOfAllKindsOfCharactersAndBytesThatAreNone) {
    std::mt19937 random(815);
    for (int round = 0; round < 12; ++round) {
        // Few kinds of characters: much is found. All: much is odd.
        const unsigned kinds = round % 3 == 0   ? 4
                               : round % 3 == 1 ? 12
                                                : static_cast<unsigned>(oddPieces().size());
        ColumnStore store({describeColumn("c", adVarWChar)});
        for (int group = 0; group < 3; ++group) {
            std::vector<std::optional<std::string>> texts(130 + random() % 300);
            for (auto& text : texts)
                if (random() % 9 != 0) text = word(random, 7, kinds);
            store.publish(groupOf(texts));
        }
        for (int i = 0; i < 25; ++i) {
            std::string needle = word(random, 3, kinds);
            if (needle.find_first_of("*%") != std::string::npos) continue;
            check(store, "c LIKE " + inQuotes("*" + needle + "*"), random);
            check(store, "c LIKE " + inQuotes(needle + "*"), random);
            check(store, "c=" + inQuotes(needle), random);
            check(store, "c<>" + inQuotes(needle), random);
            if (i < 5) check(store, "c<" + inQuotes(needle), random);
            check(store,
                  "c LIKE " + inQuotes("*" + needle + "*") + " OR c=NULL OR c=" + inQuotes("a"),
                  random);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(FilterPaths, EveryKindOfColumnAndEveryKindOfClause) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        Mixture mixture(seed);
        for (int i = 0; i < 250; ++i) {
            check(*mixture.store, mixture.clause(), mixture.random);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(FilterPaths, ConditionsTogetherAreTheConditionsOneByOne) {
    Mixture mixture(77);
    const ColumnStore& store = *mixture.store;
    for (int i = 0; i < 300; ++i) {
        std::string filter;
        std::vector<bool> any(static_cast<std::size_t>(store.rows()), false);
        for (unsigned group = 0, groups = 1 + mixture.random() % 3; group < groups; ++group) {
            std::vector<bool> all(any.size(), true);
            filter += group ? " OR (" : "(";
            for (unsigned k = 0, count = 1 + mixture.random() % 3; k < count; ++k) {
                const std::string clause = mixture.clause();
                filter += (k ? " AND " : "") + clause;
                const auto alone = compiled(store, clause);
                for (RowNumber row = 0; row < any.size(); ++row)
                    all[row] = all[row] && alone->matches(store, row);
            }
            filter += ")";
            for (std::size_t row = 0; row < any.size(); ++row)
                any[row] = any[row] || all[row];
        }
        RowList expected;
        for (RowNumber row = 0; row < any.size(); ++row)
            if (any[row]) expected.push_back(row);
        RowList found;
        compiled(store, filter)->run(store, 0, static_cast<RowNumber>(store.rows()), found);
        ASSERT_EQ(found, expected) << filter;
        check(store, filter, mixture.random);
        if (HasFatalFailure()) return;
    }
}

// Values written out one by one run as one set: it is the union of the single conditions, or for
// differences what is in none of them.
TEST(FilterPaths, MultipleChoicesAreTheirValuesOneByOne) {
    Mixture mixture(4);
    const ColumnStore& store = *mixture.store;
    const auto values = [&](const std::string& column) {
        std::vector<std::string> chosen;
        for (unsigned n = 2 + mixture.random() % 20; n > 0; --n) {
            if (column == "testo" || column == "sigla" || mixture.random() % 5 == 0)
                chosen.push_back(inQuotes(oddPieces()[mixture.random() % 12] +
                                          std::to_string(mixture.random() % 10)));
            else
                chosen.push_back(mixture.literal());
        }
        return chosen;
    };
    for (int i = 0; i < 120; ++i) {
        const auto& columns = store.columns();
        const std::size_t index = mixture.random() % columns.size();
        const std::string& name = columns[index].name;
        const std::string further = i % 3 == 0 ? " AND " + mixture.clause() : "";
        std::string any, none;
        std::vector<bool> in(static_cast<std::size_t>(store.rows()), false);
        std::vector<bool> out(in.size(), true);
        for (const std::string& value : values(name)) {
            const std::string is = std::string(name).append("=").append(value);
            const std::string isNot = std::string(name).append("<>").append(value);
            any.append(any.empty() ? "(" : " OR (").append(is).append(further).append(")");
            none.append(none.empty() ? "" : " AND ").append(isNot);
            const auto equal = compiled(store, is);
            const auto different = compiled(store, isNot);
            for (RowNumber row = 0; row < in.size(); ++row) {
                in[row] = in[row] || equal->matches(store, row);
                out[row] = out[row] && different->matches(store, row);
            }
        }
        none += further;
        const auto rest = compiled(store, further.empty() ? "" : further.substr(5));
        RowList inside, outside;
        for (RowNumber row = 0; row < in.size(); ++row) {
            if (!rest->matches(store, row)) continue;
            if (in[row]) inside.push_back(row);
            if (out[row]) outside.push_back(row);
        }
        const auto last = static_cast<RowNumber>(store.rows());
        RowList found;
        compiled(store, any)->run(store, 0, last, found);
        ASSERT_EQ(found, inside) << any;
        found.clear();
        compiled(store, none)->run(store, 0, last, found);
        ASSERT_EQ(found, outside) << none;
        check(store, any, mixture.random);
        check(store, none, mixture.random);
        if (HasFatalFailure()) return;
    }
}

TEST(FilterPaths, ChoicesInTwoColumnsAreDistributed) {
    Mixture mixture(9);
    std::string filter;
    for (int a = 0; a < 8; ++a)
        for (int b = 0; b < 8; ++b)
            filter += (filter.empty() ? "" : " OR ") + std::string("(intero=") + std::to_string(a) +
                      " AND doppio=" + std::to_string(b - 4) + ".5)";
    const auto program = compiled(*mixture.store, filter);
    RowList expected;
    for (RowNumber row = 0; row < mixture.store->rows(); ++row) {
        const auto is = [&](int column, const char* op) {
            return compiled(*mixture.store,
                            mixture.store->columns()[static_cast<std::size_t>(column)].name + op)
                ->matches(*mixture.store, row);
        };
        bool a = false, b = false;
        for (int value = 0; value < 8; ++value) {
            a = a || is(0, ("=" + std::to_string(value)).c_str());
            b = b || is(3, ("=" + std::to_string(value - 4) + ".5").c_str());
        }
        if (a && b) expected.push_back(row);
    }
    EXPECT_FALSE(expected.empty());
    RowList found;
    program->run(*mixture.store, 0, static_cast<RowNumber>(mixture.store->rows()), found);
    EXPECT_EQ(found, expected);
    check(*mixture.store, filter, mixture.random);
}

// A changed value lies among the exceptions; what was folded before still holds the old one.
TEST(FilterPaths, ChangedValuesCountWhateverWasFoldedBefore) {
    Mixture mixture(31);
    const ColumnStore& store = *mixture.store;
    std::vector<std::string> clauses(120);
    for (std::string& clause : clauses)
        clause = mixture.clause();
    for (const std::string& clause : clauses) // folds
        check(store, clause, mixture.random);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 200; ++i) {
            const auto group = mixture.random() % mixture.groups.size();
            const int column = static_cast<int>(mixture.random() % store.columns().size());
            const auto row =
                static_cast<std::uint32_t>(mixture.random() % mixture.groups[group]->rows());
            // Beneath the store, so that it keeps what was folded.
            mixture.groups[group]->change(column, row,
                                          mixture.value(column, static_cast<int>(group)));
        }
        for (const std::string& clause : clauses) {
            check(store, clause, mixture.random);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(FilterPaths, AChangedTextIsFoundByItsNewValueOnly) {
    ColumnStore store({describeColumn("c", adVarWChar)});
    std::vector<std::optional<std::string>> texts(200, "Bianchi");
    texts[50] = "Rossi";
    texts[51] = std::nullopt;
    store.publish(groupOf(texts));
    const auto hits = [&](const char* filter) {
        RowList rows;
        compiled(store, filter)->run(store, 0, 200, rows);
        return rows;
    };
    EXPECT_EQ(hits("c LIKE '*ros*'"), RowList{50});
    store.change(0, 50, "Verdi");
    store.change(0, 51, "ROSA");
    store.change(0, 0, "De Rossi");
    store.change(0, 199, Variant::null());
    EXPECT_EQ(hits("c LIKE '*ros*'"), (RowList{0, 51}));
    EXPECT_EQ(hits("c='verdi'"), RowList{50});
    EXPECT_EQ(hits("c LIKE '*VERDI*' OR c=NULL"), (RowList{50, 199}));
    EXPECT_EQ(hits("c<>'bianchi'"), (RowList{0, 50, 51}));
}

TEST(FilterPaths, NumbersTooSmallForADoubleAreZeroAndTooLargeOnesAreRefused) {
    ColumnStore store({describeColumn("n", adInteger)});
    auto shared = std::make_shared<ColumnStore>(std::vector{describeColumn("n", adInteger)});
    GroupBuilder builder(shared);
    for (const int n : {-1, 0, 1})
        builder.append({n});
    const auto hits = [&](const std::string& filter) {
        RowList rows;
        compiled(*shared, filter)->run(*shared, 0, 3, rows);
        return rows;
    };
    for (const char* tiny : {"1e-400", "-1e-400", "1e-99999999999999999999", "0.000001e-330",
                             "0e99999999999999999999", "123456789e-400", "0e400"}) {
        EXPECT_EQ(hits(std::string("n=") + tiny), RowList{1}) << tiny;
        EXPECT_EQ(hits(std::string("n<") + tiny), RowList{0}) << tiny;
        EXPECT_EQ(hits(std::string("n>=") + tiny), (RowList{1, 2})) << tiny;
    }
    EXPECT_EQ(hits("n>0." + std::string(400, '0') + "1"), RowList{2});
    for (const char* huge : {"1e400", "-1e400", "0.001e400", "1e99999999999999999999", "1000e307"})
        EXPECT_EQ(errorOf([&] { hits(std::string("n<") + huge); }), adErrInvalidArgument) << huge;
    EXPECT_EQ(hits("n<1" + std::string(300, '0')), (RowList{0, 1, 2}));
    EXPECT_EQ(errorOf([&] { hits("n<1" + std::string(400, '0')); }), adErrInvalidArgument);
}

} // namespace
} // namespace norvel::adodb
