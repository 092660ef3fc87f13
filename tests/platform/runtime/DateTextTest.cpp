// Dates as Italian text and back, and their parts.
#include "platform/runtime/Formats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace norvel {

std::ostream& operator<<(std::ostream& out, Date date) {
    return out << dateToText(date);
}

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

Date at(CivilDate day, CivilTime time = {}) {
    return makeDate(day, time).value();
}

// Known days of OLE Automation's DATE.
TEST(Dates, CountDaysFromTheEndOf1899) {
    EXPECT_EQ(at({1899, 12, 30}).days, 0);
    EXPECT_EQ(at({1899, 12, 31}).days, 1);
    EXPECT_EQ(at({1899, 12, 29}).days, -1);
    EXPECT_EQ(at({1900, 1, 1}).days, 2);
    EXPECT_EQ(at({2000, 1, 1}).days, 36526);
    EXPECT_EQ(at({2011, 5, 3}).days, 40666);
    EXPECT_EQ(at({100, 1, 1}).days, -657434);
    EXPECT_EQ(at({9999, 12, 31}).days, 2958465);
}

TEST(Dates, TheTimeCountsForwardOnBothSidesOfDayZero) {
    EXPECT_EQ(at({1899, 12, 30}, {6, 0, 0}).days, 0.25);
    EXPECT_EQ(at({1899, 12, 31}, {6, 0, 0}).days, 1.25);
    EXPECT_EQ(at({1899, 12, 29}, {6, 0, 0}).days, -1.25);
    EXPECT_EQ(civilDate(Date{-1.25}), (CivilDate{1899, 12, 29}));
    EXPECT_EQ(civilTime(Date{-1.25}), (CivilTime{6, 0, 0}));
    EXPECT_EQ(civilDate(Date{-0.25}), (CivilDate{1899, 12, 30}));
    EXPECT_EQ(civilTime(Date{-0.25}), (CivilTime{6, 0, 0}));
}

TEST(Dates, DoNotExistOutsideTheCalendar) {
    const std::vector<CivilDate> none = {
        {2011, 2, 29}, {2100, 2, 29},  {2011, 4, 31},  {2011, 13, 1}, {2011, 0, 1},
        {2011, 1, 0},  {2011, 1, 32},  {99, 12, 31},   {10000, 1, 1}, {2011, -1, 1},
        {2011, 1, -1}, {2011, 257, 1}, {2011, 1, 257}, {-2011, 1, 1}};
    for (const CivilDate& date : none)
        EXPECT_FALSE(makeDate(date)) << date.year << ' ' << date.month << ' ' << date.day;
    EXPECT_TRUE(makeDate({2012, 2, 29}));
    EXPECT_TRUE(makeDate({2000, 2, 29}));
    for (const CivilTime& time : std::vector<CivilTime>{
             {24, 0, 0}, {-1, 0, 0}, {0, 60, 0}, {0, -1, 0}, {0, 0, 60}, {0, 0, -1}})
        EXPECT_FALSE(makeDate({2011, 1, 1}, time)) << time.hour << ' ' << time.minute;
}

TEST(Dates, EverySecondOfSomeDaysComesBackWhole) {
    for (const CivilDate& day :
         {CivilDate{100, 1, 1}, CivilDate{1899, 12, 29}, CivilDate{1899, 12, 30},
          CivilDate{2011, 5, 3}, CivilDate{9999, 12, 31}}) {
        for (int second = 0; second < 86400; second += 7) {
            const CivilTime time{second / 3600, second / 60 % 60, second % 60};
            const Date date = at(day, time);
            ASSERT_EQ(civilDate(date), day) << second;
            ASSERT_EQ(civilTime(date), time) << second;
        }
    }
}

TEST(Dates, ATimeJustBeforeMidnightIsTheNextDay) {
    EXPECT_EQ(civilDate(Date{40666.9999999}), (CivilDate{2011, 5, 4}));
    EXPECT_EQ(civilTime(Date{40666.9999999}), (CivilTime{0, 0, 0}));
    EXPECT_EQ(dateToText(Date{40666.9999999}), "04/05/2011");
    EXPECT_EQ(dateToText(Date{-1.9999999}), "00.00.00");
    EXPECT_EQ(dateToText(Date{-2.9999999}), "29/12/1899");
}

TEST(Dates, WhatIsNoDateIsShownAsTheNumberAndReadAsTheNearestDate) {
    EXPECT_TRUE(isValidDate(Date{-657434}));
    EXPECT_TRUE(isValidDate(Date{-657434.75}));
    EXPECT_FALSE(isValidDate(Date{-657435}));
    EXPECT_TRUE(isValidDate(Date{2958465.75}));
    EXPECT_FALSE(isValidDate(Date{2958466}));
    EXPECT_FALSE(isValidDate(Date{std::nan("")}));
    EXPECT_EQ(dateToText(Date{2958466}), "2958466");
    EXPECT_EQ(dateToText(Date{-1e300}), "-1E+300");
    EXPECT_EQ(civilDate(Date{infinity}), (CivilDate{9999, 12, 31}));
    EXPECT_EQ(civilTime(Date{1e300}), (CivilTime{23, 59, 59}));
    EXPECT_EQ(civilDate(Date{-infinity}), (CivilDate{100, 1, 1}));
    EXPECT_EQ(civilTime(Date{-1e300}), (CivilTime{0, 0, 0}));
    EXPECT_EQ(civilDate(Date{std::nan("")}), (CivilDate{1899, 12, 30}));
}

TEST(Dates, AsText) {
    EXPECT_EQ(dateToText(at({2011, 5, 3})), "03/05/2011");
    EXPECT_EQ(dateToText(at({2011, 12, 31}, {14, 30, 0})), "31/12/2011 14.30.00");
    EXPECT_EQ(dateToText(at({150, 1, 2})), "02/01/0150");
    EXPECT_EQ(dateToText(at({1899, 12, 30}, {7, 5, 9})), "07.05.09");
    EXPECT_EQ(dateToText(Date{0}), "00.00.00");
    EXPECT_EQ(dateToText(at({1899, 12, 29}, {6, 0, 0})), "29/12/1899 06.00.00");
}

TEST(Dates, ReadsWhatAnItalianOperatorTypes) {
    const std::vector<std::pair<const char*, CivilDate>> table = {
        {"03/05/2011", {2011, 5, 3}},   {"3/5/2011", {2011, 5, 3}},
        {"03-05-2011", {2011, 5, 3}},   {"03.05.2011", {2011, 5, 3}},
        {" 03/05/2011 ", {2011, 5, 3}}, {"2011-05-03", {2011, 5, 3}},
        {"2011/5/3", {2011, 5, 3}},     {"2011.05.03", {2011, 5, 3}},
        {"03/05/11", {2011, 5, 3}},     {"03/05/00", {2000, 5, 3}},
        {"03/05/29", {2029, 5, 3}},     {"03/05/30", {1930, 5, 3}},
        {"03/05/99", {1999, 5, 3}},     {"29/02/2012", {2012, 2, 29}},
        {"01/01/0100", {100, 1, 1}},    {"31/12/9999", {9999, 12, 31}},
        {"10.11.12", {2012, 11, 10}},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(textToDate(text), at(expected)) << text;
}

TEST(Dates, ReadsMonthFirstWhereDayFirstIsNoDate) {
    EXPECT_EQ(textToDate("03/15/2011"), at({2011, 3, 15}));
    EXPECT_EQ(textToDate("12/31/99"), at({1999, 12, 31}));
    EXPECT_EQ(textToDate("12/31/2011 10:30"), at({2011, 12, 31}, {10, 30, 0}));
    EXPECT_EQ(textToDate("02/29/2012"), at({2012, 2, 29}));
    EXPECT_EQ(textToDate("02/29/2011"), std::nullopt);
    EXPECT_EQ(textToDate("2011-15-03"), std::nullopt);
}

TEST(Dates, ReadsTimes) {
    const std::vector<std::pair<const char*, Date>> table = {
        {"03/05/2011 14.30.00", at({2011, 5, 3}, {14, 30, 0})},
        {"03/05/2011 14:30:15", at({2011, 5, 3}, {14, 30, 15})},
        {"03/05/2011  9:05", at({2011, 5, 3}, {9, 5, 0})},
        {"03/05/2011 14.30", at({2011, 5, 3}, {14, 30, 0})},
        {"2011-05-03T14:30:00", at({2011, 5, 3}, {14, 30, 0})},
        {"2011-05-03 00:00:00", at({2011, 5, 3})},
        {"2011-05-03 14:30:00.5", Date{40666.604166666664 + 0.5 / 86400}},
        {"14:30", Date{14.5 / 24}},
        {"14.30.00", Date{14.5 / 24}},
        {"0:00", Date{0}},
        {"23:59:59", at({1899, 12, 30}, {23, 59, 59})},
        {"05/03/2011 2:30 PM", at({2011, 3, 5}, {14, 30, 0})},
        {"05/03/2011 02:30:00 am", at({2011, 3, 5}, {2, 30, 0})},
        {"12:00 AM", Date{0}},
        {"12:00PM", Date{0.5}},
    };
    for (const auto& [text, expected] : table) {
        const std::optional<Date> read = textToDate(text);
        ASSERT_TRUE(read) << text;
        EXPECT_NEAR(read->days, expected.days, 1e-9) << text;
    }
}

TEST(Dates, RefusesWhatIsNoDate) {
    for (const char* text : {"",
                             " ",
                             "abc",
                             "12",
                             "12,5",
                             "12/",
                             "12/5",
                             "12/05/",
                             "/05/2011",
                             "12//2011",
                             "32/01/2011",
                             "00/01/2011",
                             "01/00/2011",
                             "29/02/2011",
                             "31/04/2011",
                             "13/13/2011",
                             "01/02/123",
                             "01/02/1",
                             "01/02/12345",
                             "1/2/20111",
                             "111/02/2011",
                             "01/022/2011",
                             "01/02-2011",
                             "01 02 2011",
                             "01/02/2011x",
                             "01/02/2011 x",
                             "01/02/2011 25:00",
                             "01/02/2011 10:60",
                             "01/02/2011 10:30:60",
                             "01/02/2011 10",
                             "01/02/2011 10:3",
                             "01/02/201110:30",
                             "01/02/0099",
                             "0000-01-01",
                             "99999999999/01/2011",
                             "01/02/99999999999999999999",
                             "-1/02/2011",
                             "+1/02/2011",
                             "14.3",
                             "24:00",
                             "10:30:00.",
                             "14.30.00.5",
                             "14.30.00,5",
                             "13:00 PM",
                             "0:30 AM",
                             "10:30 XM",
                             "10:30 PMX",
                             " WHERE d > ",
                             "SELECT 1",
                             "1-2",
                             "2011-05-03T",
                             "2011-05-03TT10:00",
                             "a=1 AND b=2",
                             "\u0661/02/2011"})
        EXPECT_EQ(textToDate(text), std::nullopt) << text;
}

TEST(Dates, ReadsBackWhatItWrites) {
    for (const Date date : {at({2011, 5, 3}), at({2011, 12, 31}, {14, 30, 5}), at({100, 1, 1}),
                            at({1899, 12, 29}, {23, 59, 59}), at({1899, 12, 30}, {14, 30, 0}),
                            at({9999, 12, 31}, {23, 59, 59})})
        EXPECT_EQ(textToDate(dateToText(date)), date) << dateToText(date);
}

} // namespace
} // namespace norvel
