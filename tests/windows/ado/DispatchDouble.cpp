#include "tests/windows/ado/DispatchDouble.h"

#include "platform/adodb/ado/Failures.h"

namespace norvel::test {

int DispatchDouble::alive = 0;

void DispatchDouble::holds(const std::wstring& name, Variant value) {
    values_[name] = std::move(value);
    on(name, [this, name](Call& call, com::OwnedVariant& result) {
        if (call.puts()) {
            values_[name] = call.argument(0);
        } else {
            result = com::toVariant(values_[name]);
        }
        return S_OK;
    });
}

HRESULT DispatchDouble::QueryInterface(REFIID iid, void** out) {
    const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch);
    *out = known ? static_cast<IDispatch*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG DispatchDouble::Release() {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT DispatchDouble::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT DispatchDouble::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return DISP_E_BADINDEX;
}

HRESULT DispatchDouble::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
    ++lookUps;
    if (!members_.contains(names[0])) return DISP_E_UNKNOWNNAME;
    names_.emplace_back(names[0]);
    ids[0] = static_cast<DISPID>(names_.size());
    return S_OK;
}

HRESULT DispatchDouble::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (member < 1 || member > static_cast<DISPID>(names_.size())) return DISP_E_MEMBERNOTFOUND;
    Call call{names_[static_cast<std::size_t>(member) - 1], kind, {}, {}, parameters, exception};
    for (UINT i = 0; i < parameters->cArgs; ++i) {
        call.arguments.push_back(com::fromVariant(call.rawArgument(i)));
        call.types.push_back(V_VT(&call.rawArgument(i)));
    }
    calls.push_back(call);
    calls.back().raw = nullptr;
    calls.back().exception = nullptr;
    com::OwnedVariant answer;
    try {
        const HRESULT code = members_.at(call.member)(call, answer);
        if (result) *result = answer.detach();
        return code;
    } catch (const Errore& error) {
        return com::raise(error, exception, "DispatchDouble");
    }
}

} // namespace norvel::test
