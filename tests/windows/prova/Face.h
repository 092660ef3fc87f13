// Automation faces of this project's own recordsets, for tests: ADO's member names and dispatch
// identifiers (mingw-w64's adogpool.h) over the objects of platform/adodb.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/ado/Variants.h"

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace norvel::prova {

// What a call brings, in the order of a declaration. Missing arguments are Empty.
class Arguments {
  public:
    Arguments(const DISPPARAMS& parameters, WORD kind);
    bool puts() const { return puts_; }
    // How many there are, the new value of a property not counted.
    std::size_t count() const { return count_; }
    Variant operator[](std::size_t index) const;
    int number(std::size_t index, int missing) const;
    Variant newValue() const;

  private:
    const DISPPARAMS& parameters_;
    bool puts_;
    std::size_t count_;
};

// A member: one function for all its kinds; it asks the arguments whether something is put.
template <class Owner>
struct Member {
    const wchar_t* name;
    DISPID id;
    com::OwnedVariant (*run)(Owner&, const Arguments&);
};

// An object inside as its face: the same one as long as somebody holds it, null for objects without
// one. And what a face stands for.
com::ComPtr<IDispatch> faceOf(const ObjectRef& object);
ObjectRef behind(IDispatch* face);
// Conversions with these faces.
Variant inward(const VARIANT& value);
com::OwnedVariant outward(const Variant& value);
com::OwnedVariant outward(IDispatch* object); // one reference more

// How many objects hosts hold.
long liveFaces();

// IDispatch over a table of members.
class Face : public IDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

    // What it stands for; null for what is only a part of something.
    virtual ObjectRef object() const { return nullptr; }

  protected:
    Face();
    virtual ~Face();
    virtual const DISPID* identifier(const wchar_t* name) const = 0;
    // Null where the identifier is not known.
    virtual bool run(DISPID id, const Arguments& arguments, com::OwnedVariant& result) = 0;

  private:
    long references_ = 1;
};

// The two look-ups over a table.
template <class Owner, std::size_t Size>
const DISPID* findName(const Member<Owner> (&table)[Size], const wchar_t* name) {
    for (const auto& row : table)
        if (_wcsicmp(row.name, name) == 0) return &row.id;
    return nullptr;
}
template <class Owner, std::size_t Size>
bool runMember(const Member<Owner> (&table)[Size], Owner& owner, DISPID id,
               const Arguments& arguments, com::OwnedVariant& result) {
    for (const auto& row : table) {
        if (row.id != id) continue;
        result = row.run(owner, arguments);
        return true;
    }
    return false;
}

// A reference to a new face, owned by the caller.
template <class Made, class... Arguments_>
com::ComPtr<Made> makeFace(Arguments_&&... arguments) {
    return com::ComPtr<Made>::adopt(new Made(std::forward<Arguments_>(arguments)...));
}

} // namespace norvel::prova
