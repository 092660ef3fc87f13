// Calls on an automation object by member name.
#pragma once

#include "platform/adodb/ado/Variants.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace norvel::com {

// A member's name: a literal, so that it lives for ever.
class MemberName {
  public:
    template <std::size_t Size>
    consteval MemberName(const wchar_t (&literal)[Size]) : text_(literal) {}
    const wchar_t* text() const { return text_; }

  private:
    const wchar_t* text_;
};

// A counted reference to an automation object. Identifiers are asked of the object once (by
// GetIDsOfNames) and kept. Whatever a call fails with becomes Errore (Failures.h); a call on no
// object raises 91.
class DispatchObject {
  public:
    DispatchObject() = default;
    explicit DispatchObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}
    // The object in a VARIANT; none for Nothing, Empty and Null. 13 on anything else.
    static DispatchObject in(const VARIANT& value);

    IDispatch* get() const { return object_.get(); }
    explicit operator bool() const { return static_cast<bool>(object_); }

    using Arguments = std::initializer_list<OwnedVariant>;
    OwnedVariant get(MemberName name, Arguments arguments = {}) const;
    void put(MemberName name, const OwnedVariant& value) const;
    void putRef(MemberName name, const OwnedVariant& object) const;
    OwnedVariant call(MemberName name, Arguments arguments = {}) const;

    // Properties of simple types, coerced as automation coerces.
    bool flag(MemberName name) const;
    std::int64_t number(MemberName name) const;
    std::string text(MemberName name) const;
    DispatchObject object(MemberName name, Arguments arguments = {}) const;
    void putNumber(MemberName name, std::int64_t value) const;
    void putText(MemberName name, const std::string& value) const;

  private:
    DISPID identifier(MemberName name) const;
    OwnedVariant invoke(MemberName name, WORD kind, std::vector<VARIANTARG>& arguments) const;
    OwnedVariant invoke(MemberName name, WORD kind, Arguments arguments) const;

    ComPtr<IDispatch> object_;
    struct Known {
        const wchar_t* name;
        DISPID id;
    };
    mutable std::vector<Known> known_;
};

// A whole number as an argument: four bytes where they are enough, as every automation object
// takes.
OwnedVariant numberArgument(std::int64_t value);
OwnedVariant textArgument(std::string_view value);
// As argument: a Variant that is Empty is left out of the call.
OwnedVariant optionalArgument(const Variant& value);

} // namespace norvel::com
