// The column store itself: batches, segments, groups, the directory.
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/adodb/store/IsoDate.h"
#include "platform/runtime/Formats.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <string>
#include <thread>

namespace norvel::adodb {
namespace {

std::shared_ptr<ColumnStore> storeOf(std::initializer_list<DataTypeEnum> types) {
    std::vector<ColumnInfo> columns;
    for (const DataTypeEnum type : types)
        columns.push_back(describeColumn("c" + std::to_string(columns.size()), type));
    return std::make_shared<ColumnStore>(std::move(columns));
}

// Fills one batch from row on; returns how many rows went in.
template <class Fill>
std::uint32_t fill(Batch& batch, Fill fillRow) {
    batch.reset(batch.capacityLimit());
    std::uint32_t rows = 0;
    do {
        if (!fillRow(batch, rows)) break;
        ++rows;
    } while (batch.endRow());
    return rows;
}

TEST(Store, KeepsRowsOverManyGroups) {
    const auto store = storeOf({adInteger, adVarWChar});
    GroupBuilder builder(store);
    Batch batch(2);
    constexpr std::int64_t total = 300'000;
    for (std::int64_t n = 0; n < total;) {
        batch.reset(batch.capacityLimit());
        bool more = true;
        while (more && n < total) {
            batch.setInteger(0, n);
            const std::string text = "t" + std::to_string(n++);
            ASSERT_TRUE(batch.setText(1, text.data(), text.size()));
            more = batch.endRow();
        }
        builder.take(batch);
    }
    builder.publish();
    ASSERT_EQ(store->rows(), total);
    EXPECT_EQ(store->groups(), 5U);
    EXPECT_EQ(store->group(0).rows(), 65536U);
    for (const std::int64_t row : {std::int64_t{0}, std::int64_t{65535}, std::int64_t{65536},
                                   std::int64_t{131072}, total - 1}) {
        EXPECT_EQ(store->value(0, row).toI8(), row);
        EXPECT_EQ(store->value(1, row).text(), "t" + std::to_string(row));
    }
}

TEST(Store, ItsDirectoryGrowsWithTheGroups) {
    const auto store = storeOf({adInteger});
    GroupBuilder builder(store);
    constexpr int groups = 5'000;
    for (int i = 0; i < groups; ++i)
        for (int row = 0; row <= i % 3; ++row)
            builder.append({std::int32_t{i}});
    std::int64_t row = 0;
    for (int i = 0; i < groups; ++i)
        for (int r = 0; r <= i % 3; ++r)
            ASSERT_EQ(store->value(0, row++).toI8(), i);
    EXPECT_EQ(store->rows(), row);
}

// A text that no other row has, of 0 to 29 bytes more than its number.
std::string ownText(std::int64_t row) {
    return std::to_string(row) + std::string(static_cast<std::size_t>(row % 30), 'a');
}

TEST(Store, MemoryIsExact) {
    const auto store = storeOf({adInteger, adBoolean, adDate, adDate, adNumeric, adVarWChar});
    GroupBuilder builder(store);
    Batch batch(6);
    std::size_t bytes = 0;
    std::int64_t n = 0;
    for (int i = 0; i < 40; ++i) {
        fill(batch, [&](Batch& b, std::uint32_t row) {
            const std::string text = ownText(n++);
            b.setInteger(0, row);
            b.setInteger(1, row % 2);
            b.setDate(2, row);
            b.setDate(3, row + 0.25);
            b.setReal(4, row + 0.25);
            bytes += text.size();
            return b.setText(5, text.data(), text.size());
        });
        builder.take(batch);
    }
    builder.publish();
    const auto rows = static_cast<std::size_t>(store->rows());
    const std::size_t expected = rows * (4 + 1 + 4 + 8 + 4 + 4) + bytes;
    EXPECT_GE(store->bytes(), expected);
    EXPECT_LE(store->bytes(), expected + 1024 * store->groups());
}

// Rows of one text column, each text(row), through batches.
template <class TextOf>
std::shared_ptr<ColumnStore> textStore(std::int64_t rows, TextOf text) {
    auto store = storeOf({adVarWChar});
    GroupBuilder builder(store);
    Batch batch(1);
    for (std::int64_t n = 0; n < rows;) {
        batch.reset(batch.capacityLimit());
        bool more = true;
        while (more && n < rows) {
            const std::string value = text(n++);
            EXPECT_TRUE(batch.setText(0, value.data(), value.size()));
            more = batch.endRow();
        }
        builder.take(batch);
    }
    builder.publish();
    return store;
}

template <class TextOf>
void expectTexts(const ColumnStore& store, TextOf text) {
    for (std::int64_t row = 0; row < store.rows(); ++row)
        ASSERT_EQ(store.value(0, row).text(), text(row)) << row;
}

TEST(Store, TextsThatRepeatAreKeptOnce) {
    for (const std::int64_t distinct : {1, 255, 256, 400, 1'000}) {
        const auto text = [&](std::int64_t row) {
            return "la città numero " + std::to_string(row * 7919 % distinct);
        };
        const auto store = textStore(150'000, text);
        expectTexts(*store, text);
        EXPECT_LT(store->bytes(), 150'000U * 10) << distinct;
        const Storage expected = distinct <= 255 ? Storage::Dictionary8 : Storage::Dictionary16;
        EXPECT_EQ(store->group(0).segment(0).storage, expected) << distinct;
    }
}

TEST(Store, TextsThatHardlyRepeatAreKeptOneByOne) {
    const auto store = textStore(150'000, ownText);
    expectTexts(*store, ownText);
    for (std::size_t group = 0; group < store->groups(); ++group)
        EXPECT_EQ(store->group(group).segment(0).storage, Storage::Text);
}

TEST(Store, TextsThatStopRepeatingAreNotLost) {
    // Few at first, then more than a dictionary holds.
    const auto text = [](std::int64_t row) {
        return row < 30'000 ? "testo ripetuto molte volte, sempre uguale " + std::to_string(row % 9)
                            : "testo numero " + ownText(row);
    };
    expectTexts(*textStore(150'000, text), text);
}

TEST(Store, AFewShortTextsAreKeptAsTheyAre) {
    const auto text = [](std::int64_t row) { return std::string(row % 2 ? "a" : ""); };
    const auto store = textStore(5, text);
    expectTexts(*store, text);
    EXPECT_EQ(store->group(0).segment(0).storage, Storage::Text);
}

TEST(Store, RepeatedTextsThatAreNotUtf8AreRepaired) {
    const auto raw = [](std::int64_t row) {
        return std::string(row % 3 == 0 ? "perch\xE9 no, dice lui" : "perché no, dice lui");
    };
    const auto store = textStore(60'000, raw);
    EXPECT_EQ(store->group(0).segment(0).storage, Storage::Dictionary8);
    expectTexts(*store, [](std::int64_t) { return "perché no, dice lui"; });
    // The same among texts that hardly repeat.
    const auto rare = [](std::int64_t row) {
        return (row % 1000 == 500 ? "citt\xE0 " : "città ") + std::to_string(row);
    };
    expectTexts(*textStore(30'000, rare),
                [](std::int64_t row) { return "città " + std::to_string(row); });
}

TEST(Store, ACharacterSplitOverTwoTextsIsNoCharacter) {
    const auto raw = [](std::int64_t row) {
        if (row % 1000 == 500) return std::to_string(row) + "\xC3";
        if (row % 1000 == 501) return "\xA9" + std::to_string(row);
        return std::to_string(row);
    };
    expectTexts(*textStore(30'000, raw), [](std::int64_t row) {
        if (row % 1000 == 500) return std::to_string(row) + "Ã";
        if (row % 1000 == 501) return "©" + std::to_string(row);
        return std::to_string(row);
    });
}

TEST(Store, ADictionaryHoldsNullsEmptyTextsAndLongOnes) {
    const auto store = storeOf({adVarWChar});
    GroupBuilder builder(store);
    Batch batch(1);
    const std::string longText(20'000, 'x');
    const std::string common = "un testo comune, e piuttosto lungo";
    const std::uint32_t rows = fill(batch, [&](Batch& b, std::uint32_t row) {
        if (row % 5 == 0) {
            b.setNull(0);
            return true;
        }
        if (row == 77) return b.setText(0, longText.data(), longText.size());
        if (row == 78) {
            b.setInteger(0, 78);
            return true;
        }
        return b.setText(0, common.data(), row % 5 == 1 ? 0 : common.size());
    });
    builder.take(batch);
    builder.publish();
    ASSERT_EQ(store->group(0).segment(0).storage, Storage::Dictionary8);
    for (std::uint32_t row = 0; row < rows; ++row) {
        const Variant value = store->value(0, row);
        if (row % 5 == 0)
            ASSERT_TRUE(value.isNull());
        else if (row == 77)
            ASSERT_EQ(value.text(), longText);
        else if (row == 78)
            ASSERT_EQ(value, Variant(std::int32_t{78}));
        else
            ASSERT_EQ(value.text(), row % 5 == 1 ? "" : common);
    }
}

TEST(Store, ADictionaryTellsTextsApartThatDifferAnywhere) {
    TextDictionary dictionary;
    std::vector<std::string> texts;
    texts.reserve(3'100);
    for (int i = 0; i < 3'000; ++i)
        texts.push_back(ownText(i));
    for (std::size_t i = 0; i < 40; ++i)
        texts.push_back(std::string(i, 'z') + "y" + std::string(40 - i, 'z'));
    texts.emplace_back("a\0b", 3);
    texts.emplace_back("a\0c", 3);
    for (std::size_t i = 0; i < texts.size(); ++i)
        ASSERT_EQ(dictionary.add(texts[i]), i + 1);
    EXPECT_EQ(dictionary.add(""), 0U);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        ASSERT_EQ(dictionary.add(texts[i]), i + 1);
        ASSERT_EQ(dictionary.text(static_cast<std::uint32_t>(i) + 1), texts[i]);
    }
}

TEST(Store, AColumnOfNullsTakesNoMemory) {
    const auto store = storeOf({adVarWChar});
    GroupBuilder builder(store);
    Batch batch(1);
    fill(batch, [](Batch& b, std::uint32_t) {
        b.setNull(0);
        return true;
    });
    builder.take(batch);
    builder.publish();
    EXPECT_EQ(store->bytes(), 0U);
    EXPECT_EQ(store->group(0).segment(0).storage, Storage::Null);
    EXPECT_TRUE(store->value(0, 7).isNull());
}

TEST(Store, DaysAndSmallDecimalsTakeFourBytes) {
    const auto store = storeOf({adDate, adDate, adNumeric, adNumeric, adCurrency});
    GroupBuilder builder(store);
    builder.append({Date{40617}, Date{40617.5}, *Decimal::fromText("12.34"),
                    *Decimal::fromText("123456789012.34"), Currency{-50'000}});
    const RowGroup& group = store->group(0);
    EXPECT_EQ(group.segment(0).storage, Storage::Days);
    EXPECT_EQ(group.segment(1).storage, Storage::Date);
    EXPECT_EQ(group.segment(2).storage, Storage::Scaled32);
    EXPECT_EQ(group.segment(3).storage, Storage::Scaled);
    EXPECT_EQ(group.segment(4).storage, Storage::Scaled32);
    EXPECT_EQ(store->value(0, 0), Variant(Date{40617}));
    EXPECT_EQ(store->value(1, 0), Variant(Date{40617.5}));
    EXPECT_EQ(store->value(2, 0), Variant(*Decimal::fromText("12.34")));
    EXPECT_EQ(store->value(3, 0), Variant(*Decimal::fromText("123456789012.34")));
    EXPECT_EQ(store->value(4, 0), Variant(Currency{-50'000}));
}

TEST(Store, ADayBeyondFourBytesStaysWhatItIs) {
    for (const double days : {1e10, -1e10, std::numeric_limits<double>::infinity()}) {
        const auto store = storeOf({adDate});
        GroupBuilder builder(store);
        builder.append({Date{days}});
        EXPECT_EQ(store->group(0).segment(0).storage, Storage::Date);
        EXPECT_EQ(store->value(0, 0), Variant(Date{days}));
    }
}

TEST(Store, IntegersTakeFourBytesWhereTheyFit) {
    const auto store = storeOf({adBigInt, adBigInt});
    GroupBuilder builder(store);
    builder.append({std::int64_t{5}, std::int64_t{1} << 33});
    EXPECT_EQ(store->group(0).segment(0).storage, Storage::Int32);
    EXPECT_EQ(store->group(0).segment(1).storage, Storage::Int64);
    EXPECT_EQ(store->value(0, 0), Variant(std::int64_t{5}));
}

TEST(Store, NullsAreWhereTheyWere) {
    const auto store = storeOf({adInteger});
    GroupBuilder builder(store);
    Batch batch(1);
    const std::uint32_t rows = fill(batch, [](Batch& b, std::uint32_t row) {
        if (row % 5 == 0)
            b.setNull(0);
        else
            b.setInteger(0, row);
        return true;
    });
    builder.take(batch);
    builder.publish();
    for (std::uint32_t row = 0; row < rows; ++row)
        ASSERT_EQ(store->value(0, row).isNull(), row % 5 == 0) << row;
}

TEST(Store, ARowThatDoesNotFitWaitsForTheNextBatch) {
    Batch batch(2);
    const std::string text(15'000, 'x');
    const std::uint32_t rows = fill(batch, [&](Batch& b, std::uint32_t) {
        return b.setText(0, text.data(), text.size()) && b.setText(1, text.data(), text.size());
    });
    EXPECT_EQ(rows, 8U) << "a batch holds 256 kB of short texts";
    EXPECT_EQ(batch.ready(), 8U);
    const auto store = storeOf({adVarWChar, adVarWChar});
    GroupBuilder builder(store);
    builder.take(batch);
    builder.publish();
    EXPECT_EQ(store->rows(), 8);
    EXPECT_EQ(store->value(1, 7).text(), text);
}

TEST(Store, ARowWiderThanABatchGoesOutOfLine) {
    Batch batch(40);
    const std::string text(16'000, 'y');
    const std::uint32_t rows = fill(batch, [&](Batch& b, std::uint32_t) {
        for (int column = 0; column < 40; ++column)
            if (!b.setText(column, text.data(), text.size())) return false;
        return true;
    });
    EXPECT_EQ(rows, 1U);
    std::vector<ColumnInfo> columns(40, describeColumn("c", adVarWChar));
    const auto store = std::make_shared<ColumnStore>(columns);
    GroupBuilder builder(store);
    builder.take(batch);
    builder.publish();
    EXPECT_EQ(store->value(0, 0).text(), text);
    EXPECT_EQ(store->value(39, 0).text(), text);
}

TEST(Store, RowsMayBeTakenWhileTheBatchFills) {
    const auto store = storeOf({adVarWChar});
    GroupBuilder builder(store);
    Batch batch(1);
    batch.reset(batch.capacityLimit());
    for (int i = 0; i < 10; ++i) {
        const std::string text(i == 4 ? 30'000 : 3, static_cast<char>('a' + i));
        ASSERT_TRUE(batch.setText(0, text.data(), text.size()));
        batch.endRow();
        builder.take(batch);
    }
    builder.publish();
    EXPECT_EQ(store->rows(), 10);
    EXPECT_EQ(store->value(0, 3).text(), "ddd");
    EXPECT_EQ(store->value(0, 4).text().size(), 30'000U);
    EXPECT_EQ(store->value(0, 9).text(), "jjj");
}

TEST(Store, AReaderOfAnotherThreadSeesWholeGroupsOnly) {
    const auto store = storeOf({adBigInt});
    std::atomic<bool> done{false};
    std::thread reader([&] {
        while (!done) {
            const std::int64_t rows = store->rows();
            if (rows == 0) continue;
            ASSERT_EQ(store->value(0, rows - 1).toI8(), rows - 1);
        }
    });
    GroupBuilder builder(store);
    for (std::int64_t i = 0; i < 3'000; ++i)
        builder.append({i});
    done = true;
    reader.join();
}

TEST(Store, DecimalsChangeScaleWithinAGroup) {
    const auto store = storeOf({adNumeric});
    GroupBuilder builder(store);
    Batch batch(1);
    const std::vector<double> numbers = {1.5, 2.25, 3.123, 1e12, -4.5678, 7.1234567, 0, 123456.789};
    fill(batch, [&](Batch& b, std::uint32_t row) {
        b.setReal(0, numbers[row % numbers.size()]);
        return true;
    });
    builder.take(batch);
    builder.publish();
    for (std::size_t row = 0; row < 100; ++row)
        ASSERT_EQ(store->value(0, static_cast<std::int64_t>(row)).toDouble(),
                  numbers[row % numbers.size()]);
}

TEST(Store, ARaisedScaleCountsInTheWidth) {
    const auto store = storeOf({adNumeric});
    GroupBuilder builder(store);
    Batch batch(1);
    // Two decimals fit 32 bits, four do not.
    const std::vector<double> numbers = {20'000'000.25, 0.0001};
    fill(batch, [&](Batch& b, std::uint32_t row) {
        if (row < 2) b.setReal(0, numbers[row]);
        return row < 2;
    });
    builder.take(batch);
    builder.publish();
    EXPECT_EQ(store->value(0, 0), Variant(*Decimal::fromText("20000000.25")));
    EXPECT_EQ(store->value(0, 1), Variant(*Decimal::fromText("0.0001")));
}

TEST(Store, NumbersWrittenAsTextsAreDecimalsWhereNothingIsLost) {
    const auto store = storeOf({adNumeric});
    GroupBuilder builder(store);
    Batch batch(1);
    const std::string texts[] = {"12.50", "-0.001", "0.1234567890123456789012345678901", "12,5"};
    fill(batch, [&](Batch& b, std::uint32_t row) {
        return row < 4 && b.setText(0, texts[row].data(), texts[row].size());
    });
    builder.take(batch);
    builder.publish();
    EXPECT_EQ(store->value(0, 0), Variant(*Decimal::fromText("12.5")));
    EXPECT_EQ(store->value(0, 1), Variant(*Decimal::fromText("-0.001")));
    EXPECT_EQ(store->value(0, 2), Variant(texts[2]));
    EXPECT_EQ(store->value(0, 3), Variant("12,5"));
}

TEST(Store, AGroupStartsWithoutTheNullsOfTheOneBefore) {
    const auto store = storeOf({adInteger, adVarWChar, adDate, adNumeric});
    GroupBuilder builder(store);
    Batch batch(4);
    for (const std::uint32_t nullRow : {0U, 1U}) {
        fill(batch, [&](Batch& b, std::uint32_t row) {
            for (int column = 0; column < 4; ++column)
                if (row == nullRow)
                    b.setNull(column);
                else
                    b.setInteger(column, row);
            return row < 2;
        });
        builder.take(batch);
        builder.publish();
    }
    ASSERT_EQ(store->rows(), 4);
    for (int column = 0; column < 4; ++column)
        for (std::int64_t row = 0; row < 4; ++row)
            EXPECT_EQ(store->value(column, row).isNull(), row == 0 || row == 3)
                << column << ", " << row;
}

TEST(Store, IsoDatesAreReadStrictly) {
    EXPECT_EQ(parseIsoDate("1899-12-30"), 0.0);
    EXPECT_EQ(parseIsoDate("1900-01-01"), 2.0);
    EXPECT_EQ(parseIsoDate("2011-03-15"), makeDate({2011, 3, 15})->days);
    EXPECT_EQ(parseIsoDate("2000-02-29"), makeDate({2000, 2, 29})->days);
    EXPECT_EQ(parseIsoDate("0100-01-01"), makeDate({100, 1, 1})->days);
    EXPECT_EQ(parseIsoDate("1899-12-29 18:00"), -1.75);
    EXPECT_EQ(parseIsoDate("2011-03-15 12:00:00.000"), 40617.5);
    EXPECT_EQ(parseIsoDate("06:00"), 0.25);
    for (const char* text : {"",
                             "2011",
                             "2011-3-15",
                             "2011-13-01",
                             "2011-00-01",
                             "2011-02-29",
                             "1900-02-29",
                             "2011-04-31",
                             "0099-01-01",
                             "2011-03-15x",
                             "2011-03-15 ",
                             "2011-03-15 1:00",
                             "2011-03-15 24:00",
                             "2011-03-15 10:60",
                             "2011-03-15 10:00:60",
                             "2011-03-15 10:00:00.",
                             "2011-03-15 10:00:00Z",
                             "2011/03/15",
                             "10:00:0",
                             "ab:cd",
                             "-011-03-15",
                             "12:30x",
                             "2011-03-15 10:00:00.1234567890"})
        EXPECT_FALSE(parseIsoDate(text)) << text;
}

TEST(Store, EveryDayOfFourCenturiesIsReadRight) {
    double expected = makeDate({1799, 12, 31})->days;
    for (int year = 1800; year < 2200; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= 31; ++day) {
                char text[40];
                std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
                const auto days = parseIsoDate(text);
                if (!makeDate({year, month, day})) {
                    ASSERT_FALSE(days) << text;
                    continue;
                }
                ASSERT_EQ(days, ++expected) << text;
            }
}

} // namespace
} // namespace norvel::adodb
