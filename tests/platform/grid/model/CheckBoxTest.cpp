#include "platform/grid/model/CheckBox.h"

#include "platform/grid/model/DataTypeCode.h"
#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using namespace adodb;
using tests::GeneratedRecordset;

TEST(CheckBox, IsShownOnlyWhereValuesAreTranslatedIntoIt) {
    Column column;
    column.ValueItems = {.Translate = true, .Presentation = presentationCheckBox};
    EXPECT_TRUE(showsCheckBoxes(column));
    column.DataType = adInteger;
    EXPECT_EQ(alignmentOf(column), Alignment::Center);
    column.ValueItems.Translate = false;
    EXPECT_FALSE(showsCheckBoxes(column));
    column.ValueItems = {.Translate = true, .Presentation = presentationNormal};
    EXPECT_FALSE(showsCheckBoxes(column));
}

TEST(CheckBox, IsCheckedForAnythingButZeroAndBlankForNull) {
    for (const char* text : {"-1", "1", "True", "true", "Vero", "2,5", "1.000"})
        EXPECT_EQ(checkOf(text), Check::Checked) << text;
    for (const char* text : {"0", "False", "Falso", "0,00"})
        EXPECT_EQ(checkOf(text), Check::Clear) << text;
    EXPECT_EQ(checkOf(""), Check::Blank);
    for (const char* text : {"forse", "(binario)", "#Errore", "12 mele"})
        EXPECT_EQ(checkOf(text), std::nullopt) << text;
}

// --- data-type code ---

class DataTypeCodeTest : public testing::Test {
  protected:
    static RecordsetRef open(const std::string& sql) {
        auto recordset = makeClientRecordset();
        recordset->Open(sql, "Provider=SQLite;Data Source=:memory:", adOpenStatic, adLockOptimistic,
                        adCmdText);
        return recordset;
    }
    static int codeOf(const std::string& rows) {
        auto recordset = makeClientRecordset();
        recordset->Fields().Append("v", adInteger);
        recordset->Open();
        std::size_t begin = 0;
        while (begin < rows.size()) {
            const std::size_t end = std::min(rows.find(' ', begin), rows.size());
            const std::string value = rows.substr(begin, end - begin);
            recordset->AddNew({Variant("v")},
                              {value == "null" ? Variant::null() : Variant(std::stoi(value))});
            begin = end + 1;
        }
        return dataTypeCode(*recordset, 0);
    }
};

TEST_F(DataTypeCodeTest, IsTenForIntegersThatAreZeroOrMinusOne) {
    EXPECT_EQ(codeOf("0 -1 -1 0"), 10);
    EXPECT_EQ(codeOf("-1"), 10);
    EXPECT_EQ(codeOf("null 0 null"), 10);
}

TEST_F(DataTypeCodeTest, IsTheTypeForOtherIntegersAndWhereNoValueIsThere) {
    EXPECT_EQ(codeOf("0 -1 1"), adInteger);
    EXPECT_EQ(codeOf("0 1"), adInteger);
    EXPECT_EQ(codeOf("null null"), adInteger);
    EXPECT_EQ(codeOf(""), adInteger);
}

TEST_F(DataTypeCodeTest, IsTenForBooleansWhateverTheyHoldAndTheTypeForTheRest) {
    const auto rows = GeneratedRecordset::make(tests::customerColumns(), 50);
    const auto code = [&](const char* name) {
        for (int i = 0; i < rows->Fields().Count(); ++i)
            if (rows->Fields()(i).Name() == name) return dataTypeCode(*rows, i);
        return -1;
    };
    EXPECT_EQ(code("attivo"), 10);
    EXPECT_EQ(code("codice"), adInteger);
    EXPECT_EQ(code("citta"), adVarWChar);
    EXPECT_EQ(code("data_nascita"), rows->Fields()("data_nascita").Type());
}

TEST_F(DataTypeCodeTest, LooksAtRowsThatTheFilterHidesAndLeavesTheRecordsetWhereItIs) {
    const auto make = [](RowCount odd) {
        return GeneratedRecordset::make(
            {{"v", adSmallInt,
              [odd](RowCount row) {
                  return Variant(static_cast<std::int16_t>(row == odd ? 7 : row % 2 - 1));
              }}},
            20'000);
    };
    const auto rows = make(-1);
    rows->SetAbsolutePosition(17);
    EXPECT_EQ(dataTypeCode(*rows, 0), 10);
    EXPECT_EQ(rows->AbsolutePosition(), 17);
    const auto odd = make(19'999);
    odd->SetFilter("ogni 2");
    EXPECT_EQ(dataTypeCode(*odd, 0), adSmallInt);
    EXPECT_EQ(odd->Filter().toText(), "ogni 2");
}

TEST_F(DataTypeCodeTest, ReadsNoFurtherThanTheFirstOtherValue) {
    const auto rows = GeneratedRecordset::make(
        {{"v", adInteger, [](RowCount row) { return Variant(static_cast<std::int32_t>(row)); }}},
        1'000'000);
    EXPECT_EQ(dataTypeCode(*rows, 0), adInteger);
    EXPECT_LT(rows->rowsRead(), 100);
}

TEST_F(DataTypeCodeTest, WhileRowsArriveThoseThatCameDecide) {
    const auto rows = GeneratedRecordset::make(
        {{"v", adInteger,
          [](RowCount row) { return Variant(static_cast<std::int32_t>(row < 40 ? -1 : 5)); }}},
        40);
    rows->beginFetch();
    EXPECT_EQ(dataTypeCode(*rows, 0), 10);
    EXPECT_EQ(rows->waits(), 0);
    rows->arrive(10, true);
    EXPECT_EQ(dataTypeCode(*rows, 0), adInteger);
}

TEST_F(DataTypeCodeTest, OfAMillionRowsOfADatabaseTheLastOneCounts) {
    const auto numbers = [](const std::string& last) {
        return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 1000000) "
               "SELECT CAST(CASE i WHEN 1000000 THEN " +
               last + " ELSE -(i % 2) END AS INTEGER) AS v FROM n";
    };
    const auto yesNo = open(numbers("0"));
    const DataTypeEnum type = yesNo->Fields()("v").Type();
    ASSERT_TRUE(type == adInteger || type == adBigInt) << type;
    EXPECT_EQ(dataTypeCode(*yesNo, 0), 10);
    EXPECT_EQ(dataTypeCode(*open(numbers("3")), 0), type);
}

TEST_F(DataTypeCodeTest, AValueThatWasEditedCountsAndWhatItReplacedDoesNot) {
    auto recordset = makeClientRecordset();
    recordset->Fields().Append("v", adInteger);
    recordset->Open();
    for (const int value : {0, 5, -1})
        recordset->AddNew({Variant("v")}, {Variant(value)});
    EXPECT_EQ(dataTypeCode(*recordset, 0), adInteger);
    recordset->SetAbsolutePosition(2);
    recordset->Fields()("v").SetValue(Variant(-1));
    recordset->Update();
    EXPECT_EQ(dataTypeCode(*recordset, 0), 10);
    recordset->Fields()("v").SetValue(Variant(4));
    recordset->Update();
    EXPECT_EQ(dataTypeCode(*recordset, 0), adInteger);
}

} // namespace
} // namespace norvel::grid
