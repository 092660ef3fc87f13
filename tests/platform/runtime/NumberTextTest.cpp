// Numbers as Italian text and back.
#include "platform/runtime/Formats.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <locale>
#include <string>
#include <vector>

namespace norvel {
namespace {

TEST(NumberText, ADoubleHasFifteenDigits) {
    const std::vector<std::pair<double, const char*>> table = {
        {0, "0"},
        {-0.0, "0"},
        {1, "1"},
        {-1, "-1"},
        {0.1, "0,1"},
        {0.1 + 0.2, "0,3"},
        {1234.5, "1234,5"},
        {-1234.5, "-1234,5"},
        {1.0 / 3, "0,333333333333333"},
        {2.0 / 3, "0,666666666666667"},
        {100, "100"},
        {1e14, "100000000000000"},
        {123456789012345, "123456789012345"},
        {999999999999999, "999999999999999"},
        {1e15, "1E+15"},
        {9999999999999999.0, "1E+16"},
        {1234567890123456, "1,23456789012346E+15"},
        {12345678901234567890.0, "1,23456789012346E+19"},
        {1e20, "1E+20"},
        {1e100, "1E+100"},
        {-1.5e300, "-1,5E+300"},
        {0.0001, "0,0001"},
        {0.00012345, "0,00012345"},
        {0.00001, "1E-05"},
        {0.0000001, "1E-07"},
        {1.5e-7, "1,5E-07"},
        {1e-300, "1E-300"},
        {std::numeric_limits<double>::max(), "1,79769313486232E+308"},
        {std::numeric_limits<double>::denorm_min(), "4,94065645841247E-324"},
        {std::numeric_limits<double>::infinity(), "1,#INF"},
        {-std::numeric_limits<double>::infinity(), "-1,#INF"},
        {std::numeric_limits<double>::quiet_NaN(), "-1,#IND"},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(numberToText(value), expected);
}

TEST(NumberText, ASingleHasSevenDigits) {
    const std::vector<std::pair<float, const char*>> table = {
        {0.1F, "0,1"},
        {1.0F / 3, "0,3333333"},
        {1234567.0F, "1234567"},
        {1e7F, "1E+07"},
        {12345678.0F, "1,234568E+07"},
        {-0.5F, "-0,5"},
        {-0.0F, "0"},
        {1e-5F, "1E-05"},
        {3.4028235e38F, "3,402823E+38"},
        {std::numeric_limits<float>::infinity(), "1,#INF"},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(numberToText(value), expected);
}

TEST(NumberText, ReadsItalianNumbers) {
    const std::vector<std::pair<const char*, double>> table = {
        {"0", 0},
        {"7000", 7000},
        {"-1", -1},
        {"+1", 1},
        {"- 1", -1},
        {"1234,5", 1234.5},
        {"1.234,5", 1234.5},
        {"1.234", 1234},
        {"12.345.678,9", 12345678.9},
        {",5", 0.5},
        {"-,5", -0.5},
        {"5,", 5},
        {"00012", 12},
        {"1E3", 1000},
        {"1e-3", 0.001},
        {"1,5E+3", 1500},
        {"  12  ", 12},
        {"\t12\r\n", 12},
        {"\u00A012\u202F", 12},
        {"€ 12,50", 12.5},
        {"12,50 €", 12.5},
        {"12,50€", 12.5},
        {"-€ 12,50", -12.5},
        {"€ -12,50", -12.5},
        {"-12,50 €", -12.5},
        {"1E-400", 0},
        {"1E-99999999999999999999", 0},
        {"0E99999999999999999999", 0},
        {"1,79769313486231E+308", 1.79769313486231e308},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(textToNumber(text), expected) << text;
}

TEST(NumberText, RefusesWhatIsNoItalianNumber) {
    for (const char* text :
         {"",     " ",      "-",        "+",       ",",     ".",      "€",     "abc",       "12a",
          "a12",  "1 2",    "1,2,3",    "--1",     "+-1",   "1-",     "(1)",   "12.5",      "0.5",
          "1.23", "1.2345", "1234.567", "1.234.5", ".123",  "1..234", "0.123", "1,234.567", "1E",
          "E3",   "1E+",    "1E3,5",    "1e5.000", "€",     "€ € 1",  "€1€",   "1 €€",      "True",
          "&H10", "0x10",   "1E400",    "-1E400",  "1'000", "\u0661", "nan",   "inf"})
        EXPECT_EQ(textToNumber(text), std::nullopt) << text;
    EXPECT_EQ(textToNumber(std::string_view("1\0", 2)), std::nullopt);
}

TEST(NumberText, TellsTinyFromHugeWhateverTheNotation) {
    const std::string zeros(400, '0');
    EXPECT_EQ(textToNumber("0," + zeros + "1E+5"), 0.0);
    EXPECT_EQ(textToNumber("0," + zeros + "1E+401"), 1.0);
    EXPECT_EQ(textToNumber("1" + zeros + "E-400"), 1.0);
    EXPECT_EQ(textToNumber("1" + zeros + "E-5"), std::nullopt);
    EXPECT_EQ(textToNumber("1" + zeros), std::nullopt);
    EXPECT_EQ(textToNumber(std::string(1'000'000, '9')), std::nullopt);
}

TEST(NumberText, ReadsBackWhatItWrites) {
    for (const double value : {0.1, 1234.5, -1e-7, 1.5e300, 123456789012345.0, 1e15, 0.00012345})
        EXPECT_EQ(textToNumber(numberToText(value)), value);
}

class ForeignPunctuation : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ';'; }
    char do_thousands_sep() const override { return '_'; }
    std::string do_grouping() const override { return "\1"; }
};

TEST(NumberText, TheHostsLocaleChangesNothing) {
    const std::string cLocale = std::setlocale(LC_ALL, nullptr);
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new ForeignPunctuation));
    for (const char* name : {"it_IT.UTF-8", "en_US.UTF-8", "de_DE.UTF-8"})
        std::setlocale(LC_ALL, name); // the last that this machine knows stays
    EXPECT_EQ(numberToText(1234.5), "1234,5");
    EXPECT_EQ(numberToText(1234.5F), "1234,5");
    EXPECT_EQ(textToNumber("1.234,5"), 1234.5);
    EXPECT_EQ(Variant(Currency{12345678}).toText(), "1234,5678");
    EXPECT_EQ(Variant(1234567).toText(), "1234567");
    EXPECT_EQ(dateToText(Date{40666.5}), "03/05/2011 12.00.00");
    std::locale::global(before);
    std::setlocale(LC_ALL, cLocale.c_str());
}

TEST(NumberText, BooleansAreTrueAndFalse) {
    EXPECT_EQ(booleanToText(true), "True");
    EXPECT_EQ(booleanToText(false), "False");
}

} // namespace
} // namespace norvel
