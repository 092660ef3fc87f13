#include "platform/adodb/ado/VariantArrays.h"

#include "platform/runtime/Errore.h"

#include <cstring>

namespace norvel::com {

namespace {

// The bytes of an array, for as long as this lives.
class ArrayAccess {
  public:
    explicit ArrayAccess(SAFEARRAY* array) : array_(array) {
        if (FAILED(SafeArrayAccessData(array_, &data_))) throw erroreTipoNonCorrispondente();
    }
    ArrayAccess(const ArrayAccess&) = delete;
    ArrayAccess& operator=(const ArrayAccess&) = delete;
    ~ArrayAccess() { SafeArrayUnaccessData(array_); }
    std::uint8_t* bytes() const { return static_cast<std::uint8_t*>(data_); }
    VARIANT* variants() const { return static_cast<VARIANT*>(data_); }

  private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

std::size_t length(SAFEARRAY* array, UINT dimension) {
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) ||
        FAILED(SafeArrayGetUBound(array, dimension, &upper)))
        throw erroreTipoNonCorrispondente();
    return upper < lower ? 0 : static_cast<std::size_t>(upper) - lower + 1;
}

// One element that lies in an array of a type, as a VARIANT that refers to it.
Variant element(std::uint8_t* place, VARTYPE type, const ObjectFaces& faces) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = static_cast<VARTYPE>(VT_BYREF | type);
    V_BYREF(&value) = place;
    return fromVariant(value, faces);
}

SAFEARRAY* newArray(VARTYPE type, SAFEARRAYBOUND* bounds, UINT dimensions) {
    SAFEARRAY* array = SafeArrayCreate(type, dimensions, bounds);
    if (!array) throw Errore(7, "Memoria esaurita");
    return array;
}

// The array belongs to the VARIANT at once, so that a failure on the way frees it.
SAFEARRAY* placeArray(OwnedVariant& out, VARTYPE type, SAFEARRAYBOUND* bounds, UINT dimensions) {
    SAFEARRAY* array = newArray(type, bounds, dimensions);
    V_VT(&out.ref()) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&out.ref()) = array;
    return array;
}

} // namespace

Variant fromArray(const VARIANT& value, const ObjectFaces& faces) {
    SAFEARRAY* array = V_ARRAY(&value);
    const VARTYPE type = V_VT(&value) & ~(VT_ARRAY | VT_BYREF);
    if (!array) return type == VT_UI1 ? Variant(Bytes()) : Variant(std::vector<Variant>());
    if (SafeArrayGetDim(array) != 1) throw erroreTipoNonCorrispondente();
    const std::size_t count = length(array, 1);
    const ArrayAccess access(array);
    if (type == VT_UI1) return Bytes(access.bytes(), access.bytes() + count);
    const std::size_t step = SafeArrayGetElemsize(array);
    std::vector<Variant> values;
    values.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(element(access.bytes() + i * step, type, faces));
    return values;
}

void putArray(OwnedVariant& out, const Variant& value, const ObjectFaces& faces) {
    const bool raw = value.type() == VarType::Bytes;
    const std::size_t count = raw ? value.bytes().size() : value.array().size();
    SAFEARRAYBOUND bound{static_cast<ULONG>(count), 0};
    SAFEARRAY* array = placeArray(out, raw ? VT_UI1 : VT_VARIANT, &bound, 1);
    const ArrayAccess access(array);
    if (raw) {
        if (count) std::memcpy(access.bytes(), value.bytes().data(), count);
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        access.variants()[i] = toVariant(value.array()[i], faces).detach();
}

std::vector<std::vector<Variant>> columnsOf(const VARIANT& rows, const ObjectFaces& faces) {
    if (V_VT(&rows) != (VT_ARRAY | VT_VARIANT) || !V_ARRAY(&rows) ||
        SafeArrayGetDim(V_ARRAY(&rows)) != 2)
        throw erroreTipoNonCorrispondente();
    SAFEARRAY* array = V_ARRAY(&rows);
    const std::size_t fields = length(array, 1);
    const std::size_t count = length(array, 2);
    const ArrayAccess access(array);
    std::vector<std::vector<Variant>> columns(fields);
    for (auto& column : columns)
        column.reserve(count);
    for (std::size_t row = 0; row < count; ++row) // the first index changes fastest
        for (std::size_t field = 0; field < fields; ++field)
            columns[field].push_back(fromVariant(access.variants()[row * fields + field], faces));
    return columns;
}

OwnedVariant rowsArray(const std::vector<std::vector<Variant>>& columns, const ObjectFaces& faces) {
    const std::size_t count = columns.empty() ? 0 : columns.front().size();
    SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(columns.size()), 0},
                               {static_cast<ULONG>(count), 0}};
    OwnedVariant out;
    SAFEARRAY* array = placeArray(out, VT_VARIANT, bounds, 2);
    const ArrayAccess access(array);
    for (std::size_t field = 0; field < columns.size(); ++field)
        for (std::size_t row = 0; row < count; ++row)
            access.variants()[row * columns.size() + field] =
                toVariant(columns[field].at(row), faces).detach();
    return out;
}

} // namespace norvel::com
