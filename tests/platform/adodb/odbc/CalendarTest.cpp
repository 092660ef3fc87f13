// Dates and times that drivers have no form for, and those that keys are made of.
#include "tests/platform/adodb/odbc/ServerTest.h"

namespace norvel::adodb {
namespace {

class OdbcCalendar : public OnServer {
  protected:
    // Changes the other column of the only row of a table whose column k has this value; what
    // stands there then.
    Variant changed(const std::string& type, const std::string& value, bool key) const {
        const auto connection = open();
        table(connection, "momenti",
              "k " + type + (key ? " not null primary key" : "") + ", nota varchar(10)");
        connection->Execute("INSERT INTO momenti VALUES (" + value + ", 'prima')");
        const auto recordset = rows(connection, "SELECT k, nota FROM momenti", adLockOptimistic);
        recordset->Fields()("nota").SetValue("dopo");
        recordset->Update();
        return first(connection, "SELECT nota FROM momenti");
    }
};
ON_SERVERS(OdbcCalendar);

// Each between rows of an ordinary value: one that the driver cannot convert left the rest of the
// memory that was there.
TEST_P(OdbcCalendar, TimesBeyondADayAreThatManyDays) {
    const auto connection = open();
    table(connection, "ore", "n integer primary key, t time");
    connection->Execute(pick("INSERT INTO ore VALUES (1, '01:30:00'), (2, '100:30:00'), "
                             "(3, '-30:00:00'), (4, NULL), (5, '23:59:59')",
                             "INSERT INTO ore VALUES (1, '01:30:00'), (2, '24:00:00'), "
                             "(4, NULL), (5, '23:59:59')"));
    const auto recordset = rows(connection, "SELECT t FROM ore ORDER BY n");
    const auto next = [&] {
        Variant value = recordset->Fields()(0).Value();
        recordset->MoveNext();
        return value;
    };
    EXPECT_EQ(next(), Date{0.0625});
    EXPECT_EQ(next(), Date{postgres() ? 1 : 4.1875});
    if (!postgres()) {
        EXPECT_EQ(next(), Date{-1.25});
    }
    EXPECT_TRUE(next().isNull());
    EXPECT_EQ(next(), Date{86399.0 / 86400});
    EXPECT_TRUE(recordset->EOF_());
}

TEST_P(OdbcCalendar, WhatIsNoDayOfTheCalendarIsNull) {
    const auto connection = open();
    table(connection, "giorni",
          "n integer primary key, d date, m " + pick("datetime", "timestamp"));
    connection->Execute(
        pick("INSERT INTO giorni VALUES (1, '2011-03-15', '2011-03-15 06:00:00')",
             "INSERT INTO giorni VALUES (1, '2011-03-15', '2011-03-15 06:00:00'), (2, '-infinity', "
             "'-infinity'), (3, '12345-01-01', '12345-01-01'), (4, '0044-03-15 BC', '0044-03-15 "
             "BC')"));
    if (!postgres()) {
        connection->Execute("SET sql_mode = ''");
        connection->Execute("INSERT INTO giorni VALUES (2, '0000-00-00', '0000-00-00'), (3, "
                            "'2011-00-00', '2011-00-00'), (4, '0044-03-15', '0044-03-15')");
    }
    const auto recordset = rows(connection, "SELECT n, d, m FROM giorni ORDER BY n");
    EXPECT_EQ(recordset->Fields()("d").Value(), Date{40617});
    EXPECT_EQ(recordset->Fields()("m").Value(), Date{40617.25});
    for (int n = 2; n <= 4; ++n) {
        recordset->MoveNext();
        EXPECT_TRUE(recordset->Fields()("d").Value().isNull()) << n;
        EXPECT_TRUE(recordset->Fields()("m").Value().isNull()) << n;
    }
    if (postgres()) { // its driver's end of time is the last second of 9999
        EXPECT_TRUE(first(connection, "SELECT date 'infinity'").isNull());
        EXPECT_EQ(first(connection, "SELECT timestamp 'infinity'"),
                  Date{2958465 + 86399.0 / 86400});
    }
}

TEST_P(OdbcCalendar, MomentsWithATimeZoneAndDecimalsAreRead) {
    const auto connection = open();
    const double noonAndAQuarterSecond = 40617.5 + 0.25 / 86400;
    EXPECT_EQ(first(connection, pick("SELECT CAST('2011-03-15 12:00:00.25' AS DATETIME(6))",
                                     "SELECT TIMESTAMPTZ '2011-03-15 12:00:00.25'")),
              Date{noonAndAQuarterSecond});
    EXPECT_EQ(
        first(connection, pick("SELECT CAST('06:00:00.5' AS TIME(6))", "SELECT TIME '06:00:00.5'")),
        Date{0.25 + 0.5 / 86400});
}

TEST_P(OdbcCalendar, AKeysMicrosecondsAreKept) {
    const std::string moment = pick("datetime(6)", "timestamp");
    for (const bool key : {true, false}) {
        for (const char* value : {"'2011-03-15 12:34:56.789012'", "'2011-03-15 23:59:59.999999'",
                                  "'1899-01-15 12:34:56.000001'", "'2011-03-15 12:34:56.123990'"})
            EXPECT_EQ(changed(moment, value, key), "dopo") << value << key;
        EXPECT_EQ(changed(pick("time(6)", "time"), "'12:34:56.789012'", key), "dopo") << key;
    }
}

// What an operator or a host computed is written without the noise of its last bits, and the row is
// found again by what was written.
TEST_P(OdbcCalendar, AKeyThatIsWrittenLosesTheNoiseOfADouble) {
    const auto connection = open();
    table(connection, "momenti",
          "k " + pick("datetime(6)", "timestamp") + " primary key, nota varchar(10)");
    const auto recordset = rows(connection, "SELECT k, nota FROM momenti", adLockOptimistic);
    recordset->AddNew({Variant("k"), Variant("nota")},
                      {Variant(Date{40617.5 + 3e-11}), Variant("a")});
    EXPECT_EQ(recordset->Fields()("k").Value(), Date{40617.5});
    recordset->Fields()("k").SetValue(Date{40618.5 - 3e-11});
    recordset->Update();
    EXPECT_EQ(recordset->Fields()("k").Value(), Date{40618.5});
}

} // namespace
} // namespace norvel::adodb
