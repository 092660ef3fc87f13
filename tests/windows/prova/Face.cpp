#include "tests/windows/prova/Face.h"

#include "platform/adodb/ado/Failures.h"
#include "tests/windows/prova/ConnectionFace.h"
#include "tests/windows/prova/OwnerPump.h"
#include "tests/windows/prova/RecordsetFace.h"

#include <algorithm>
#include <map>

namespace norvel::prova {

using com::ComPtr;
using com::OwnedVariant;

namespace {

// Tells our own faces from a host's objects.
constexpr IID ownFace = {
    0x6f1d9c52, 0x3b0e, 0x4d3f, {0x9a, 0x61, 0x0c, 0x2e, 0x57, 0xb4, 0x8d, 0x19}};

long faces = 0;

// The faces by what they stand for. They are not counted here: a face that ends takes itself out.
std::map<const Object*, Face*>& known() {
    static auto& all = *new std::map<const Object*, Face*>;
    return all;
}

ComPtr<IDispatch> newFace(const ObjectRef& object) {
    const auto remember = [&](auto face) {
        known()[object.get()] = face.get();
        return face.template as<IDispatch>(IID_IDispatch);
    };
    if (auto recordset = std::dynamic_pointer_cast<adodb::Recordset>(object))
        return remember(makeFace<RecordsetFace>(std::move(recordset)));
    if (auto connection = std::dynamic_pointer_cast<adodb::Connection>(object))
        return remember(makeFace<ConnectionFace>(std::move(connection)));
    if (auto command = std::dynamic_pointer_cast<adodb::Command>(object))
        return remember(makeFace<CommandFace>(std::move(command)));
    return {};
}

constexpr com::ObjectFaces objectFaces{behind, faceOf};

} // namespace

ComPtr<IDispatch> faceOf(const ObjectRef& object) {
    const auto found = known().find(object.get());
    return found == known().end() ? newFace(object) : ComPtr<IDispatch>::keep(found->second);
}

ObjectRef behind(IDispatch* face) {
    const auto own = ComPtr<IDispatch>::keep(face).as<IDispatch>(ownFace);
    return own ? static_cast<Face*>(own.get())->object() : nullptr;
}

Variant inward(const VARIANT& value) {
    return com::fromVariant(value, objectFaces);
}
OwnedVariant outward(const Variant& value) {
    return com::toVariant(value, objectFaces);
}
OwnedVariant outward(IDispatch* object) {
    OwnedVariant value;
    V_VT(&value.ref()) = VT_DISPATCH;
    V_DISPATCH(&value.ref()) = ComPtr<IDispatch>::keep(object).detach();
    return value;
}

long liveFaces() {
    return faces;
}

// --- arguments ---

Arguments::Arguments(const DISPPARAMS& parameters, WORD kind)
    : parameters_(parameters),
      puts_((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0),
      count_(parameters.cArgs - (puts_ && parameters.cArgs ? 1 : 0)) {}

Variant Arguments::operator[](std::size_t index) const {
    if (index >= count_) return {};
    return inward(parameters_.rgvarg[parameters_.cArgs - 1 - index]);
}

int Arguments::number(std::size_t index, int missing) const {
    const Variant value = (*this)[index];
    return value.isEmpty() ? missing : value.toI4();
}

Variant Arguments::newValue() const {
    if (!puts_ || parameters_.cArgs == 0) throw Errore(450, "Manca il valore della proprietà");
    return inward(parameters_.rgvarg[0]);
}

// --- the face ---

Face::Face() {
    if (++faces == 1) startOwnerPump();
}

Face::~Face() {
    std::erase_if(known(), [this](const auto& entry) { return entry.second == this; });
    if (--faces == 0) stopOwnerPump();
}

HRESULT Face::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch) &&
        !IsEqualIID(iid, ownFace))
        return E_NOINTERFACE;
    *out = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG Face::AddRef() {
    return static_cast<ULONG>(++references_);
}
ULONG Face::Release() {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

HRESULT Face::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT Face::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT Face::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const DISPID* found = identifier(names[0]);
    if (!found || count != 1) return DISP_E_UNKNOWNNAME;
    ids[0] = *found;
    return S_OK;
}

HRESULT Face::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                     EXCEPINFO* exception, UINT*) {
    const auto self = ComPtr<Face>::keep(this);
    try {
        OwnedVariant answer;
        if (!run(id, Arguments(*parameters, kind), answer)) return DISP_E_MEMBERNOTFOUND;
        if (result) *result = answer.detach();
        return S_OK;
    } catch (const Errore& error) {
        return com::raise(error, exception, "NorvelProva");
    } catch (const std::exception&) {
        return E_OUTOFMEMORY;
    }
}

} // namespace norvel::prova
