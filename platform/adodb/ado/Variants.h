// VARIANT of OLE Automation and Variant of this system, both ways.
#pragma once

#include "platform/adodb/ado/Com.h"
#include "platform/runtime/Variant.h"

#include <vector>

namespace norvel::com {

// A VARIANT that is cleared when it goes.
class OwnedVariant {
  public:
    OwnedVariant() { VariantInit(&value_); }
    OwnedVariant(OwnedVariant&& other) noexcept : OwnedVariant() {
        std::swap(value_, other.value_);
    }
    OwnedVariant& operator=(OwnedVariant&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~OwnedVariant() { VariantClear(&value_); }

    const VARIANT& get() const { return value_; }
    VARIANT& ref() { return value_; }
    // For calls that fill one in; what was held is cleared.
    VARIANT* put() {
        VariantClear(&value_);
        return &value_;
    }
    // What was held, now the caller's to clear.
    VARIANT detach() {
        VARIANT out;
        VariantInit(&out);
        std::swap(out, value_);
        return out;
    }

    // The argument that is left out of a call.
    static OwnedVariant missing();
    // An argument that the call writes to; the variable must outlive the call.
    static OwnedVariant reference(long& variable);

  private:
    VARIANT value_;
};

// An automation object that is nothing this system knows more about.
class ComObject : public Object {
  public:
    explicit ComObject(ComPtr<IUnknown> object) : object_(std::move(object)) {}
    IUnknown* get() const { return object_.get(); }

  private:
    ComPtr<IUnknown> object_;
};

// The base of what stands for an automation object: what goes out to a host is the object itself.
class ComBacked {
  public:
    virtual ~ComBacked();
    virtual IDispatch* dispatch() const = 0; // no reference is added
};

// Makes what stands for a host's object inside, and the host's face of an object of this system. A
// program sets them once where it has more to offer than the default: ComObject inward, ComBacked
// and ComObject outward (no face: 13).
struct ObjectFaces {
    ObjectRef (*inward)(IDispatch* object) = nullptr;         // null result: the default
    ComPtr<IDispatch> (*outward)(const ObjectRef&) = nullptr; // null result: the default
};

// References are followed, a missing argument is Empty, another VT_ERROR its code (I4), VT_INT and
// VT_UINT are I4 and UI4, an array of UI1 is Bytes, another one-dimensional array an array of
// Variants. Raises 13 on what no Variant holds (records, arrays of more dimensions).
Variant fromVariant(const VARIANT& value, const ObjectFaces& faces = {});
// The same type, outward. Bytes are an array of UI1, an array is one of VARIANTs. Raises 13 on an
// object without an automation face.
OwnedVariant toVariant(const Variant& value, const ObjectFaces& faces = {});

// The two-dimensional array [field][row] of ADO's GetRows as columns. 13 on anything else.
std::vector<std::vector<Variant>> columnsOf(const VARIANT& rows, const ObjectFaces& faces = {});
// The same outward; every column must have as many values as the first.
OwnedVariant rowsArray(const std::vector<std::vector<Variant>>& columns,
                       const ObjectFaces& faces = {});

} // namespace norvel::com
