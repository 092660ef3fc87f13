#include "platform/adodb/ado/Dispatch.h"

#include "platform/adodb/ado/Failures.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace norvel::com {

DispatchObject DispatchObject::in(const VARIANT& value) {
    const VARIANT* place = &value;
    if (V_VT(place) == (VT_BYREF | VT_VARIANT)) place = V_VARIANTREF(place);
    if (place == nullptr) throw erroreTipoNonCorrispondente();
    IUnknown* object = nullptr;
    switch (V_VT(place)) {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_DISPATCH:
    case VT_UNKNOWN:
        object = V_UNKNOWN(place);
        break;
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN:
        if (V_BYREF(place) == nullptr) throw erroreTipoNonCorrispondente();
        object = *V_UNKNOWNREF(place);
        break;
    default:
        throw erroreTipoNonCorrispondente();
    }
    if (!object) return {};
    auto dispatch = ComPtr<IUnknown>::keep(object).as<IDispatch>(IID_IDispatch);
    if (!dispatch) throw erroreTipoNonCorrispondente();
    return DispatchObject(std::move(dispatch));
}

DISPID DispatchObject::identifier(MemberName name) const {
    const auto same = [&](const Known& row) {
        return row.name == name.text() || std::wcscmp(row.name, name.text()) == 0;
    };
    if (const auto found = std::ranges::find_if(known_, same); found != known_.end())
        return found->id;
    LPOLESTR asked = const_cast<LPOLESTR>(name.text());
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) throw failure(result, name.text());
    known_.push_back({name.text(), id});
    return id;
}

OwnedVariant DispatchObject::invoke(MemberName name, WORD kind,
                                    std::vector<VARIANTARG>& arguments) const {
    if (!object_) throw erroreOggettoNonImpostato();
    // The object may let go of everything but itself while it is called.
    const ComPtr<IDispatch> held = object_;
    const DISPID id = identifier(name);
    DISPID valuePlace = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    const bool puts = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (puts) {
        parameters.rgdispidNamedArgs = &valuePlace;
        parameters.cNamedArgs = 1;
    }
    OwnedVariant result;
    EXCEPINFO exception{};
    UINT wrong = 0;
    SetErrorInfo(0, nullptr); // what an earlier call left is not this one's
    const HRESULT code = held->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                      puts ? nullptr : result.put(), &exception, &wrong);
    if (FAILED(code)) throw failure(code, name.text(), &exception);
    return result;
}

// IDispatch takes its arguments last first. They are lent, so a bitwise copy does.
OwnedVariant DispatchObject::invoke(MemberName name, WORD kind, Arguments arguments) const {
    std::vector<VARIANTARG> lent;
    for (const OwnedVariant* argument = arguments.end(); argument != arguments.begin();)
        lent.push_back((--argument)->get());
    return invoke(name, kind, lent);
}

OwnedVariant DispatchObject::get(MemberName name, Arguments arguments) const {
    return invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, arguments);
}

void DispatchObject::put(MemberName name, const OwnedVariant& value) const {
    std::vector<VARIANTARG> lent{value.get()};
    invoke(name, DISPATCH_PROPERTYPUT, lent);
}

void DispatchObject::putRef(MemberName name, const OwnedVariant& object) const {
    std::vector<VARIANTARG> lent{object.get()};
    invoke(name, DISPATCH_PROPERTYPUTREF, lent);
}

OwnedVariant DispatchObject::call(MemberName name, Arguments arguments) const {
    return invoke(name, DISPATCH_METHOD, arguments);
}

bool DispatchObject::flag(MemberName name) const {
    return fromVariant(get(name).get()).toBoolean();
}
std::int64_t DispatchObject::number(MemberName name) const {
    return fromVariant(get(name).get()).toI8();
}
std::string DispatchObject::text(MemberName name) const {
    return fromVariant(get(name).get()).toText();
}
DispatchObject DispatchObject::object(MemberName name, Arguments arguments) const {
    return in(get(name, arguments).get());
}
void DispatchObject::putNumber(MemberName name, std::int64_t value) const {
    put(name, numberArgument(value));
}
void DispatchObject::putText(MemberName name, const std::string& value) const {
    put(name, textArgument(value));
}

OwnedVariant numberArgument(std::int64_t value) {
    if (value >= std::numeric_limits<std::int32_t>::min() &&
        value <= std::numeric_limits<std::int32_t>::max())
        return toVariant(static_cast<std::int32_t>(value));
    return toVariant(value);
}

OwnedVariant textArgument(std::string_view value) {
    return toVariant(value);
}

OwnedVariant optionalArgument(const Variant& value) {
    return value.isEmpty() ? OwnedVariant::missing() : toVariant(value);
}

} // namespace norvel::com
