// VARIANT and Variant, both ways, for every type.
#include "platform/adodb/ado/Failures.h"
#include "platform/runtime/Errore.h"
#include "tests/windows/ado/DispatchDouble.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace norvel::com {
namespace {

using test::DispatchDouble;

VARIANT raw(VARTYPE type) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = type;
    return value;
}

std::int64_t errorOf(const auto& action) {
    try {
        action();
    } catch (const Errore& error) {
        return error.numero();
    }
    return 0;
}

// A value and the VARIANT that it is: in, out, and by reference.
void bothWays(const Variant& inside, const VARIANT& outside) {
    const VARTYPE type = V_VT(&outside);
    SCOPED_TRACE(testing::Message() << "VARTYPE " << type);
    EXPECT_EQ(fromVariant(outside), inside);
    EXPECT_EQ(fromVariant(outside).type(), inside.type());
    const OwnedVariant made = toVariant(inside);
    EXPECT_EQ(V_VT(&made.get()), type);
    EXPECT_EQ(fromVariant(made.get()), inside);

    VARIANT byReference = raw(VT_BYREF | VT_VARIANT);
    V_VARIANTREF(&byReference) = const_cast<VARIANT*>(&outside);
    EXPECT_EQ(fromVariant(byReference), inside);

    if (type == VT_EMPTY || type == VT_NULL) return;
    VARIANT typed = raw(static_cast<VARTYPE>(VT_BYREF | type));
    V_BYREF(&typed) = type == VT_DECIMAL
                          ? static_cast<void*>(const_cast<VARIANT*>(&outside))
                          : const_cast<void*>(static_cast<const void*>(&V_BYREF(&outside)));
    EXPECT_EQ(fromVariant(typed), inside);
}

TEST(Variants, EmptyAndNull) {
    bothWays(Variant(), raw(VT_EMPTY));
    bothWays(Variant::null(), raw(VT_NULL));
}

TEST(Variants, WholeNumbersOfEveryWidthAtTheirLimits) {
    const auto check = [](auto number, VARTYPE type) {
        VARIANT value = raw(type);
        std::memcpy(&V_BYREF(&value), &number, sizeof number);
        bothWays(Variant(number), value);
    };
    const auto limits = [&](auto zero, VARTYPE type) {
        using Number = decltype(zero);
        check(std::numeric_limits<Number>::min(), type);
        check(zero, type);
        check(std::numeric_limits<Number>::max(), type);
    };
    limits(std::int8_t{}, VT_I1);
    limits(std::uint8_t{}, VT_UI1);
    limits(std::int16_t{}, VT_I2);
    limits(std::uint16_t{}, VT_UI2);
    limits(std::int32_t{}, VT_I4);
    limits(std::uint32_t{}, VT_UI4);
    limits(std::int64_t{}, VT_I8);
    limits(std::uint64_t{}, VT_UI8);
}

TEST(Variants, MachineIntegersAreFourBytesWide) {
    VARIANT value = raw(VT_INT);
    V_INT(&value) = -7;
    EXPECT_EQ(fromVariant(value), Variant(std::int32_t{-7}));
    value = raw(VT_UINT);
    V_UINT(&value) = 0xFFFFFFFFU;
    EXPECT_EQ(fromVariant(value), Variant(std::uint32_t{0xFFFFFFFFU}));
}

TEST(Variants, FloatingPoint) {
    VARIANT value = raw(VT_R4);
    V_R4(&value) = -1.5F;
    bothWays(Variant(-1.5F), value);
    value = raw(VT_R8);
    V_R8(&value) = 0.1;
    bothWays(Variant(0.1), value);
}

TEST(Variants, BooleanTrueIsMinusOneOutside) {
    VARIANT value = raw(VT_BOOL);
    V_BOOL(&value) = VARIANT_TRUE;
    bothWays(Variant(true), value);
    const OwnedVariant made = toVariant(true);
    EXPECT_EQ(V_BOOL(&made.get()), VARIANT_TRUE);
    V_BOOL(&value) = VARIANT_FALSE;
    bothWays(Variant(false), value);
    V_BOOL(&value) = 1; // what careless programs pass
    EXPECT_EQ(fromVariant(value), Variant(true));
}

TEST(Variants, CurrencyAndDate) {
    VARIANT value = raw(VT_CY);
    V_CY(&value).int64 = -12345678;
    bothWays(Variant(Currency{-12345678}), value);
    value = raw(VT_DATE);
    V_DATE(&value) = 36526.75; // 1 January 2000, 18:00
    bothWays(Variant(Date{36526.75}), value);
}

TEST(Variants, DecimalWithAllItsBitsAndItsScale) {
    VARIANT value = raw(VT_EMPTY);
    V_DECIMAL(&value).Hi32 = 0xFFFFFFFFU;
    V_DECIMAL(&value).Lo64 = 0xFFFFFFFFFFFFFFFFU;
    V_DECIMAL(&value).scale = 28;
    V_DECIMAL(&value).sign = DECIMAL_NEG;
    V_VT(&value) = VT_DECIMAL;
    const Decimal inside = Decimal::fromParts(true, 0xFFFFFFFFU, 0xFFFFFFFFFFFFFFFFU, 28);
    bothWays(Variant(inside), value);
    const OwnedVariant made = toVariant(Decimal::fromScaled(150, 2));
    EXPECT_EQ(V_DECIMAL(&made.get()).scale, 2);
    EXPECT_EQ(V_DECIMAL(&made.get()).Lo64, 150U);
}

TEST(Variants, DecimalOfAnImpossibleScaleIsRefused) {
    VARIANT value = raw(VT_EMPTY);
    V_DECIMAL(&value).scale = 29;
    V_VT(&value) = VT_DECIMAL;
    EXPECT_EQ(errorOf([&] { fromVariant(value); }), 5);
}

TEST(Variants, TextOfAllOfUnicodeWithZerosInside) {
    const std::wstring wide = std::wstring(L"Caffè \x20AC \xD83D\xDE00 a", 12) + L'\0' + L"b";
    OwnedVariant value;
    V_VT(&value.ref()) = VT_BSTR;
    V_BSTR(&value.ref()) = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    const Variant inside = fromVariant(value.get());
    EXPECT_EQ(inside.text(), std::string("Caffè € 😀 a\0b", 19));
    bothWays(inside, value.get());
    const OwnedVariant made = toVariant(inside);
    EXPECT_EQ(std::wstring(V_BSTR(&made.get()), SysStringLen(V_BSTR(&made.get()))), wide);
}

TEST(Variants, ANullBstrIsTheEmptyText) {
    EXPECT_EQ(fromVariant(raw(VT_BSTR)), Variant(""));
}

TEST(Variants, HalfACharacterBecomesTheReplacementCharacter) {
    OwnedVariant value;
    V_VT(&value.ref()) = VT_BSTR;
    V_BSTR(&value.ref()) = SysAllocString(L"a\xD83D");
    EXPECT_EQ(fromVariant(value.get()).text(), "a\xEF\xBF\xBD");
}

TEST(Variants, BytesThatAreNotUtf8GoOutAsTheOldCodePage) {
    const OwnedVariant made = toVariant("Citt\xE0");
    EXPECT_STREQ(V_BSTR(&made.get()), L"Citt\u00E0");
}

TEST(Variants, AMissingArgumentIsEmptyAndAnotherErrorItsCode) {
    EXPECT_TRUE(fromVariant(OwnedVariant::missing().get()).isEmpty());
    VARIANT value = raw(VT_ERROR);
    V_ERROR(&value) = static_cast<SCODE>(0x80040E23);
    EXPECT_EQ(fromVariant(value), Variant(std::int32_t(0x80040E23)));
}

TEST(Variants, BytesAreAnArrayOfBytes) {
    for (const Bytes& bytes : {Bytes{1, 0, 255}, Bytes{}}) {
        const OwnedVariant made = toVariant(bytes);
        EXPECT_EQ(V_VT(&made.get()), VT_ARRAY | VT_UI1);
        bothWays(bytes, made.get());
    }
    EXPECT_EQ(fromVariant(raw(VT_ARRAY | VT_UI1)), Variant(Bytes())); // no array at all
}

TEST(Variants, ArraysOfVariants) {
    const std::vector<Variant> values{1, "due", Variant::null(), Bytes{3}, std::vector<Variant>{4}};
    const OwnedVariant made = toVariant(values);
    EXPECT_EQ(V_VT(&made.get()), VT_ARRAY | VT_VARIANT);
    bothWays(values, made.get());
}

TEST(Variants, ArraysOfOtherTypesAndOtherBounds) {
    SAFEARRAYBOUND bound{3, 5};
    OwnedVariant value;
    V_VT(&value.ref()) = VT_ARRAY | VT_I2;
    V_ARRAY(&value.ref()) = SafeArrayCreate(VT_I2, 1, &bound);
    for (LONG i = 5; i < 8; ++i) {
        SHORT number = static_cast<SHORT>(i * 10);
        ASSERT_EQ(SafeArrayPutElement(V_ARRAY(&value.get()), &i, &number), S_OK);
    }
    const std::vector<Variant> expected{std::int16_t{50}, std::int16_t{60}, std::int16_t{70}};
    EXPECT_EQ(fromVariant(value.get()), Variant(expected));
}

TEST(Variants, WhatNoVariantHoldsIsRefused) {
    EXPECT_EQ(errorOf([] { fromVariant(raw(VT_RECORD)); }), 13);
    EXPECT_EQ(errorOf([] { fromVariant(raw(VT_BYREF | VT_I4)); }), 13); // refers to nothing
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    OwnedVariant square;
    V_VT(&square.ref()) = VT_ARRAY | VT_I4;
    V_ARRAY(&square.ref()) = SafeArrayCreate(VT_I4, 2, bounds);
    EXPECT_EQ(errorOf([&] { fromVariant(square.get()); }), 13);
    struct Homeless : Object {};
    EXPECT_EQ(errorOf([] { toVariant(ObjectRef(std::make_shared<Homeless>())); }), 13);
}

TEST(Variants, RowsComeByFieldThenRow) {
    const std::vector<std::vector<Variant>> columns{{1, 2, 3}, {"a", Variant::null(), "c"}};
    const OwnedVariant rows = rowsArray(columns);
    LONG place[] = {1, 2};
    OwnedVariant one;
    ASSERT_EQ(SafeArrayGetElement(V_ARRAY(&rows.get()), place, one.put()), S_OK);
    EXPECT_EQ(fromVariant(one.get()), Variant("c"));
    EXPECT_EQ(columnsOf(rows.get()), columns);
    EXPECT_EQ(errorOf([] { columnsOf(raw(VT_EMPTY)); }), 13);
    EXPECT_EQ(errorOf([] { columnsOf(toVariant(std::vector<Variant>{1}).get()); }), 13);
}

TEST(Variants, NothingIsTheNullObject) {
    const OwnedVariant made = toVariant(ObjectRef());
    EXPECT_EQ(V_VT(&made.get()), VT_DISPATCH);
    EXPECT_EQ(V_DISPATCH(&made.get()), nullptr);
    EXPECT_EQ(fromVariant(made.get()).object(), nullptr);
}

TEST(Variants, AnObjectComesBackAsItselfAndIsLetGo) {
    const auto object = DispatchDouble::make();
    {
        OwnedVariant value;
        V_VT(&value.ref()) = VT_DISPATCH;
        V_DISPATCH(&value.ref()) = ComPtr<DispatchDouble>::keep(object.get()).detach();
        const Variant inside = fromVariant(value.get());
        EXPECT_EQ(object->references(), 3);
        const OwnedVariant back = toVariant(inside);
        EXPECT_EQ(V_DISPATCH(&back.get()), object.get());
    }
    EXPECT_EQ(object->references(), 1);
}

TEST(Variants, AnArrayThatCannotGoOutWholeLeaksNothing) {
    const auto object = DispatchDouble::make();
    struct Homeless : Object {};
    const Variant held(
        ObjectRef(std::make_shared<ComObject>(ComPtr<IUnknown>::keep(object.get()))));
    const std::vector<Variant> values{held, ObjectRef(std::make_shared<Homeless>())};
    EXPECT_EQ(errorOf([&] { toVariant(values); }), 13);
    EXPECT_EQ(object->references(), 2); // ours and that of held
}

} // namespace
} // namespace norvel::com
