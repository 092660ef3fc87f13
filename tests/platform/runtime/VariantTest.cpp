// What a Variant holds, and how two of them compare.
#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace norvel {
namespace {

class Thing : public Object {};

struct TypeCase {
    const char* name;
    Variant value;
    VarType type;
    bool numeric;
};

std::vector<TypeCase> everyType() {
    return {
        {"empty", Variant(), VarType::Empty, false},
        {"null", Variant::null(), VarType::Null, false},
        {"bool", Variant(true), VarType::Boolean, true},
        {"int8", Variant(std::int8_t{1}), VarType::I1, true},
        {"uint8", Variant(std::uint8_t{1}), VarType::UI1, true},
        {"int16", Variant(std::int16_t{1}), VarType::I2, true},
        {"uint16", Variant(std::uint16_t{1}), VarType::UI2, true},
        {"int32", Variant(std::int32_t{1}), VarType::I4, true},
        {"uint32", Variant(std::uint32_t{1}), VarType::UI4, true},
        {"int64", Variant(std::int64_t{1}), VarType::I8, true},
        {"uint64", Variant(std::uint64_t{1}), VarType::UI8, true},
        {"float", Variant(1.0F), VarType::R4, true},
        {"double", Variant(1.0), VarType::R8, true},
        {"currency", Variant(Currency{10000}), VarType::Currency, true},
        {"date", Variant(Date{1}), VarType::Date, false},
        {"decimal", Variant(Decimal(1)), VarType::Decimal, true},
        {"string", Variant(std::string("1")), VarType::String, false},
        {"string view", Variant(std::string_view("1")), VarType::String, false},
        {"literal", Variant("1"), VarType::String, false},
        {"object", Variant(std::make_shared<Thing>()), VarType::Object, false},
        {"nothing", Variant(ObjectRef()), VarType::Object, false},
        {"bytes", Variant(Bytes{1, 2}), VarType::Bytes, false},
        {"array", Variant(std::vector<Variant>{1, "b"}), VarType::Array, false},
    };
}

TEST(Variant, KeepsTheTypeItWasMadeOf) {
    for (const TypeCase& row : everyType()) {
        EXPECT_EQ(row.value.type(), row.type) << row.name;
        EXPECT_EQ(row.value.isNumeric(), row.numeric) << row.name;
        EXPECT_EQ(row.value.isEmpty(), row.type == VarType::Empty) << row.name;
        EXPECT_EQ(row.value.isNull(), row.type == VarType::Null) << row.name;
        EXPECT_EQ(row.value.isText(), row.type == VarType::String) << row.name;
        EXPECT_EQ(row.value.isObject(), row.type == VarType::Object) << row.name;
    }
}

TEST(Variant, EqualsOnlyTheSameValueOfTheSameType) {
    const std::vector<TypeCase> values = everyType();
    for (const TypeCase& a : values) {
        EXPECT_EQ(a.value, Variant(a.value)) << a.name;
        for (const TypeCase& b : values) {
            const bool bothText = a.type == VarType::String && b.type == VarType::String;
            if (&a != &b && !bothText && a.type != VarType::Object) {
                EXPECT_FALSE(a.value == b.value) << a.name << " and " << b.name;
            }
        }
    }
    EXPECT_FALSE(Variant(1.0) == Variant(2.0));
    EXPECT_FALSE(Variant("a") == Variant("A"));
    EXPECT_FALSE(Variant(std::make_shared<Thing>()) == Variant(std::make_shared<Thing>()));
    EXPECT_FALSE(Variant(std::make_shared<Thing>()) == Variant(ObjectRef()));
    EXPECT_EQ(Variant(Decimal::fromScaled(150, 2)), Variant(Decimal::fromScaled(15, 1)));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(Variant(nan) == Variant(nan));
}

TEST(Variant, GivesBackWhatItHolds) {
    const auto thing = std::make_shared<Thing>();
    EXPECT_EQ(Variant("città").text(), "città");
    EXPECT_EQ(Variant(Bytes{1, 0, 255}).bytes(), (Bytes{1, 0, 255}));
    EXPECT_EQ(Variant(std::vector<Variant>{1, Variant::null()}).array().size(), 2U);
    EXPECT_EQ(Variant(thing).object(), thing);
    EXPECT_EQ(Variant(ObjectRef()).object(), nullptr);
}

TEST(Variant, KeepsEveryByteOfAText) {
    const std::string withZero("a\0b", 3);
    EXPECT_EQ(Variant(withZero).text(), withZero);
    EXPECT_EQ(Variant(std::string_view(withZero)).text(), withZero);
    EXPECT_EQ(Variant(static_cast<const char*>(nullptr)), Variant(""));
}

TEST(Variant, ACopyDoesNotChangeWithTheOriginal) {
    Variant original("uno");
    const Variant copy = original;
    original = 2;
    EXPECT_EQ(copy, Variant("uno"));
    EXPECT_EQ(original, Variant(2));
}

TEST(Variant, HoldsItsObjectForAsLongAsItLives) {
    auto thing = std::make_shared<Thing>();
    const std::weak_ptr<Thing> watched = thing;
    {
        const Variant holder{ObjectRef(std::move(thing))};
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace norvel
