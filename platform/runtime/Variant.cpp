// What a Variant holds. VariantConversions.cpp has what it becomes.
#include "platform/runtime/Variant.h"

#include <array>
#include <cassert>
#include <utility>

namespace norvel {

Object::~Object() = default;

Variant Variant::null() {
    Variant result;
    result.value_ = NullValue{};
    return result;
}

Variant::Variant(bool value) : value_(value) {}
Variant::Variant(std::int8_t value) : value_(value) {}
Variant::Variant(std::uint8_t value) : value_(value) {}
Variant::Variant(std::int16_t value) : value_(value) {}
Variant::Variant(std::uint16_t value) : value_(value) {}
Variant::Variant(std::int32_t value) : value_(value) {}
Variant::Variant(std::uint32_t value) : value_(value) {}
Variant::Variant(std::int64_t value) : value_(value) {}
Variant::Variant(std::uint64_t value) : value_(value) {}
Variant::Variant(float value) : value_(value) {}
Variant::Variant(double value) : value_(value) {}
Variant::Variant(Currency value) : value_(value) {}
Variant::Variant(Date value) : value_(value) {}
Variant::Variant(Decimal value) : value_(value) {}
Variant::Variant(std::string value) : value_(std::move(value)) {}
Variant::Variant(std::string_view value) : value_(std::string(value)) {}
Variant::Variant(const char* value) : value_(std::string(value != nullptr ? value : "")) {}
Variant::Variant(ObjectRef value) : value_(std::move(value)) {}
Variant::Variant(Bytes value) : value_(std::move(value)) {}
Variant::Variant(std::vector<Variant> value) : value_(std::move(value)) {}

VarType Variant::type() const {
    // In the order of Value's alternatives.
    constexpr std::array<VarType, std::variant_size_v<Value>> types = {
        VarType::Empty,   VarType::Null,   VarType::Boolean, VarType::I1,       VarType::UI1,
        VarType::I2,      VarType::UI2,    VarType::I4,      VarType::UI4,      VarType::I8,
        VarType::UI8,     VarType::R4,     VarType::R8,      VarType::Currency, VarType::Date,
        VarType::Decimal, VarType::String, VarType::Object,  VarType::Bytes,    VarType::Array};
    return types[value_.index()];
}

bool Variant::isNumeric() const {
    switch (type()) {
    case VarType::Boolean:
    case VarType::I1:
    case VarType::UI1:
    case VarType::I2:
    case VarType::UI2:
    case VarType::I4:
    case VarType::UI4:
    case VarType::I8:
    case VarType::UI8:
    case VarType::R4:
    case VarType::R8:
    case VarType::Currency:
    case VarType::Decimal:
        return true;
    default:
        return false;
    }
}

const std::string& Variant::text() const {
    assert(isText());
    return *std::get_if<std::string>(&value_);
}

const Bytes& Variant::bytes() const {
    assert(type() == VarType::Bytes);
    return *std::get_if<Bytes>(&value_);
}

const std::vector<Variant>& Variant::array() const {
    assert(type() == VarType::Array);
    return *std::get_if<std::vector<Variant>>(&value_);
}

const ObjectRef& Variant::object() const {
    assert(isObject());
    return *std::get_if<ObjectRef>(&value_);
}

bool Variant::operator==(const Variant& other) const {
    return value_ == other.value_;
}

} // namespace norvel
