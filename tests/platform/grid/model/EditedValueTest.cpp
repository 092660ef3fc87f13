#include "platform/grid/model/EditedValue.h"

#include "platform/runtime/Formats.h"

#include <gtest/gtest.h>

namespace norvel::grid {
namespace {

using namespace adodb;

std::string refusal(DataTypeEnum type, std::string_view text) {
    try {
        const Variant value = editedValue(type, text);
        ADD_FAILURE() << text << " became " << value.toDisplay();
        return {};
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 13);
        return error.descrizione();
    }
}

TEST(EditedValue, WholeNumbersKeepEveryDigitAndTheirType) {
    EXPECT_EQ(editedValue(adInteger, "1.234"), Variant(std::int32_t{1234}));
    EXPECT_EQ(editedValue(adInteger, " -7 "), Variant(std::int32_t{-7}));
    EXPECT_EQ(editedValue(adInteger, "12,0"), Variant(std::int32_t{12}));
    EXPECT_EQ(editedValue(adSmallInt, "-32768"), Variant(std::int16_t{-32768}));
    EXPECT_EQ(editedValue(adUnsignedTinyInt, "255"), Variant(std::uint8_t{255}));
    EXPECT_EQ(editedValue(adBigInt, "9007199254740993"), Variant(std::int64_t{9007199254740993}));
    EXPECT_EQ(editedValue(adBigInt, "-9223372036854775808"),
              Variant(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(editedValue(adUnsignedBigInt, "18446744073709551615"),
              Variant(std::numeric_limits<std::uint64_t>::max()));
}

TEST(EditedValue, WhatIsNoWholeNumberOfTheFieldSaysWhy) {
    EXPECT_EQ(refusal(adInteger, "dodici"), "«dodici» non è un numero.");
    EXPECT_EQ(refusal(adInteger, "1.5"), "«1.5» non è un numero.");
    EXPECT_EQ(refusal(adInteger, "12,5"), "«12,5» non è un numero intero.");
    EXPECT_EQ(refusal(adSmallInt, "70000"), "«70000» è fuori dai limiti del campo, che contiene "
                                            "numeri interi da -32768 a 32767.");
    EXPECT_EQ(refusal(adUnsignedTinyInt, "-1"), "«-1» è fuori dai limiti del campo, che contiene "
                                                "numeri interi da 0 a 255.");
    EXPECT_NE(refusal(adBigInt, "9223372036854775808").find("fuori dai limiti"), std::string::npos);
    EXPECT_NE(refusal(adInteger, "1E300").find("fuori dai limiti"), std::string::npos);
}

TEST(EditedValue, NumbersAreReadWithADecimalComma) {
    EXPECT_EQ(editedValue(adDouble, "1.234,5"), Variant(1234.5));
    EXPECT_EQ(editedValue(adSingle, "0,5"), Variant(0.5F));
    EXPECT_EQ(editedValue(adCurrency, "€ 12,3456"), Variant(Currency{123456}));
    EXPECT_EQ(editedValue(adNumeric, "0,1").toDecimal(), Decimal::fromScaled(1, 1));
    EXPECT_EQ(refusal(adDouble, "12,3,4"), "«12,3,4» non è un numero.");
    EXPECT_EQ(refusal(adCurrency, "0,00001"), "«0,00001» ha più di quattro decimali.");
    EXPECT_EQ(refusal(adSingle, "1E200"), "«1E200» è troppo grande per il campo.");
    EXPECT_EQ(refusal(adCurrency, "1E20"), "«1E20» è troppo grande per il campo.");
}

TEST(EditedValue, DatesAreReadDayFirst) {
    const auto day = [](int y, int m, int d) { return Variant(*makeDate({y, m, d})); };
    EXPECT_EQ(editedValue(adDate, "03/05/2011"), day(2011, 5, 3));
    EXPECT_EQ(editedValue(adDBDate, "3-5-11"), day(2011, 5, 3));
    EXPECT_EQ(editedValue(adDBTimeStamp, "03/05/2011 14.30"),
              Variant(*makeDate({2011, 5, 3}, {14, 30, 0})));
    EXPECT_EQ(editedValue(adDBTime, "14.30").toDate(), Date{14.5 / 24});
    EXPECT_EQ(refusal(adDate, "31/02/2024"),
              "«31/02/2024» non è una data. Scrivere giorno, mese e anno, per esempio 31/12/2026.");
    EXPECT_EQ(refusal(adDate, "40000").find("«40000» non è una data"), 0U);
    EXPECT_EQ(refusal(adDBDate, "14.30").find("«14.30» non è una data"), 0U);
    EXPECT_EQ(refusal(adDBDate, "03/05/2011 14.30"),
              "«03/05/2011 14.30» contiene un'ora: il campo contiene soltanto la data.");
    EXPECT_EQ(refusal(adDBTime, "03/05/2011"),
              "«03/05/2011» non è un'ora. Scrivere ore e minuti, per esempio 14.30.");
}

TEST(EditedValue, BooleansAreReadInItalianToo) {
    for (const char* text : {"True", "vero", "Sì", "si", "-1", "1"})
        EXPECT_EQ(editedValue(adBoolean, text), Variant(true)) << text;
    for (const char* text : {"False", "FALSO", "no", "0"})
        EXPECT_EQ(editedValue(adBoolean, text), Variant(false)) << text;
    EXPECT_EQ(refusal(adBoolean, "forse"),
              "«forse» non è un valore vero o falso. Scrivere Sì o No.");
}

TEST(EditedValue, NothingTypedIsNullButOfATextWhichIsEmpty) {
    for (const DataTypeEnum type : {adInteger, adDouble, adCurrency, adDate, adBoolean, adGUID})
        for (const char* text : {"", "  "})
            EXPECT_TRUE(editedValue(type, text).isNull()) << type;
    EXPECT_EQ(editedValue(adVarWChar, ""), Variant(""));
    EXPECT_EQ(editedValue(adLongVarWChar, "  a "), Variant("  a ")) << "blanks are the operator's";
}

TEST(EditedValue, BinaryDataAndObjectsCannotBeTyped) {
    for (const DataTypeEnum type : {adVarBinary, adLongVarBinary, adIDispatch, adChapter}) {
        EXPECT_FALSE(isEditableType(type));
        EXPECT_EQ(refusal(type, "x"), "I valori di questo campo non si possono modificare qui.");
    }
    EXPECT_TRUE(isEditableType(adVarWChar));
}

TEST(EditedValue, WhatTheEditorShowsReadsBackAsTheSameValue) {
    const std::pair<DataTypeEnum, Variant> values[] = {
        {adInteger, Variant(std::int32_t{-1234567})},
        {adBigInt, Variant(std::int64_t{9007199254740993})},
        {adDouble, Variant(1234.5)},
        {adCurrency, Variant(Currency{-123456789})},
        {adBoolean, Variant(true)},
        {adDate, Variant(*makeDate({1969, 2, 28}))},
        {adDBTimeStamp, Variant(*makeDate({2024, 2, 29}, {23, 59, 58}))},
        {adVarWChar, Variant(std::string(3000, 'x') + "\r\nseconda riga")},
        {adInteger, Variant::null()},
    };
    for (const auto& [type, value] : values)
        EXPECT_EQ(editedValue(type, editText(value)), value) << editText(value);
}

TEST(EditedValue, ACheckBoxHoldsMinusOneAndZeroOrABoolean) {
    EXPECT_EQ(checkValue(adBoolean, true), Variant(true));
    EXPECT_EQ(checkValue(adInteger, true), Variant(std::int32_t{-1}));
    EXPECT_EQ(checkValue(adSmallInt, false), Variant(std::int16_t{0}));
    EXPECT_EQ(checkValue(adVarWChar, true), Variant("-1"));
    EXPECT_EQ(checkValue(adUnsignedTinyInt, true), Variant(std::uint8_t{1}));
}

} // namespace
} // namespace norvel::grid
