#include "platform/grid/model/CopyText.h"

#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace norvel::grid {
namespace {

using tests::GeneratedRecordset;

TEST(CopyText, ATextIsCopiedWholeAndOnlyWhatWouldBreakTheRowIsQuoted) {
    EXPECT_EQ(copiedCell(Variant("Rossi & C.")), "Rossi & C.");
    EXPECT_EQ(copiedCell(Variant("a\tb")), "\"a\tb\"");
    EXPECT_EQ(copiedCell(Variant("via Roma\r\nTorino\rI")), "\"via Roma\nTorino\nI\"");
    EXPECT_EQ(copiedCell(Variant("detto \"il Moro\"")), "\"detto \"\"il Moro\"\"\"");
    EXPECT_EQ(copiedCell(Variant(std::string("a\0b", 3))), "a b");
    EXPECT_EQ(copiedCell(Variant(std::string(5000, 'x'))).size(), 5000U);
    EXPECT_EQ(copiedCell(Variant("citt\xE0")), "città");
}

TEST(CopyText, OtherValuesAreCopiedAsTheyAreShown) {
    EXPECT_EQ(copiedCell(Variant::null()), "");
    EXPECT_EQ(copiedCell(Variant(1234.5)), "1234,5");
    EXPECT_EQ(copiedCell(Variant(true)), "True");
    EXPECT_EQ(copiedCell(Variant(Bytes{1, 2})), "(binario)");
}

class CopiedRowsTest : public testing::Test {
  protected:
    std::string copy(const std::vector<std::pair<adodb::RowCount, adodb::RowCount>>& ranges,
                     const std::vector<int>& fields) {
        RowReader reader(*rows);
        return copiedRows(reader, ranges, fields);
    }
    std::shared_ptr<GeneratedRecordset> rows = GeneratedRecordset::make(
        {{"codice", adodb::adInteger,
          [](adodb::RowCount row) { return Variant(static_cast<std::int32_t>(row + 1)); }},
         {"nome", adodb::adVarWChar,
          [](adodb::RowCount row) { return Variant("n" + std::to_string(row + 1)); }}},
        5000);
};

TEST_F(CopiedRowsTest, CellsStandInTheOrderAskedAndRowsBetweenLineEnds) {
    EXPECT_EQ(copy({{0, 1}, {3, 3}}, {1, 0}), "n1\t1\r\nn2\t2\r\nn4\t4");
    EXPECT_EQ(copy({{7, 7}}, {0}), "8");
}

TEST_F(CopiedRowsTest, AColumnWithoutAFieldIsBlank) {
    EXPECT_EQ(copy({{0, 0}}, {0, -1, 1}), "1\t\tn1");
    EXPECT_EQ(copy({{0, 1}}, {-1, -1}), "\t\r\n\t");
}

TEST_F(CopiedRowsTest, RowsThatAreNotThereAreNotCopied) {
    EXPECT_EQ(copy({{4998, 9000}}, {0}), "4999\r\n5000");
    EXPECT_EQ(copy({}, {0}), "");
}

TEST_F(CopiedRowsTest, WhileRowsArriveThoseThatCameAreCopiedAndNoneIsWaitedFor) {
    rows->beginFetch();
    EXPECT_EQ(copy({{4997, 4999}}, {0}), "4998\r\n4999\r\n5000");
    EXPECT_EQ(rows->waits(), 0);
}

TEST_F(CopiedRowsTest, ThousandsOfRowsAreReadInBlocks) {
    const std::string all = copy({{0, 4999}}, {0, 1});
    EXPECT_EQ(std::ranges::count(all, '\r'), 4999);
    EXPECT_TRUE(all.starts_with("1\tn1\r\n2\t"));
    EXPECT_TRUE(all.ends_with("\r\n5000\tn5000"));
    EXPECT_LE(rows->largestRead(), 2000);
}

TEST_F(CopiedRowsTest, AReadThatFailsIsRaised) {
    rows->failReads({-2147467259, "Connessione interrotta"});
    EXPECT_THROW(copy({{0, 10}}, {0}), Errore);
}

} // namespace
} // namespace norvel::grid
