// What a Variant becomes when a host asks for another type.
#include "platform/runtime/Errore.h"
#include "platform/runtime/Formats.h"
#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace norvel {
namespace {

class Thing : public Object {};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr auto i8Max = std::numeric_limits<std::int64_t>::max();
constexpr auto i8Min = std::numeric_limits<std::int64_t>::min();
constexpr auto ui8Max = std::numeric_limits<std::uint64_t>::max();

// The number of the error that work raises; 0 if it raises none.
template <typename Work>
std::int64_t errorOf(Work work) {
    try {
        work();
    } catch (const Errore& errore) {
        return errore.numero();
    }
    return 0;
}

Variant decimal(const char* text) {
    return {*Decimal::fromText(text)};
}

TEST(VariantConversions, EmptyIsZeroFalseAndNoText) {
    const Variant empty;
    EXPECT_FALSE(empty.toBoolean());
    EXPECT_EQ(empty.toI2(), 0);
    EXPECT_EQ(empty.toI4(), 0);
    EXPECT_EQ(empty.toI8(), 0);
    EXPECT_EQ(empty.toSingle(), 0.0F);
    EXPECT_EQ(empty.toDouble(), 0.0);
    EXPECT_EQ(empty.toDecimal(), Decimal());
    EXPECT_EQ(empty.toCurrency(), Currency{0});
    EXPECT_EQ(empty.toDate(), Date{0});
    EXPECT_EQ(empty.toText(), "");
}

// Every conversion by name, for what all of them have in common.
struct Conversion {
    const char* name;
    void (*run)(const Variant&);
    bool toNumber = true;
};

const std::vector<Conversion>& conversions() {
    static const std::vector<Conversion> all = {
        {"toBoolean", [](const Variant& v) { v.toBoolean(); }},
        {"toI2", [](const Variant& v) { v.toI2(); }},
        {"toI4", [](const Variant& v) { v.toI4(); }},
        {"toI8", [](const Variant& v) { v.toI8(); }},
        {"toSingle", [](const Variant& v) { v.toSingle(); }},
        {"toDouble", [](const Variant& v) { v.toDouble(); }},
        {"toDecimal", [](const Variant& v) { v.toDecimal(); }},
        {"toCurrency", [](const Variant& v) { v.toCurrency(); }},
        {"toDate", [](const Variant& v) { v.toDate(); }},
        {"equalsNumber", [](const Variant& v) { equalsNumber(v, 0); }},
        {"toText", [](const Variant& v) { v.toText(); }, false},
    };
    return all;
}

TEST(VariantConversions, WhatHasNoReadingRaisesTheHostsError) {
    for (const Conversion& conversion : conversions()) {
        const auto error = [&](const Variant& value) {
            return errorOf([&] { conversion.run(value); });
        };
        EXPECT_EQ(error(Variant::null()), 94) << conversion.name;
        EXPECT_EQ(error(ObjectRef()), 91) << conversion.name;
        EXPECT_EQ(error(ObjectRef(std::make_shared<Thing>())), 13) << conversion.name;
        EXPECT_EQ(error(Bytes{49}), 13) << conversion.name;
        EXPECT_EQ(error(std::vector<Variant>{1}), 13) << conversion.name;
        for (const char* text : {"", "  ", "abc", "1a", "1,2,3", "--1", "#", "€"})
            EXPECT_EQ(error(text), conversion.toNumber ? 13 : 0) << conversion.name << text;
    }
}

TEST(VariantConversions, ErrorsCarryTheHostsWords) {
    const auto description = [](const Variant& value) {
        try {
            value.toI2();
        } catch (const Errore& errore) {
            return errore.descrizione();
        }
        return std::string();
    };
    EXPECT_EQ(description("abc"), "Tipo non corrispondente");
    EXPECT_EQ(description(32768), "Overflow");
    EXPECT_EQ(description(Variant::null()), "Utilizzo non valido di Null");
    EXPECT_EQ(description(ObjectRef()),
              "Variabile oggetto o variabile del blocco With non impostata");
}

TEST(VariantConversions, ToBoolean) {
    const std::vector<std::pair<Variant, bool>> table = {
        {false, false},
        {true, true},
        {0, false},
        {1, true},
        {-1, true},
        {2, true},
        {0.0, false},
        {-0.0, false},
        {0.001, true},
        {1e-300, true},
        {0.1F, true},
        {Currency{0}, false},
        {Currency{1}, true},
        {Date{0}, false},
        {Date{0.5}, true},
        {Decimal(), false},
        {decimal("0.0000000000000000000000000001"), true},
        {ui8Max, true},
        {i8Min, true},
        {"True", true},
        {"False", false},
        {"TRUE", true},
        {"false", false},
        {" True ", true},
        {"Vero", true},
        {"falso", false},
        {"0", false},
        {"1", true},
        {"-1", true},
        {"0,0", false},
        {"0,5", true},
        {" 2 ", true},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(value.toBoolean(), expected) << value.toText();
    EXPECT_EQ(errorOf([] { Variant("Si").toBoolean(); }), 13);
    EXPECT_EQ(errorOf([] { Variant("True False").toBoolean(); }), 13);
}

TEST(VariantConversions, ABooleanIsMinusOneOrZeroAsANumber) {
    EXPECT_EQ(Variant(true).toI2(), -1);
    EXPECT_EQ(Variant(true).toI8(), -1);
    EXPECT_EQ(Variant(true).toDouble(), -1.0);
    EXPECT_EQ(Variant(true).toDecimal(), Decimal(-1));
    EXPECT_EQ(Variant(true).toCurrency(), Currency{-10000});
    EXPECT_EQ(Variant(true).toDate(), Date{-1});
    EXPECT_EQ(Variant(false).toI4(), 0);
    EXPECT_EQ(Variant(true).toText(), "True");
    EXPECT_EQ(Variant(false).toText(), "False");
}

struct RoundingCase {
    Variant value;
    std::int64_t expected;
};

TEST(VariantConversions, WholeNumbersAreRoundedHalfToEven) {
    const std::vector<RoundingCase> table = {
        {0.5, 0},
        {1.5, 2},
        {2.5, 2},
        {3.5, 4},
        {-0.5, 0},
        {-1.5, -2},
        {-2.5, -2},
        {2.4999999, 2},
        {2.5000001, 3},
        {0.49999999999999994, 0},
        {-0.49999999999999994, 0},
        {4503599627370497.5, 4503599627370498},
        {2.5F, 2},
        {3.5F, 4},
        {"2,5", 2},
        {"3,5", 4},
        {"-2,5", -2},
        {"2,50000000000000000000000001", 3},
        {"2,4999999999999999999999999", 2},
        {Currency{25000}, 2},
        {Currency{35000}, 4},
        {Currency{-25000}, -2},
        {Currency{25001}, 3},
        {Date{2.5}, 2},
        {Date{3.5}, 4},
        {decimal("2.5"), 2},
        {decimal("-3.5"), -4},
        {decimal("2.5000000000000000000000000001"), 3},
    };
    for (const RoundingCase& row : table) {
        EXPECT_EQ(row.value.toI8(), row.expected) << row.value.toText();
        if (std::abs(row.expected) < 1000) {
            EXPECT_EQ(row.value.toI4(), row.expected) << row.value.toText();
            EXPECT_EQ(row.value.toI2(), row.expected) << row.value.toText();
        }
    }
}

TEST(VariantConversions, WholeNumbersKeepEveryDigit) {
    EXPECT_EQ(Variant(i8Max).toI8(), i8Max);
    EXPECT_EQ(Variant(i8Min).toI8(), i8Min);
    EXPECT_EQ(Variant("9223372036854775807").toI8(), i8Max);
    EXPECT_EQ(Variant("-9.223.372.036.854.775.808").toI8(), i8Min);
    EXPECT_EQ(decimal("9223372036854775807").toI8(), i8Max);
    EXPECT_EQ(decimal("-9223372036854775808").toI8(), i8Min);
    EXPECT_EQ(decimal("9223372036854775807.4999").toI8(), i8Max);
    EXPECT_EQ(Variant(std::uint64_t{9007199254740993}).toI8(), 9007199254740993);
    EXPECT_EQ(Variant(Currency{i8Max}).toI8(), 922337203685478);
}

TEST(VariantConversions, WhatDoesNotFitAWholeNumberOverflows) {
    for (const Variant& value :
         std::vector<Variant>{32768, -32769, 32767.5, "32768", Currency{327675000}, Date{32768},
                              decimal("32767.5"), std::uint64_t{40000}, 1e300, ui8Max})
        EXPECT_EQ(errorOf([&] { value.toI2(); }), 6) << value.toText();
    for (const Variant& value :
         std::vector<Variant>{std::int64_t{2147483648}, std::int64_t{-2147483649}, 2147483647.5,
                              std::uint32_t{2147483648}, "2147483648", "-1E10"})
        EXPECT_EQ(errorOf([&] { value.toI4(); }), 6) << value.toText();
    for (const Variant& value : std::vector<Variant>{
             ui8Max, 9223372036854775808.0, -9223372036854777856.0, infinity, -infinity,
             std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<float>::infinity(),
             "9223372036854775808", "-9223372036854775809", "1E400",
             decimal("9223372036854775807.5"), decimal("-79228162514264337593543950335")})
        EXPECT_EQ(errorOf([&] { value.toI8(); }), 6) << value.toText();
    EXPECT_EQ(Variant(32767.4).toI2(), 32767);
    EXPECT_EQ(Variant(-32768.5).toI2(), -32768);
    EXPECT_EQ(Variant(2147483647).toI4(), 2147483647);
    EXPECT_EQ(Variant(-9223372036854775808.0).toI8(), i8Min);
}

TEST(VariantConversions, ToDouble) {
    const std::vector<std::pair<Variant, double>> table = {
        {std::int8_t{-128}, -128.0},
        {std::uint8_t{255}, 255.0},
        {std::int16_t{-32768}, -32768.0},
        {std::uint16_t{65535}, 65535.0},
        {std::uint32_t{4294967295U}, 4294967295.0},
        {i8Max, 9223372036854775808.0},
        {ui8Max, 18446744073709551616.0},
        {0.1F, 0.10000000149011612},
        {0.1, 0.1},
        {infinity, infinity},
        {Currency{1}, 0.0001},
        {Currency{-123456}, -12.3456},
        {Currency{i8Min}, -922337203685477.5808},
        {Date{40000.25}, 40000.25},
        {decimal("0.1"), 0.1},
        {decimal("79228162514264337593543950335"), 7.9228162514264338e28},
        {"1234,5", 1234.5},
        {"1.234,5", 1234.5},
        {" -12,5 ", -12.5},
        {"1E3", 1000.0},
        {"€ 12,50", 12.5},
        {"1E-400", 0.0},
        {"7000", 7000.0},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(value.toDouble(), expected) << value.toText();
    for (const char* text : {"1E400", "-1E309", "1E99999999999999999999"})
        EXPECT_EQ(errorOf([&] { Variant(text).toDouble(); }), 6) << text;
}

TEST(VariantConversions, ToSingle) {
    EXPECT_EQ(Variant(0.1).toSingle(), 0.1F);
    EXPECT_EQ(Variant(0.1F).toSingle(), 0.1F);
    EXPECT_EQ(Variant("11355").toSingle(), 11355.0F);
    EXPECT_EQ(Variant(3.4028235e38).toSingle(), std::numeric_limits<float>::max());
    EXPECT_EQ(Variant(1e-50).toSingle(), 0.0F);
    EXPECT_EQ(errorOf([] { Variant(3.5e38).toSingle(); }), 6);
    EXPECT_EQ(errorOf([] { Variant(-1e300).toSingle(); }), 6);
}

TEST(VariantConversions, ToDecimal) {
    const std::vector<std::pair<Variant, const char*>> table = {
        {ui8Max, "18446744073709551615"},
        {i8Min, "-9223372036854775808"},
        {0.1, "0.1"},
        {0.1F, "0.1"},
        {1.0 / 3, "0.333333333333333"},
        {1e28, "10000000000000000000000000000"},
        {Currency{-123456}, "-12.3456"},
        {Date{40000.5}, "40000.5"},
        {"0,0000000000000000000000000001", "0.0000000000000000000000000001"},
        {"79.228.162.514.264.337.593.543.950.335", "79228162514264337593543950335"},
        {"1E-30", "0"},
        {"1.234,56 €", "1234.56"},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(value.toDecimal().toText(), expected) << value.toText();
    for (const Variant& value :
         std::vector<Variant>{1e29, infinity, -infinity, std::numeric_limits<float>::infinity(),
                              "79228162514264337593543950336", "1E29"})
        EXPECT_EQ(errorOf([&] { value.toDecimal(); }), 6) << value.toText();
}

TEST(VariantConversions, ToCurrency) {
    const std::vector<std::pair<Variant, std::int64_t>> table = {
        {1, 10000},
        {12.3456, 123456},
        {0.00005, 0},
        {0.00015, 2},
        {"12,34565", 123456},
        {"12,34575", 123458},
        {decimal("-922337203685477.5808"), i8Min},
        {decimal("922337203685477.5807"), i8Max},
        {Currency{7}, 7},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(value.toCurrency().tenThousandths, expected) << value.toText();
    for (const Variant& value : std::vector<Variant>{decimal("922337203685477.5808"), 1e15, i8Max})
        EXPECT_EQ(errorOf([&] { value.toCurrency(); }), 6) << value.toText();
}

TEST(VariantConversions, ToDate) {
    const Date may5 = *makeDate({2011, 5, 3});
    const std::vector<std::pair<Variant, Date>> table = {
        {may5, may5},
        {40666, may5},
        {40666.0, may5},
        {"40666", may5},
        {"03/05/2011", may5},
        {"2011-05-03", may5},
        {"12/31/2011", *makeDate({2011, 12, 31})},
        {decimal("40666.5"), Date{40666.5}},
        {Currency{406665000}, Date{40666.5}},
        {"40666,5", Date{40666.5}},
        {-657434, *makeDate({100, 1, 1})},
        {2958465, *makeDate({9999, 12, 31})},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(value.toDate(), expected) << value.toText();
    for (const Variant& value : std::vector<Variant>{-657435, 2958466, 1e300, infinity,
                                                     std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(errorOf([&] { value.toDate(); }), 6) << value.toText();
    EXPECT_EQ(errorOf([] { Variant("32/13/2011").toDate(); }), 13);
}

TEST(VariantConversions, ToText) {
    const std::vector<std::pair<Variant, const char*>> table = {
        {Variant(), ""},
        {std::int8_t{-128}, "-128"},
        {std::uint8_t{65}, "65"},
        {std::int16_t{-1}, "-1"},
        {std::uint16_t{65535}, "65535"},
        {2147483647, "2147483647"},
        {std::uint32_t{4294967295U}, "4294967295"},
        {i8Min, "-9223372036854775808"},
        {ui8Max, "18446744073709551615"},
        {0.5F, "0,5"},
        {0.1F, "0,1"},
        {1234.5, "1234,5"},
        {Currency{123400}, "12,34"},
        {Currency{-50000}, "-5"},
        {Currency{1}, "0,0001"},
        {decimal("12.50"), "12,5"},
        {decimal("-0.000"), "0"},
        {Date{40666}, "03/05/2011"},
        {Date{40666.604166666664}, "03/05/2011 14.30.00"},
        {Date{0.604166666666667}, "14.30.00"},
        {"già testo", "già testo"},
        {"", ""},
    };
    for (const auto& [value, expected] : table) {
        EXPECT_EQ(value.toText(), expected);
        EXPECT_EQ(value.toDisplay(), expected);
    }
}

TEST(VariantConversions, ToDisplayNeverFails) {
    EXPECT_EQ(Variant::null().toDisplay(), "");
    EXPECT_EQ(Variant(ObjectRef()).toDisplay(), "");
    EXPECT_EQ(Variant(ObjectRef(std::make_shared<Thing>())).toDisplay(), "");
    EXPECT_EQ(Variant(std::vector<Variant>{1}).toDisplay(), "");
    EXPECT_EQ(Variant(Bytes{1}).toDisplay(), "(dati binari)");
    EXPECT_EQ(Variant(infinity).toDisplay(), "1,#INF");
    EXPECT_EQ(Variant(Date{infinity}).toDisplay(), "1,#INF");
}

// The window's switches and measures are texts that the host set, compared with 0.
TEST(VariantConversions, SwitchesCompareWithZero) {
    const std::vector<std::pair<Variant, bool>> table = {
        {Variant(), true},   {"0", true},       {" 0 ", true},   {"0,00", true},
        {"-0", true},        {0, true},         {false, true},   {Currency{0}, true},
        {Decimal(), true},   {Date{0}, true},   {"0E5", true},   {"1", false},
        {"-1", false},       {"7000", false},   {"0,5", false},  {true, false},
        {Date{0.25}, false}, {"1E-300", false}, {1e-300, false}, {Currency{1}, false},
    };
    for (const auto& [value, expected] : table)
        EXPECT_EQ(equalsNumber(value, 0), expected) << value.toText();
    EXPECT_TRUE(equalsNumber("2", 2));
    EXPECT_TRUE(equalsNumber(true, -1));
    EXPECT_TRUE(equalsNumber("1.000", 1000));
    EXPECT_FALSE(equalsNumber("1,000", 1000));
    EXPECT_EQ(errorOf([] { equalsNumber("si", 0); }), 13);
    EXPECT_EQ(errorOf([] { equalsNumber("", 0); }), 13);
    EXPECT_EQ(errorOf([] { equalsNumber("True", 0); }), 13);
    EXPECT_EQ(errorOf([] { equalsNumber(Variant::null(), 0); }), 94);
}

} // namespace
} // namespace norvel
