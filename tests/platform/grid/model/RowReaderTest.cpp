#include "platform/grid/model/RowReader.h"

#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using namespace adodb;
using tests::GeneratedColumn;
using tests::GeneratedRecordset;

TEST(RowReader, NeverMovesTheHostsRecord) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 10'000'000);
    host->SetAbsolutePosition(4'321);
    const int moves = host->moves();
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 9'999'900, 100, {0, 1, 8});
    reader.BookmarkAt(55);
    reader.RowOf(Variant(77.0));
    EXPECT_EQ(host->AbsolutePosition(), 4'321);
    EXPECT_EQ(host->moves(), moves);
    ASSERT_NE(cache.Text(9'999'999, 0), nullptr);
    EXPECT_EQ(*cache.Text(9'999'999, 0), "10000000");
}

TEST(RowReader, ReadsOnlyTheRowsAndColumnsThatWereAsked) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 10'000'000);
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 5'000'000, 50, {0, 2});
    EXPECT_LE(host->rowsRead(), 2 * RowCache::blockRows);
    EXPECT_EQ(host->valuesRead(), 2 * host->rowsRead());
    const auto before = host->rowsRead();
    reader.Fill(cache, 5'000'000, 50, {2, 0});
    EXPECT_EQ(host->rowsRead(), before) << "what is at hand is not read again";
}

TEST(RowReader, ReadsHeavyValuesOneRowAtATime) {
    const GeneratedColumn heavy{"testo", adLongVarWChar,
                                [](RowCount) { return Variant(std::string(2'000'000, 'x')); }};
    auto host = GeneratedRecordset::make({heavy}, 1000);
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 0, 30, {0});
    EXPECT_LE(host->largestRead(), 4);
    ASSERT_NE(cache.Text(29, 0), nullptr);
    EXPECT_LT(cache.Text(29, 0)->size(), 2000U);
}

TEST(RowReader, ShowsTheHostsFilterAndOrder) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 100);
    host->SetFilter("ogni 10");
    host->SetSort("codice desc");
    RowReader reader(*host);
    EXPECT_EQ(reader.Rows(), 10);
    RowCache cache;
    reader.Fill(cache, 0, 2, {0});
    EXPECT_EQ(*cache.Text(0, 0), "91");
    EXPECT_EQ(*cache.Text(1, 0), "81");
    EXPECT_TRUE(reader.SameFilter(*host));
    host->SetFilter("ogni 3");
    EXPECT_FALSE(reader.SameFilter(*host));
    EXPECT_TRUE(reader.SameSort(*host));
}

TEST(RowReader, FindsFieldsByNameWhateverTheCase) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 1);
    RowReader reader(*host);
    EXPECT_EQ(reader.FieldIndex("RAGIONE_SOCIALE"), 1);
    EXPECT_EQ(reader.FieldIndex("manca"), -1);
    EXPECT_EQ(reader.FieldCount(), 9);
    EXPECT_EQ(reader.FieldType(5), adDate);
}

TEST(RowReader, FindsARowByItsBookmarkAndNoneOutsideTheFilter) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 100);
    host->SetFilter("ogni 10");
    RowReader reader(*host);
    EXPECT_EQ(reader.RowOf(reader.BookmarkAt(4)), 4);
    EXPECT_EQ(reader.RowOf(Variant(2.0)), std::nullopt);
}

TEST(RowReader, SeesTheRowsThatArriveLater) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 10);
    host->beginFetch();
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 0, 20, {0});
    EXPECT_EQ(cache.Text(15, 0), nullptr);
    host->arrive(90, true);
    EXPECT_EQ(reader.Rows(), 100);
    reader.Fill(cache, 0, 20, {0});
    ASSERT_NE(cache.Text(15, 0), nullptr);
    EXPECT_EQ(*cache.Text(15, 0), "16");
}

TEST(RowReader, ReadsAnewWhatRowsThatArriveLaterHaveShifted) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 100);
    host->SetSort("codice desc");
    host->beginFetch();
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 0, 20, {0});
    ASSERT_NE(cache.Text(0, 0), nullptr);
    EXPECT_EQ(*cache.Text(0, 0), "100");
    host->arrive(900, true);
    reader.Fill(cache, 0, 20, {0});
    ASSERT_NE(cache.Text(0, 0), nullptr);
    EXPECT_EQ(*cache.Text(0, 0), "1000");
    ASSERT_NE(cache.Bookmark(19), nullptr);
    EXPECT_EQ(cache.Bookmark(19)->toDouble(), 981);
}

TEST(RowReader, NeverWaitsForRowsStillToCome) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 100);
    host->beginFetch();
    RowReader reader(*host);
    RowCache cache;
    reader.Fill(cache, 80, 20, {0, 1});
    EXPECT_EQ(host->waits(), 0);
    ASSERT_NE(cache.Text(99, 0), nullptr);
    EXPECT_EQ(*cache.Text(99, 0), "100");
    ASSERT_NE(cache.Bookmark(99), nullptr);
    EXPECT_EQ(cache.Bookmark(99)->toDouble(), 100);
}

TEST(RowReader, WhatTheRecordsetRefusesIsRaised) {
    auto host = GeneratedRecordset::make(tests::customerColumns(), 10);
    RowReader reader(*host);
    RowCache cache;
    host->failReads(Errore(-2147467259, "Errore di rete"));
    try {
        reader.Fill(cache, 0, 10, {0});
        ADD_FAILURE();
    } catch (const Errore& error) {
        EXPECT_EQ(error.descrizione(), "Errore di rete");
    }
    EXPECT_EQ(cache.Text(0, 0), nullptr);
    host->failClones(Errore(3251, "Il recordset non ha segnalibri"));
    EXPECT_THROW(RowReader{*host}, Errore);
}

} // namespace
} // namespace norvel::grid
