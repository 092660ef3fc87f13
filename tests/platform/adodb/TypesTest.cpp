// Declared types, and values that do not keep to them.
#include "platform/runtime/Formats.h"
#include "tests/platform/adodb/AdodbTest.h"

namespace norvel::adodb {
namespace {

class TypesTest : public testing::Test {
  protected:
    // The one column of a table declared so, holding these values ("1, 2, NULL").
    RecordsetRef column(const std::string& declared, const std::string& values) {
        const std::string name = "t" + std::to_string(++count) + ".db";
        const std::string connection = folder.database(name, "CREATE TABLE t (v " + declared + ")");
        if (!values.empty()) openOn(connection, "INSERT INTO t VALUES " + values);
        return openOn(connection, "SELECT v FROM t");
    }
    static Variant value(Recordset& rs, RowCount position) {
        rs.SetAbsolutePosition(position);
        return rs.Fields()(0).Value();
    }
    TemporaryFolder folder;
    int count = 0;
};

TEST_F(TypesTest, EveryDeclaredTypeHasItsAdoCode) {
    const std::pair<const char*, DataTypeEnum> cases[] = {
        {"BOOLEAN", adBoolean},
        {"bit", adBoolean},
        {"INTEGER", adInteger},
        {"int", adInteger},
        {"SMALLINT", adInteger},
        {"BIGINT", adBigInt},
        {"REAL", adDouble},
        {"double", adDouble},
        {"FLOAT", adDouble},
        {"NUMERIC", adNumeric},
        {"NUMERIC(10,2)", adNumeric},
        {"DECIMAL( 10 , 2 )", adNumeric},
        {"CURRENCY", adCurrency},
        {"money", adCurrency},
        {"DATE", adDate},
        {"DATETIME", adDBTimeStamp},
        {"timestamp", adDBTimeStamp},
        {"TIME", adDBTime},
        {"TEXT", adVarWChar},
        {"VARCHAR(50)", adVarWChar},
        {"nvarchar(20)", adVarWChar},
        {"MEMO", adLongVarWChar},
        {"LONGTEXT", adLongVarWChar},
        {"CLOB", adLongVarWChar},
        {"BLOB", adLongVarBinary},
        {"", adVarWChar}, // no rows to tell
        {"SCONOSCIUTO", adVarWChar},
    };
    for (const auto& [declared, type] : cases)
        EXPECT_EQ(column(declared, "")->Fields()(0).Type(), type) << declared;
}

TEST_F(TypesTest, FieldsTellSizePrecisionAndScale) {
    const auto text = column("VARCHAR(50)", "");
    EXPECT_EQ(text->Fields()(0).DefinedSize(), 50);
    EXPECT_EQ(text->Fields()(0).Precision(), 255);
    const auto number = column("NUMERIC(10,2)", "");
    EXPECT_EQ(number->Fields()(0).Precision(), 10);
    EXPECT_EQ(number->Fields()(0).NumericScale(), 2);
    const auto integer = column("INTEGER", "");
    EXPECT_EQ(integer->Fields()(0).DefinedSize(), 4);
    EXPECT_TRUE(integer->Fields()(0).Attributes() & adFldFixed);
    EXPECT_TRUE(column("MEMO", "")->Fields()(0).Attributes() & adFldLong);
}

TEST_F(TypesTest, IntegersReadAsLongAndNoneIsLost) {
    const auto rs = column("INTEGER", "(1),(-2147483648),(2147483647),(2147483648),"
                                      "(9223372036854775807),(-9223372036854775808),(NULL)");
    EXPECT_EQ(rs->Fields()(0).Type(), adInteger);
    EXPECT_EQ(value(*rs, 1), Variant(std::int32_t{1}));
    EXPECT_EQ(value(*rs, 2), Variant(std::int32_t{INT32_MIN}));
    EXPECT_EQ(value(*rs, 3), Variant(std::int32_t{INT32_MAX}));
    EXPECT_EQ(value(*rs, 4), Variant(std::int64_t{2147483648}));
    EXPECT_EQ(value(*rs, 5), Variant(std::int64_t{INT64_MAX}));
    EXPECT_EQ(value(*rs, 6), Variant(std::int64_t{INT64_MIN}));
    EXPECT_TRUE(value(*rs, 7).isNull());
}

TEST_F(TypesTest, BigIntegersAreOf64Bits) {
    EXPECT_EQ(value(*column("BIGINT", "(7)"), 1), Variant(std::int64_t{7}));
}

TEST_F(TypesTest, BooleansAreZeroOrNot) {
    const auto rs = column("BOOLEAN", "(0),(1),(-1),(2),('True'),('false'),(NULL),('forse')");
    const std::vector<Variant> expected = {false,           true,   true, true, true, false,
                                           Variant::null(), "forse"};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(value(*rs, static_cast<RowCount>(i) + 1), expected[i]) << i;
}

TEST_F(TypesTest, RealsAreDoubles) {
    const auto rs = column("REAL", "(1.5),(3),(1e300),('abc'),(NULL)");
    EXPECT_EQ(value(*rs, 1), Variant(1.5));
    EXPECT_EQ(value(*rs, 2), Variant(3.0));
    EXPECT_EQ(value(*rs, 3), Variant(1e300));
    EXPECT_EQ(value(*rs, 4), Variant("abc"));
    EXPECT_TRUE(value(*rs, 5).isNull());
}

TEST_F(TypesTest, NumericsAreExactDecimals) {
    const auto rs = column("NUMERIC", "(382439.34),(1997.47),(-0.01),(12),(0.1),(1234567.891234),"
                                      "(0.30000000000000004),(123456789012345678),(1e25),(1e300),"
                                      "(0.000001),(0.0000001),('x'),(NULL)");
    const std::vector<Variant> expected = {
        *Decimal::fromText("382439.34"),
        *Decimal::fromText("1997.47"),
        *Decimal::fromText("-0.01"),
        Decimal(12),
        *Decimal::fromText("0.1"),
        *Decimal::fromText("1234567.891234"),
        *Decimal::fromText("0.30000000000000004"),
        Decimal(123456789012345678),
        *Decimal::fromText("10000000000000000000000000"),
        1e300,
        *Decimal::fromText("0.000001"),
        *Decimal::fromText("0.0000001"),
        "x",
        Variant::null(),
    };
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(value(*rs, static_cast<RowCount>(i) + 1), expected[i]) << i;
}

TEST_F(TypesTest, CurrencyHasFourDecimals) {
    const auto rs = column("CURRENCY", "(12.5),(-0.0001),(7),(0.00001),(1e30)");
    EXPECT_EQ(value(*rs, 1), Variant(Currency{125000}));
    EXPECT_EQ(value(*rs, 2), Variant(Currency{-1}));
    EXPECT_EQ(value(*rs, 3), Variant(Currency{70000}));
    EXPECT_EQ(value(*rs, 4), Variant(*Decimal::fromText("0.00001"))) << "not rounded away";
    EXPECT_EQ(value(*rs, 5), Variant(1e30));
}

Date day(int year, int month, int dayOfMonth, CivilTime time = {}) {
    return *makeDate({year, month, dayOfMonth}, time);
}

TEST_F(TypesTest, DatesAreReadFromIsoTextsAndNumbers) {
    const auto rs = column("DATE", "('2011-03-15'),('1899-12-29 06:00:00'),('2011-03-15T10:30'),"
                                   "(0),(86400),(2455635.5),('14:30:00'),('0100-01-01'),"
                                   "('9999-12-31 23:59:59'),(NULL)");
    const std::vector<Variant> expected = {day(2011, 3, 15),
                                           day(1899, 12, 29, {6, 0, 0}),
                                           day(2011, 3, 15, {10, 30, 0}),
                                           day(1970, 1, 1),
                                           day(1970, 1, 2),
                                           day(2011, 3, 15),
                                           Date{14.5 / 24},
                                           day(100, 1, 1),
                                           day(9999, 12, 31, {23, 59, 59}),
                                           Variant::null()};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(value(*rs, static_cast<RowCount>(i) + 1), expected[i]) << i;
}

TEST_F(TypesTest, WhatIsNoDateStaysWhatItIs) {
    const auto rs = column("DATETIME", "('2011-02-30'),('15/03/2011'),('0000-00-00'),(''),"
                                       "('2011-03-15 10:30:00+01:00'),(9e18),(1e300)");
    EXPECT_EQ(rs->Fields()(0).Type(), adDBTimeStamp);
    const char* texts[] = {"2011-02-30", "15/03/2011", "0000-00-00", "",
                           "2011-03-15 10:30:00+01:00"};
    RowCount position = 1;
    for (const char* text : texts)
        EXPECT_EQ(value(*rs, position++), Variant(text));
    EXPECT_EQ(value(*rs, 6), Variant(std::int64_t{9'000'000'000'000'000'000}));
    EXPECT_EQ(value(*rs, 7), Variant(1e300));
}

TEST_F(TypesTest, ATextInAnIntegerColumnIsNotLost) {
    const auto rs = column("INTEGER", "(1),('due'),(3.5),(x'CAFE'),(NULL),('6')");
    EXPECT_EQ(value(*rs, 1), Variant(std::int32_t{1}));
    EXPECT_EQ(value(*rs, 2), Variant("due"));
    EXPECT_EQ(value(*rs, 3), Variant(3.5));
    EXPECT_EQ(value(*rs, 4), Variant(Bytes{0xCA, 0xFE}));
    EXPECT_TRUE(value(*rs, 5).isNull());
    EXPECT_EQ(value(*rs, 6), Variant(std::int32_t{6}));
}

TEST_F(TypesTest, NullAndTheEmptyTextAreApart) {
    const auto rs = column("TEXT", "(''),(NULL),('a')");
    EXPECT_EQ(value(*rs, 1), Variant(""));
    EXPECT_TRUE(value(*rs, 2).isNull());
    EXPECT_EQ(value(*rs, 3), Variant("a"));
}

TEST_F(TypesTest, TextsKeepEveryByte) {
    const auto rs = column("TEXT", "('perché «Ω» 😀'),('a' || char(0) || 'b'),('riga' || char(10))");
    EXPECT_EQ(value(*rs, 1), Variant("perché «Ω» 😀"));
    EXPECT_EQ(value(*rs, 2), Variant(std::string("a\0b", 3)));
    EXPECT_EQ(value(*rs, 3), Variant("riga\n"));
}

TEST_F(TypesTest, TextThatIsNotUtf8IsReadAsWindows1252) {
    const auto rs = column("TEXT", "('prima'),(CAST(x'7065726368E9' AS TEXT)),('città'),"
                                   "(CAST(x'C3' AS TEXT)),(CAST(x'A9' AS TEXT)),('dopo')");
    const char* expected[] = {"prima", "perché", "città", "Ã", "©", "dopo"};
    RowCount position = 1;
    for (const char* text : expected)
        EXPECT_EQ(value(*rs, position++), Variant(text));
}

TEST_F(TypesTest, BytesAreKept) {
    const auto rs = column("BLOB", "(x''),(x'00FF10'),(NULL),('testo'),(5)");
    EXPECT_EQ(value(*rs, 1), Variant(Bytes{}));
    EXPECT_EQ(value(*rs, 2), Variant(Bytes{0x00, 0xFF, 0x10}));
    EXPECT_TRUE(value(*rs, 3).isNull());
    EXPECT_EQ(value(*rs, 4), Variant("testo"));
    EXPECT_EQ(value(*rs, 5), Variant(std::int32_t{5}));
}

TEST_F(TypesTest, ExpressionsTakeTheirTypeFromTheFirstRows) {
    const std::pair<const char*, DataTypeEnum> cases[] = {
        {"SELECT 1 + 1", adInteger},
        {"SELECT 3000000000", adBigInt},
        {"SELECT 1.5", adDouble},
        {"SELECT 1 UNION ALL SELECT 1.5", adDouble},
        {"SELECT 'a'", adVarWChar},
        {"SELECT NULL", adVarWChar},
        {"SELECT x'00'", adLongVarBinary},
        {"SELECT 1 UNION ALL SELECT 'a'", adVariant},
        {"SELECT NULL UNION ALL SELECT 2", adInteger},
    };
    for (const auto& [sql, type] : cases)
        EXPECT_EQ(openOn("Provider=SQLite;Data Source=:memory:", sql)->Fields()(0).Type(), type)
            << sql;
}

TEST_F(TypesTest, AnExpressionThatChangesItsMindLosesNothing) {
    const auto rs = openOn("Provider=SQLite;Data Source=:memory:",
                           "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c LIMIT "
                           "2000) SELECT iif(n<1000, n, 'testo ' || n) FROM c");
    EXPECT_EQ(rs->Fields()(0).Type(), adInteger);
    EXPECT_EQ(value(*rs, 999), Variant(std::int32_t{999}));
    EXPECT_EQ(value(*rs, 1000), Variant("testo 1000"));
    EXPECT_EQ(value(*rs, 2000), Variant("testo 2000"));
}

TEST_F(TypesTest, MixedExpressionsKeepEachValuesOwnType) {
    const auto rs =
        openOn("Provider=SQLite;Data Source=:memory:", "VALUES (1), ('a'), (NULL), (2.5), (x'01')");
    EXPECT_EQ(value(*rs, 1), Variant(std::int32_t{1}));
    EXPECT_EQ(value(*rs, 2), Variant("a"));
    EXPECT_TRUE(value(*rs, 3).isNull());
    EXPECT_EQ(value(*rs, 4), Variant(2.5));
    EXPECT_EQ(value(*rs, 5), Variant(Bytes{1}));
}

TEST_F(TypesTest, ActualSizeIsOfTheCurrentValue) {
    const auto rs = column("TEXT", "('perché'),(''),(NULL),('😀')");
    const std::int64_t expected[] = {12, 0, 0, 4};
    for (int i = 0; i < 4; ++i) {
        rs->SetAbsolutePosition(i + 1);
        EXPECT_EQ(rs->Fields()(0).ActualSize(), expected[i]) << i;
    }
}

} // namespace
} // namespace norvel::adodb
