// Filters over the columns of a store.
#include "platform/adodb/filter/FilterProgram.h"
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Text.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <random>

namespace norvel::adodb {
namespace {

const Variant null = Variant::null();

// A store of one column "c" with these values, every so many rows a group of their own.
std::shared_ptr<ColumnStore> column(DataTypeEnum type, const std::vector<Variant>& values) {
    auto store = std::make_shared<ColumnStore>(std::vector{describeColumn("c", type)});
    GroupBuilder builder(store);
    for (const Variant& value : values)
        builder.append({value});
    return store;
}

RowList hits(const ColumnStore& store, const std::string& filter, unsigned threads = 0) {
    const auto program = FilterProgram::compile(parseFilter(filter), store.columns());
    RowList found;
    program->run(store, 0, static_cast<RowNumber>(store.rows()), found, threads);
    RowList all;
    for (RowNumber row = 0; row < store.rows(); ++row) {
        all.push_back(row);
        EXPECT_EQ(program->matches(store, row), std::ranges::binary_search(found, row))
            << filter << ", row " << row;
    }
    RowList over;
    program->runOver(store, all, over, threads);
    EXPECT_EQ(over, found) << filter;
    return found;
}

struct Case {
    const char* filter;
    RowList rows;
};
void check(const ColumnStore& store, const std::vector<Case>& cases) {
    for (const Case& each : cases)
        EXPECT_EQ(hits(store, each.filter), each.rows) << each.filter;
}
void refused(const ColumnStore& store, std::initializer_list<const char*> filters) {
    for (const char* filter : filters)
        EXPECT_EQ(errorOf([&] { hits(store, filter); }), adErrInvalidArgument) << filter;
}

TEST(FilterRun, Texts) {
    const auto store =
        column(adVarWChar, {"Rossi", "ROSSI", "Bianchi", "", null, "d'Amico", "Città", "5", "àla"});
    check(*store, {{"", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
                   {"c='rossi'", {0, 1}},
                   {"c<>'rossi'", {2, 3, 5, 6, 7, 8}}, // NULL is not different
                   {"c=''", {3}},
                   {"c=NULL", {4}},
                   {"c<>NULL", {0, 1, 2, 3, 5, 6, 7, 8}},
                   {"c<>NULL AND c<>''", {0, 1, 2, 5, 6, 7, 8}},
                   {"c LIKE '*ss*'", {0, 1}},
                   {"c LIKE 'ro*'", {0, 1}},
                   {"c LIKE '*D''AMI*'", {5}},
                   {"c LIKE 'CITTÀ'", {6}},
                   {"c LIKE '*a*'", {2, 5, 8}},
                   {"c LIKE '*'", {0, 1, 2, 3, 5, 6, 7, 8}},
                   {"c=5", {7}},
                   {"c=#'5'#", {}},
                   {"c<'C'", {2, 3, 7, 8}}, // by collation: à between a and b
                   {"c>='rossi'", {0, 1}},
                   {"c='Bianchi' OR c=NULL", {2, 4}}});
    EXPECT_EQ(errorOf([&] { hits(*store, "manca='x'"); }), adErrItemNotFound);
    EXPECT_EQ(errorOf([&] { hits(*store, "C='x'"); }), 0); // names in any case
}

TEST(FilterRun, WholeNumbers) {
    const auto store = column(adInteger, {std::int32_t{1}, std::int32_t{-5}, null, std::int32_t{0},
                                          std::int32_t{120}, std::int32_t{12}});
    check(*store, {{"c=12", {5}},
                   {"c=12.0", {5}},
                   {"c=1.2e1", {5}},
                   {"c<>12", {0, 1, 3, 4}},
                   {"c<1", {1, 3}},
                   {"c>=1", {0, 4, 5}},
                   {"c=12.5", {}},
                   {"c='12'", {5}},
                   {"c<>'12'", {0, 1, 3, 4}},
                   {"c LIKE '12*'", {4, 5}},
                   {"c LIKE '*2*'", {4, 5}},
                   {"c>'11,5'", {4, 5}},
                   {"c=True", {}},
                   {"c=False", {3}},
                   {"c=NULL", {2}}});
    refused(*store, {"c=#1-1-2011#", "c>'abc'", "c=1e999"});
}

TEST(FilterRun, WideNumbersAreComparedExactly) {
    const auto store =
        column(adBigInt, {std::int64_t{9007199254740993}, std::int64_t{9007199254740992}});
    check(*store, {{"c=9007199254740993", {0}}, {"c>9007199254740992", {0}}});
}

TEST(FilterRun, DecimalsAndDoubles) {
    const auto money =
        column(adCurrency, {Currency{125000}, Currency{-100}, null, Currency{120000}});
    check(*money, {{"c=12.5", {0}}, {"c<12.5", {1, 3}}, {"c='12,5'", {0}}, {"c=-0.01", {1}}});
    const auto doubles = column(adDouble, {12.5, 0.1, null, -3.0});
    check(*doubles, {{"c=12.5", {0}}, {"c=0.1", {1}}, {"c<=0.1", {1, 3}}, {"c LIKE '*,5*'", {0}}});
}

TEST(FilterRun, Booleans) {
    const auto store = column(adBoolean, {true, false, null});
    check(*store, {{"c=1", {0}},
                   {"c=-1", {0}},
                   {"c=0.5", {0}}, // any number but 0
                   {"c=0", {1}},
                   {"c<>0", {0}},
                   {"c<>1", {1}},
                   {"c=True", {0}},
                   {"c=False", {1}},
                   {"c='true'", {0}},
                   {"c LIKE 'fal*'", {1}},
                   {"c=NULL", {2}},
                   {"c<>NULL", {0, 1}}});
    refused(*store, {"c>0", "c<True", "c>'a'", "c=#1-1-2011#"});
}

TEST(FilterRun, Dates) {
    const auto day = [](int y, int m, int d, int hour = 0) {
        return *makeDate({y, m, d}, {hour, 0, 0});
    };
    const auto store = column(
        adDate, {day(2011, 3, 15), day(2011, 5, 3), null, day(2011, 3, 5), day(2011, 3, 15, 12)});
    check(*store, {{"c=#15-03-2011#", {0}},
                   {"c=#03/15/2011#", {0}},
                   {"c=#2011-03-15#", {0}},
                   {"c=#15/03/2011#", {0}}, // no such month: the day first
                   {"c=#05-03-2011#", {3}}, // hyphens: the day first
                   {"c=#05/03/2011#", {1}}, // slashes: the month first
                   {"c=#5/3/11#", {1}},
                   {"c=#15-03-2011 12:00#", {4}},
                   {"c=#2011-03-15T12.00.00#", {4}},
                   {"c>#15-03-2011#", {1, 4}},
                   {"c<>#15-03-2011#", {1, 3, 4}},
                   {"c='15/03/2011'", {0}},
                   {"c>='15/03/2011'", {0, 1, 4}},
                   {"c LIKE '15/03*'", {0, 4}},
                   {"c=NULL", {2}}});
    refused(*store, {"c=#31-02-2011#", "c=#pippo#", "c=##", "c>'pippo'", "c=#1-1-2011 25:00#"});
}

TEST(FilterRun, BytesKnowNullAlone) {
    const auto store = column(adLongVarBinary, {Bytes{1, 2}, null});
    check(*store, {{"c=NULL", {1}}, {"c<>NULL", {0}}});
    refused(*store, {"c='x'", "c=1", "c LIKE '*'"});
}

TEST(FilterRun, ValuesOfOtherTypesThanTheirColumnsAreComparedAsTheirOwn) {
    auto store = std::make_shared<ColumnStore>(std::vector{describeColumn("c", adInteger)});
    GroupBuilder builder(store);
    Batch batch(1);
    batch.reset(10);
    batch.setInteger(0, 5);
    batch.endRow();
    ASSERT_TRUE(batch.setText(0, "cinque", 6));
    batch.endRow();
    batch.setReal(0, 5.5);
    batch.endRow();
    builder.take(batch);
    builder.publish();
    check(
        *store,
        {{"c=5", {0}}, {"c>5", {2}}, {"c='cinque'", {1}}, {"c LIKE '5*'", {0, 2}}, {"c<>5", {2}}});
}

TEST(FilterRun, ManyRowsOnOneThreadAndOnAll) {
    auto store = std::make_shared<ColumnStore>(
        std::vector{describeColumn("n", adInteger), describeColumn("t", adVarWChar)});
    GroupBuilder builder(store);
    Batch batch(2);
    constexpr std::int64_t total = 200'000;
    RowList expected;
    for (std::int64_t n = 0; n < total;) {
        batch.reset(batch.capacityLimit());
        bool more = true;
        while (more && n < total) {
            const std::string text = (n % 7 == 0 ? "Rossi " : "Bianchi ") + std::to_string(n);
            if (n % 7 == 0 && n % 2 == 1) expected.push_back(static_cast<RowNumber>(n));
            batch.setInteger(0, n % 2);
            ASSERT_TRUE(batch.setText(1, text.data(), text.size()));
            ++n;
            more = batch.endRow();
        }
        builder.take(batch);
    }
    builder.publish();
    const auto program =
        FilterProgram::compile(parseFilter("t LIKE '*ROS*' AND n=1"), store->columns());
    for (const unsigned threads : {1U, 0U}) {
        RowList found;
        program->run(*store, 0, total, found, threads);
        EXPECT_EQ(found, expected);
    }
    RowList part;
    program->run(*store, 1000, 150'001, part);
    RowList expectedPart;
    std::ranges::copy_if(expected, std::back_inserter(expectedPart),
                         [](RowNumber row) { return row >= 1000 && row < 150'001; });
    EXPECT_EQ(part, expectedPart);
    RowList over;
    FilterProgram::compile(parseFilter("t LIKE '*rossi 1*'"), store->columns())
        ->runOver(*store, expected, over);
    EXPECT_FALSE(over.empty());
    for (const RowNumber row : over)
        EXPECT_TRUE(store->value(1, row).text().starts_with("Rossi 1"));
}

TEST(FilterRun, KnowsWhichFiltersNarrow) {
    const std::vector<ColumnInfo> columns{describeColumn("a", adVarWChar),
                                          describeColumn("n", adInteger)};
    const auto narrows = [&](const char* narrower, const char* wider) {
        return FilterProgram::compile(parseFilter(narrower), columns)
            ->narrows(*FilterProgram::compile(parseFilter(wider), columns));
    };
    EXPECT_TRUE(narrows("a LIKE '*ross*'", "a LIKE '*ros*'"));
    EXPECT_TRUE(narrows("a LIKE '*ROSS*'", "a LIKE '*ros*'"));
    EXPECT_TRUE(narrows("a LIKE 'ross*'", "a LIKE 'ros*'"));
    EXPECT_TRUE(narrows("a LIKE 'ross*'", "a LIKE '*ros*'"));
    EXPECT_TRUE(narrows("a='rossi'", "a LIKE 'ros*'"));
    EXPECT_TRUE(narrows("a LIKE '*ros*' AND n=1", "a LIKE '*ros*'"));
    EXPECT_TRUE(narrows("a LIKE '*ros*'", ""));
    EXPECT_TRUE(narrows("a LIKE '*ros*'", "a<>NULL"));
    EXPECT_TRUE(narrows("a='x'", "a='x' OR n=1"));
    EXPECT_TRUE(narrows("n=1", "n=1.0"));
    EXPECT_FALSE(narrows("a LIKE '*ro*'", "a LIKE '*ros*'"));
    EXPECT_FALSE(narrows("a LIKE '*ros*'", "a LIKE 'ros*'"));
    EXPECT_FALSE(narrows("a<>'rossi'", "a LIKE '*ros*'"));
    EXPECT_FALSE(narrows("a='x' OR n=1", "a='x'"));
    EXPECT_FALSE(narrows("", "n=1"));
    EXPECT_FALSE(narrows("n=1", "n=2"));
    EXPECT_FALSE(narrows("a=NULL", "a<>NULL"));
}

// Random texts and needles, against a plain walk over the values.
TEST(FilterRun, RandomNeedlesFindWhatAWalkFinds) {
    std::mt19937 random(3001);
    const std::string letters[] = {"a", "A", "à", "À", "b", "s", "S",
                                   "ß", "'", " ", "è", "0", "[", "_"};
    const auto word = [&](unsigned longest) {
        std::string text;
        for (unsigned n = random() % (longest + 1); n > 0; --n)
            text += letters[random() % std::size(letters)];
        return text;
    };
    for (int round = 0; round < 60; ++round) {
        std::vector<Variant> values;
        values.reserve(80);
        for (int i = 0; i < 80; ++i)
            values.push_back(random() % 9 == 0 ? null : Variant(word(6)));
        const auto store = column(adVarWChar, values);
        const std::string needle = word(2);
        const std::string quoted = replaceText(needle, "'", "''");
        RowList contains, begins, equal, different;
        for (RowNumber row = 0; row < values.size(); ++row) {
            if (values[row].isNull()) continue;
            const std::string folded = foldText(values[row].text());
            const std::string wanted = foldText(needle);
            if (folded.find(wanted) != std::string::npos) contains.push_back(row);
            if (folded.starts_with(wanted)) begins.push_back(row);
            (folded == wanted ? equal : different).push_back(row);
        }
        EXPECT_EQ(hits(*store, "c LIKE '*" + quoted + "*'"), contains) << needle;
        EXPECT_EQ(hits(*store, "c LIKE '" + quoted + "*'"), begins) << needle;
        EXPECT_EQ(hits(*store, "c='" + quoted + "'"), equal) << needle;
        EXPECT_EQ(hits(*store, "c<>'" + quoted + "'"), different) << needle;
    }
}

} // namespace
} // namespace norvel::adodb
