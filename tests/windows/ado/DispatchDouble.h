// An automation object whose members a test writes, and whose references it counts.
#pragma once

#include "platform/adodb/ado/Variants.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace norvel::test {

// One call as the object sees it.
struct Call {
    std::wstring member;
    WORD kind = 0;                   // DISPATCH_METHOD, DISPATCH_PROPERTYGET…
    std::vector<Variant> arguments;  // in the order of a declaration; what was left out is Empty
    std::vector<VARTYPE> types;      // of the arguments
    const DISPPARAMS* raw = nullptr; // during the call, as the next
    EXCEPINFO* exception = nullptr;
    bool puts() const { return (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0; }
    const VARIANT& rawArgument(UINT index) const { return raw->rgvarg[raw->cArgs - 1 - index]; }
    Variant argument(std::size_t index) const {
        return index < arguments.size() ? arguments[index] : Variant();
    }
};

// Lives on the heap, counted: make() hands out the first reference. alive counts all of them.
class DispatchDouble : public IDispatch {
  public:
    // Answers with a value, or a failure; an Errore that it throws arrives as EXCEPINFO.
    using Member = std::function<HRESULT(Call&, com::OwnedVariant& result)>;

    DispatchDouble() { ++alive; }
    static com::ComPtr<DispatchDouble> make() {
        return com::ComPtr<DispatchDouble>::adopt(new DispatchDouble);
    }
    static int alive;

    void on(const std::wstring& name, Member member) { members_[name] = std::move(member); }
    // A property that holds a value.
    void holds(const std::wstring& name, Variant value);
    const Variant& held(const std::wstring& name) { return values_[name]; }

    long references() const { return references_; }
    int lookUps = 0; // GetIDsOfNames calls
    std::vector<Call> calls;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

  protected:
    virtual ~DispatchDouble() { --alive; }

  private:
    long references_ = 1;
    std::map<std::wstring, Member> members_;
    std::map<std::wstring, Variant> values_;
    std::vector<std::wstring> names_; // by identifier
};

} // namespace norvel::test
