#include "platform/adodb/ado/Variants.h"

#include "platform/adodb/ado/VariantArrays.h"
#include "platform/runtime/Errore.h"

#include <cstring>

namespace norvel::com {

ComBacked::~ComBacked() = default;

OwnedVariant OwnedVariant::missing() {
    OwnedVariant value;
    V_VT(&value.value_) = VT_ERROR;
    V_ERROR(&value.value_) = DISP_E_PARAMNOTFOUND;
    return value;
}

OwnedVariant OwnedVariant::reference(long& variable) {
    OwnedVariant value;
    V_VT(&value.value_) = VT_BYREF | VT_I4;
    V_I4REF(&value.value_) = &variable;
    return value;
}

namespace {

std::size_t sizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        throw erroreTipoNonCorrispondente();
    }
}

// What a reference points to, as a VARIANT of its own that owns nothing.
VARIANT followed(const VARIANT& value) {
    VARIANT out;
    VariantInit(&out);
    const VARTYPE type = V_VT(&value) & ~VT_BYREF;
    if (!V_BYREF(&value)) throw erroreTipoNonCorrispondente();
    if (type == VT_VARIANT) {
        out = *V_VARIANTREF(&value);
        if (V_VT(&out) == (VT_BYREF | VT_VARIANT)) throw erroreTipoNonCorrispondente();
        return out;
    }
    if (type == VT_DECIMAL) {
        V_DECIMAL(&out) = *V_DECIMALREF(&value); // its first word is the type's place
    } else if (type & VT_ARRAY) {
        V_ARRAY(&out) = *V_ARRAYREF(&value);
    } else {
        std::memcpy(&V_BYREF(&out), V_BYREF(&value), sizeOf(type));
    }
    V_VT(&out) = type;
    return out;
}

Decimal fromDecimal(const DECIMAL& value) {
    return Decimal::fromParts((value.sign & DECIMAL_NEG) != 0, value.Hi32, value.Lo64, value.scale);
}

DECIMAL toDecimal(const Decimal& value) {
    DECIMAL out{};
    out.scale = static_cast<BYTE>(value.scale());
    out.sign = value.negative() ? DECIMAL_NEG : 0;
    out.Hi32 = value.high();
    out.Lo64 = value.low();
    return out;
}

Variant fromObject(IUnknown* object, const ObjectFaces& faces) {
    if (!object) return ObjectRef();
    const auto held = ComPtr<IUnknown>::keep(object);
    if (faces.inward) {
        if (const auto dispatch = held.as<IDispatch>(IID_IDispatch))
            if (ObjectRef made = faces.inward(dispatch.get())) return made;
    }
    return ObjectRef(std::make_shared<ComObject>(held));
}

void putObject(OwnedVariant& out, const ObjectRef& object, const ObjectFaces& faces) {
    ComPtr<IDispatch> face;
    if (object) {
        if (faces.outward) face = faces.outward(object);
        if (const auto* backed = dynamic_cast<const ComBacked*>(object.get()); backed && !face)
            face = ComPtr<IDispatch>::keep(backed->dispatch());
        const auto* other = dynamic_cast<const ComObject*>(object.get());
        if (other && !face) {
            face = ComPtr<IUnknown>::keep(other->get()).as<IDispatch>(IID_IDispatch);
            if (!face) { // it has no more than the bare reference
                V_VT(&out.ref()) = VT_UNKNOWN;
                V_UNKNOWN(&out.ref()) = ComPtr<IUnknown>::keep(other->get()).detach();
                return;
            }
        }
        if (!face) throw erroreTipoNonCorrispondente();
    }
    V_VT(&out.ref()) = VT_DISPATCH;
    V_DISPATCH(&out.ref()) = face.detach();
}

} // namespace

Variant fromVariant(const VARIANT& value, const ObjectFaces& faces) {
    if (V_VT(&value) & VT_BYREF) return fromVariant(followed(value), faces);
    if (V_VT(&value) & VT_ARRAY) return fromArray(value, faces);
    switch (V_VT(&value)) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return Variant::null();
    case VT_I1:
        return static_cast<std::int8_t>(V_I1(&value));
    case VT_UI1:
        return std::uint8_t{V_UI1(&value)};
    case VT_I2:
        return std::int16_t{V_I2(&value)};
    case VT_UI2:
        return std::uint16_t{V_UI2(&value)};
    case VT_I4:
    case VT_INT:
        return static_cast<std::int32_t>(V_I4(&value));
    case VT_UI4:
    case VT_UINT:
        return static_cast<std::uint32_t>(V_UI4(&value));
    case VT_I8:
        return std::int64_t{V_I8(&value)};
    case VT_UI8:
        return std::uint64_t{V_UI8(&value)};
    case VT_R4:
        return V_R4(&value);
    case VT_R8:
        return V_R8(&value);
    case VT_CY:
        return Currency{V_CY(&value).int64};
    case VT_DATE:
        return Date{V_DATE(&value)};
    case VT_BSTR:
        return textOf(V_BSTR(&value));
    case VT_BOOL:
        return V_BOOL(&value) != VARIANT_FALSE;
    case VT_DECIMAL:
        return fromDecimal(V_DECIMAL(&value));
    case VT_ERROR:
        if (V_ERROR(&value) == DISP_E_PARAMNOTFOUND) return {};
        return static_cast<std::int32_t>(V_ERROR(&value));
    case VT_DISPATCH:
        return fromObject(V_DISPATCH(&value), faces);
    case VT_UNKNOWN:
        return fromObject(V_UNKNOWN(&value), faces);
    default:
        throw erroreTipoNonCorrispondente();
    }
}

OwnedVariant toVariant(const Variant& value, const ObjectFaces& faces) {
    OwnedVariant out;
    VARIANT& v = out.ref();
    V_VT(&v) = VT_EMPTY;
    switch (value.type()) {
    case VarType::Empty:
        return out;
    case VarType::I1:
        V_I1(&v) = static_cast<CHAR>(value.toI4());
        break;
    case VarType::UI1:
        V_UI1(&v) = static_cast<BYTE>(value.toI4());
        break;
    case VarType::I2:
        V_I2(&v) = value.toI2();
        break;
    case VarType::UI2:
        V_UI2(&v) = static_cast<USHORT>(value.toI4());
        break;
    case VarType::I4:
        V_I4(&v) = value.toI4();
        break;
    case VarType::UI4:
        V_UI4(&v) = static_cast<ULONG>(value.toI8());
        break;
    case VarType::I8:
        V_I8(&v) = value.toI8();
        break;
    case VarType::UI8:
        V_UI8(&v) = value.toDecimal().low();
        break;
    case VarType::R4:
        V_R4(&v) = value.toSingle();
        break;
    case VarType::R8:
        V_R8(&v) = value.toDouble();
        break;
    case VarType::Currency:
        V_CY(&v).int64 = value.toCurrency().tenThousandths;
        break;
    case VarType::Date:
        V_DATE(&v) = value.toDate().days;
        break;
    case VarType::Boolean:
        V_BOOL(&v) = value.toBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VarType::Decimal:
        V_DECIMAL(&v) = toDecimal(value.toDecimal());
        break;
    case VarType::String:
        V_BSTR(&v) = newBstr(value.text());
        break;
    case VarType::Object:
        putObject(out, value.object(), faces);
        return out;
    case VarType::Bytes:
    case VarType::Array:
        putArray(out, value, faces);
        return out;
    case VarType::Null:
        break;
    }
    V_VT(&v) = static_cast<VARTYPE>(value.type());
    return out;
}

} // namespace norvel::com
