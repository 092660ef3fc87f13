// Dates as servers read them in statements.
#include "platform/adodb/odbc/OdbcValues.h"

#include <gtest/gtest.h>

namespace norvel::adodb {
namespace {

std::string written(double days, DataTypeEnum type = adDBTimeStamp,
                    ServerKind kind = ServerKind::PostgreSql,
                    OdbcSql::Moments moments = OdbcSql::Moments::Rounded) {
    ColumnInfo column;
    column.type = type;
    OdbcSql sql(kind);
    sql.addValue(column, Date{days}, moments);
    return sql.text;
}

constexpr double second = 1.0 / 86400;

TEST(OdbcLiteralTest, AMomentHasTheDecimalsOfASecondThatItNeeds) {
    EXPECT_EQ(written(40617), "TIMESTAMP '2011-03-15 00:00:00'");
    EXPECT_EQ(written(40617.25), "TIMESTAMP '2011-03-15 06:00:00'");
    EXPECT_EQ(written(40617.25 + second / 4), "TIMESTAMP '2011-03-15 06:00:00.250000'");
    EXPECT_EQ(written(40617.25, adDBDate), "DATE '2011-03-15'");
    EXPECT_EQ(written(40617.25, adDBTime), "TIME '06:00:00'");
    EXPECT_EQ(written(40617.25, adDBTimeStamp, ServerKind::SqlServer), "'2011-03-15T06:00:00'");
}

TEST(OdbcLiteralTest, TheLastSecondOfADayStaysInThatDay) {
    EXPECT_EQ(written(40617 + 1 - second / 4), "TIMESTAMP '2011-03-15 23:59:59.750000'");
    EXPECT_EQ(written(40617 + 1 - second), "TIMESTAMP '2011-03-15 23:59:59'");
}

TEST(OdbcLiteralTest, AMomentThatRoundsToMidnightIsTheNextDaysBeginning) {
    EXPECT_EQ(written(40617 + 1 - second * 1e-6), "TIMESTAMP '2011-03-16 00:00:00'");
    EXPECT_EQ(written(40617 + 1 - second * 1e-6, adDBDate), "DATE '2011-03-16'");
}

TEST(OdbcLiteralTest, AMomentThatAServerGaveKeepsItsMicroseconds) {
    const auto exact = [](double days) {
        return written(days, adDBTimeStamp, ServerKind::PostgreSql, OdbcSql::Moments::Exact);
    };
    EXPECT_EQ(exact(40617.25 + second * 0.789012), "TIMESTAMP '2011-03-15 06:00:00.789012'");
    EXPECT_EQ(exact(40617 + 1 - second * 1e-6), "TIMESTAMP '2011-03-15 23:59:59.999999'");
    EXPECT_EQ(exact(40618), "TIMESTAMP '2011-03-16 00:00:00'");
}

TEST(OdbcLiteralTest, BeforeTheDayZeroTheTimeCountsForwardToo) {
    EXPECT_EQ(written(-1.25), "TIMESTAMP '1899-12-29 06:00:00'");
    EXPECT_EQ(written(-1.25 - 0.5 + second / 4), "TIMESTAMP '1899-12-29 17:59:59.750000'");
}

} // namespace
} // namespace norvel::adodb
