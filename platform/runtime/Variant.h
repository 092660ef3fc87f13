// A value of any type an automation host passes or reads.
#pragma once

#include "platform/runtime/Api.h"
#include "platform/runtime/Decimal.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace norvel {

// Base of everything a Variant can hold by reference (recordsets, connections, commands).
class NR_API Object {
  public:
    virtual ~Object();
};

using ObjectRef = std::shared_ptr<Object>;

// The automation type codes of the values a Variant holds (VARENUM of OLE Automation).
enum class VarType : std::uint16_t {
    Empty = 0,
    Null = 1,
    I2 = 2,
    I4 = 3,
    R4 = 4,
    R8 = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Object = 9,
    Boolean = 11,
    Decimal = 14,
    I1 = 16,
    UI1 = 17,
    UI2 = 18,
    UI4 = 19,
    I8 = 20,
    UI8 = 21,
    Bytes = 0x2011, // array of UI1
    Array = 0x200C, // one-dimensional array of Variant
};

// Currency: a signed count of ten-thousandths.
struct Currency {
    std::int64_t tenThousandths = 0;
    bool operator==(const Currency&) const = default;
};

// Date: days since 30 December 1899, the time of day as the fraction (OLE Automation DATE).
struct Date {
    double days = 0;
    bool operator==(const Date&) const = default;
};

using Bytes = std::vector<std::uint8_t>;

// One value with its own type. Copies are cheap enough to pass by value; texts are UTF-8.
// Conversions raise Errore 13 ("Tipo non corrispondente") where the value has no reading of the
// asked type, 6 ("Overflow") where it does not fit, 94 ("Utilizzo non valido di Null") on Null, 91
// on the object Nothing.
class NR_API Variant {
  public:
    Variant() = default; // Empty
    static Variant null();
    Variant(bool value);
    Variant(std::int8_t value);
    Variant(std::uint8_t value);
    Variant(std::int16_t value);
    Variant(std::uint16_t value);
    Variant(std::int32_t value);
    Variant(std::uint32_t value);
    Variant(std::int64_t value);
    Variant(std::uint64_t value);
    Variant(float value);
    Variant(double value);
    Variant(Currency value);
    Variant(Date value);
    Variant(Decimal value);
    Variant(std::string value);
    Variant(std::string_view value);
    Variant(const char* value);
    Variant(ObjectRef value); // a null reference is the object Nothing
    Variant(Bytes value);
    Variant(std::vector<Variant> value);

    VarType type() const;
    bool isEmpty() const { return type() == VarType::Empty; }
    bool isNull() const { return type() == VarType::Null; }
    bool isText() const { return type() == VarType::String; }
    bool
    isNumeric() const; // a number type or Boolean or Currency or Decimal; not a text, not a Date
    bool isObject() const { return type() == VarType::Object; }

    // Direct access without conversion; asserts on another type.
    const std::string& text() const;
    const Bytes& bytes() const;
    const std::vector<Variant>& array() const;
    const ObjectRef& object() const;

    // Conversions as an automation host makes them: Empty is 0, "" and False; True is -1; a Date is
    // its number of days; numbers and dates become text, and text becomes numbers and dates, by
    // Italian conventions; whole numbers are rounded half to even. A text with no number in it, ""
    // included, has no reading as a number.
    bool toBoolean() const; // of a text: True, False, Vero, Falso in any case, or a number
    std::int16_t toI2() const;
    std::int32_t toI4() const;
    std::int64_t toI8() const; // rounds half to even
    float toSingle() const;
    double toDouble() const;
    Decimal toDecimal() const;
    Currency toCurrency() const;
    Date toDate() const; // of a text: a date, or a number of days
    std::string toText() const;

    // The value as a grid or a list shows it: as toText, but Null, objects and arrays are "" and
    // bytes "(dati binari)". Raises nothing.
    std::string toDisplay() const;

    // Same type and same value (texts byte for byte); the comparison of tests, not of hosts.
    bool operator==(const Variant& other) const;

  private:
    struct NullValue {
        bool operator==(const NullValue&) const = default;
    };
    using Value = std::variant<std::monostate, NullValue, bool, std::int8_t, std::uint8_t,
                               std::int16_t, std::uint16_t, std::int32_t, std::uint32_t,
                               std::int64_t, std::uint64_t, float, double, Currency, Date, Decimal,
                               std::string, ObjectRef, Bytes, std::vector<Variant>>;
    Value value_;
};

// How a host compares a value with a number: Empty is 0, a text is read as a number by Italian
// conventions. Raises 13 on a text that holds no number, 94 on Null.
NR_API bool equalsNumber(const Variant& value, double number);

} // namespace norvel
