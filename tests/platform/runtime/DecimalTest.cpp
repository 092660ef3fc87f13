// Exact decimal numbers: their texts, their order, their edges.
#include "platform/runtime/Decimal.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace norvel {
namespace {

constexpr const char* largest = "79228162514264337593543950335";

Decimal of(const char* text) {
    const std::optional<Decimal> value = Decimal::fromText(text);
    EXPECT_TRUE(value) << text;
    return value.value_or(Decimal());
}

TEST(Decimal, ReadsInvariantText) {
    const std::vector<std::pair<const char*, const char*>> table = {
        {"0", "0"},
        {"-0", "0"},
        {"-0.00", "0"},
        {"+7", "7"},
        {"007", "7"},
        {"1.50", "1.5"},
        {"-1.50", "-1.5"},
        {".5", "0.5"},
        {"5.", "5"},
        {"1e3", "1000"},
        {"1.5E+3", "1500"},
        {"1500e-3", "1.5"},
        {"0.0001", "0.0001"},
        {"1e28", "10000000000000000000000000000"},
        {"1e-28", "0.0000000000000000000000000001"},
        {"0e999999", "0"},
        {largest, largest},
        {"-79228162514264337593543950335", "-79228162514264337593543950335"},
        {"7.9228162514264337593543950335", "7.9228162514264337593543950335"},
        {"0000000000000000000000000000000000000000000000000000000000000000000000012", "12"},
        {"18446744073709551616", "18446744073709551616"},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(of(text).toText(), expected) << text;
}

TEST(Decimal, RoundsHalfToEvenWhatIsTooFine) {
    const std::vector<std::pair<const char*, const char*>> table = {
        {"0.00000000000000000000000000005", "0"},
        {"0.000000000000000000000000000050000000000000000000000000000000000000000000000000001",
         "0.0000000000000000000000000001"},
        {"0.00000000000000000000000000015", "0.0000000000000000000000000002"},
        {"0.00000000000000000000000000025", "0.0000000000000000000000000002"},
        {"0.00000000000000000000000000026", "0.0000000000000000000000000003"},
        {"1e-29", "0"},
        {"9e-29", "0.0000000000000000000000000001"},
        {"1e-999999999999999999999", "0"},
        {"9.99999999999999999999999999999", "10"},
        {"79228162514264337593543950335.4", largest},
        {"7.92281625142643375935439503355", "7.922816251426433759354395034"},
        {"12345678901234567890123456789.55", "12345678901234567890123456790"},
    };
    for (const auto& [text, expected] : table)
        EXPECT_EQ(of(text).toText(), expected) << text;
}

TEST(Decimal, ADigitHoweverFarBehindAHalfRoundsUp) {
    const std::string half = "0.00000000000000000000000000005";
    const std::string zeros(100'000, '0');
    EXPECT_EQ(Decimal::fromText(half + zeros)->toText(), "0");
    EXPECT_EQ(Decimal::fromText(half + zeros + "1")->toText(), "0.0000000000000000000000000001");
}

TEST(Decimal, RefusesWhatIsNoNumberOrTooLarge) {
    for (const char* text : {"",
                             " ",
                             "-",
                             "+",
                             ".",
                             "e5",
                             "1e",
                             "1e+",
                             "1,5",
                             " 1",
                             "1 ",
                             "1.2.3",
                             "--1",
                             "0x10",
                             "1e5.5",
                             "nan",
                             "inf",
                             "79228162514264337593543950336",
                             "1e29",
                             "79228162514264337593543950335.5",
                             "1e999999999999999999999"})
        EXPECT_FALSE(Decimal::fromText(text)) << text;
    EXPECT_TRUE(Decimal::fromText(std::string(1'000'000, '0') + "5"));
    EXPECT_FALSE(Decimal::fromText(std::string(1'000'000, '5')));
    EXPECT_EQ(Decimal::fromText("0." + std::string(1'000'000, '3'))->toText(),
              "0.3333333333333333333333333333");
}

TEST(Decimal, ComparesNumbersNotNotations) {
    EXPECT_EQ(of("1.50"), of("1.5"));
    EXPECT_EQ(of("100"), of("1e2"));
    EXPECT_EQ(Decimal::fromParts(true, 0, 0, 5), Decimal());
    EXPECT_NE(of("1.5"), of("-1.5"));
    EXPECT_NE(of(largest), of("7.9228162514264337593543950335"));
    const std::vector<const char*> ascending = {"-79228162514264337593543950335",
                                                "-79228162514264337593543950334",
                                                "-1.0000000000000000000000000001",
                                                "-1",
                                                "-0.9999999999999999999999999999",
                                                "-0.0000000000000000000000000001",
                                                "0",
                                                "0.0000000000000000000000000001",
                                                "0.1",
                                                "0.11",
                                                "1",
                                                "1.0000000000000000000000000001",
                                                "2",
                                                "4294967296",
                                                "18446744073709551615",
                                                "18446744073709551616",
                                                largest};
    for (std::size_t a = 0; a < ascending.size(); ++a) {
        for (std::size_t b = 0; b < ascending.size(); ++b)
            EXPECT_EQ(of(ascending[a]) <=> of(ascending[b]), a <=> b)
                << ascending[a] << " and " << ascending[b];
    }
}

TEST(Decimal, ADoubleBecomesItsShortestFifteenDigits) {
    const std::vector<std::pair<double, const char*>> table = {
        {0.0, "0"},
        {-0.0, "0"},
        {0.1, "0.1"},
        {-2.5, "-2.5"},
        {1.0 / 3, "0.333333333333333"},
        {123456789012345.0, "123456789012345"},
        {1234567890123456.0, "1234567890123460"},
        {1e28, "10000000000000000000000000000"},
        {7.9e28, "79000000000000000000000000000"},
        {1e-28, "0.0000000000000000000000000001"},
        {1e-40, "0"},
        {std::numeric_limits<double>::denorm_min(), "0"},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(Decimal::fromDouble(value).value_or(Decimal(-999)).toText(), expected) << value;
    for (const double value :
         {8e28, -1e300, std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(Decimal::fromDouble(value)) << value;
}

TEST(Decimal, BecomesTheNearestDouble) {
    EXPECT_EQ(of("0.1").toDouble(), 0.1);
    EXPECT_EQ(of("-1234.5").toDouble(), -1234.5);
    EXPECT_EQ(of("0.3333333333333333333333333333").toDouble(), 1.0 / 3);
    EXPECT_EQ(of(largest).toDouble(), 7.9228162514264337593543950335e28);
    EXPECT_EQ(of("9007199254740993").toDouble(), 9007199254740992.0); // half way: to even
    EXPECT_EQ(of("9007199254740993.0001").toDouble(), 9007199254740994.0);
    EXPECT_EQ(Decimal::fromParts(true, 0, 0, 3).toDouble(), 0.0);
}

TEST(Decimal, IsMadeOfIntegersAndParts) {
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(Decimal(least).toText(), "-9223372036854775808");
    EXPECT_EQ(Decimal::fromScaled(least, 4).toText(), "-922337203685477.5808");
    EXPECT_EQ(Decimal::fromScaled(-5, 28).toText(), "-0.0000000000000000000000000005");
    const Decimal parts = Decimal::fromParts(true, 0xFFFFFFFFU, ~std::uint64_t{0}, 0);
    EXPECT_EQ(parts.toText(), "-79228162514264337593543950335");
    EXPECT_TRUE(parts.negative());
    EXPECT_EQ(parts.high(), 0xFFFFFFFFU);
    EXPECT_EQ(parts.low(), ~std::uint64_t{0});
    EXPECT_EQ(of("1.50").scale(), 2U);
    EXPECT_THROW(Decimal::fromScaled(1, 29), Errore);
    EXPECT_THROW(Decimal::fromParts(false, 0, 1, 1000), Errore);
}

TEST(Decimal, RoundsHalfToEvenToFewerDecimals) {
    const std::vector<std::tuple<const char*, unsigned, const char*>> table = {
        {"2.5", 0, "2"},
        {"3.5", 0, "4"},
        {"-2.5", 0, "-2"},
        {"2.51", 0, "3"},
        {"9.99", 1, "10"},
        {"0.4", 0, "0"},
        {"0.5", 0, "0"},
        {"0.6", 0, "1"},
        {"0.06", 0, "0"},
        {"1.23456", 4, "1.2346"},
        {"1.23", 4, "1.23"},
        {"12", 0, "12"},
        {"0.0000000000000000000000000001", 0, "0"},
        {"7.9228162514264337593543950335", 0, "8"},
    };
    for (const auto& [text, decimals, expected] : table)
        EXPECT_EQ(of(text).rounded(decimals).toText(), expected) << text;
}

} // namespace
} // namespace norvel
