#include "platform/grid/model/EditedValue.h"

#include "platform/adodb/store/Segment.h"
#include "platform/grid/model/CellText.h"
#include "platform/runtime/Formats.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace norvel::grid {

using namespace adodb;

namespace {

[[noreturn]] void refuse(std::string_view text, const std::string& why) {
    throw Errore(13, "«" + std::string(text) + "» " + why);
}

struct IntegerType {
    DataTypeEnum type;
    std::int64_t least;
    std::uint64_t greatest;
};
template <class Integer>
constexpr IntegerType integerType(DataTypeEnum type) {
    return {type, static_cast<std::int64_t>(std::numeric_limits<Integer>::min()),
            static_cast<std::uint64_t>(std::numeric_limits<Integer>::max())};
}
constexpr IntegerType integerTypes[] = {
    integerType<std::int8_t>(adTinyInt),          integerType<std::int16_t>(adSmallInt),
    integerType<std::int32_t>(adInteger),         integerType<std::int64_t>(adBigInt),
    integerType<std::uint8_t>(adUnsignedTinyInt), integerType<std::uint16_t>(adUnsignedSmallInt),
    integerType<std::uint32_t>(adUnsignedInt),    integerType<std::uint64_t>(adUnsignedBigInt),
};

const IntegerType* integerTypeOf(DataTypeEnum type) {
    for (const IntegerType& each : integerTypes)
        if (each.type == type) return &each;
    return nullptr;
}

void requireNumber(std::string_view text) {
    if (!textToNumber(text)) refuse(text, "non è un numero.");
}

Variant integerOf(const IntegerType& type, std::string_view text) {
    requireNumber(text);
    const auto least = Decimal(type.least);
    const auto greatest = Decimal::fromParts(false, 0, type.greatest, 0);
    const std::string range = "è fuori dai limiti del campo, che contiene numeri interi da " +
                              least.toText() + " a " + greatest.toText() + ".";
    const double rough = *textToNumber(text);
    if (std::abs(rough) > 1e20) refuse(text, range);
    const Decimal number = Variant(text).toDecimal();
    if (number != number.rounded(0)) refuse(text, "non è un numero intero.");
    if (number < least || number > greatest) refuse(text, range);
    const std::uint64_t magnitude = number.rounded(0).low();
    if (type.type == adUnsignedBigInt) return Variant(magnitude);
    // Negated without a sign: the least number has no positive counterpart.
    const std::uint64_t bits = number.negative() ? 0 - magnitude : magnitude;
    return integerVariant(static_cast<std::int64_t>(bits), type.type);
}

Variant numberOf(DataTypeEnum type, std::string_view text) {
    requireNumber(text);
    try {
        const Variant typed{text};
        if (type == adSingle) return Variant(typed.toSingle());
        if (type == adDouble) return Variant(typed.toDouble());
        if (type != adCurrency) return Variant(typed.toDecimal());
        const Currency amount = typed.toCurrency();
        if (Decimal::fromScaled(amount.tenThousandths, 4) != typed.toDecimal())
            refuse(text, "ha più di quattro decimali.");
        return Variant(amount);
    } catch (const Errore& error) {
        if (error.numero() == 13) throw;
        refuse(text, "è troppo grande per il campo.");
    }
}

Variant booleanOf(std::string_view text) {
    for (const char* yes : {"true", "vero", "sì", "si"})
        if (equalsText(text, yes)) return Variant(true);
    for (const char* no : {"false", "falso", "no"})
        if (equalsText(text, no)) return Variant(false);
    const auto number = textToNumber(text);
    if (!number) refuse(text, "non è un valore vero o falso. Scrivere Sì o No.");
    return Variant(*number != 0);
}

Variant dateOf(DataTypeEnum type, std::string_view text) {
    const auto date = textToDate(text);
    const bool timeAlone = date && std::floor(date->days) == 0;
    if (type == adDBTime) {
        if (!timeAlone) refuse(text, "non è un'ora. Scrivere ore e minuti, per esempio 14.30.");
        return Variant(*date);
    }
    if (!date || (type == adDBDate && timeAlone))
        refuse(text, "non è una data. Scrivere giorno, mese e anno, per esempio 31/12/2026.");
    if (type == adDBDate && date->days != std::floor(date->days))
        refuse(text, "contiene un'ora: il campo contiene soltanto la data.");
    return Variant(*date);
}

bool isTextType(DataTypeEnum type) {
    switch (type) {
    case adBSTR:
    case adChar:
    case adWChar:
    case adVarChar:
    case adLongVarChar:
    case adVarWChar:
    case adLongVarWChar:
    case adVariant:
        return true;
    default:
        return false;
    }
}

} // namespace

std::string editText(const Variant& value) {
    return value.isText() ? toValidUtf8(value.text()) : cellText(value);
}

Variant editedValue(DataTypeEnum type, std::string_view typed) {
    if (!isEditableType(type))
        throw Errore(13, "I valori di questo campo non si possono modificare qui.");
    if (isTextType(type)) return Variant(typed);
    const std::string text = trimText(typed);
    if (text.empty()) return Variant::null();
    if (type == adGUID) return Variant(text);
    if (type == adBoolean) return booleanOf(text);
    if (isDateType(type)) return dateOf(type, text);
    if (const IntegerType* integer = integerTypeOf(type)) return integerOf(*integer, text);
    return numberOf(type, text);
}

bool isEditableType(DataTypeEnum type) {
    return isTextType(type) || type == adGUID || type == adBoolean || isDateType(type) ||
           isNumberType(type);
}

Variant checkValue(DataTypeEnum type, bool checked) {
    if (type == adBoolean) return Variant(checked);
    if (isTextType(type)) return Variant(checked ? "-1" : "0");
    const IntegerType* integer = integerTypeOf(type);
    const bool unsignedType = integer && integer->least == 0;
    return editedValue(type, !checked ? "0" : unsignedType ? "1" : "-1");
}

} // namespace norvel::grid
