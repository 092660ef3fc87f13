#include "tests/windows/prova/FieldsFace.h"

#include "platform/runtime/Errore.h"

namespace norvel::prova {

using adodb::Field;
using com::ComPtr;
using com::OwnedVariant;

namespace {

using FieldMember = Member<FieldFace>;
using FieldsMember = Member<FieldsFace>;

template <auto Read>
OwnedVariant read(FieldFace& face, const Arguments&) {
    return outward(Variant((face.field().*Read)()));
}
template <auto Read>
OwnedVariant readNumber(FieldFace& face, const Arguments&) {
    return outward(static_cast<std::int32_t>((face.field().*Read)()));
}

OwnedVariant value(FieldFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.field().Value());
    face.field().SetValue(a.newValue());
    return {};
}

constexpr FieldMember fieldMembers[] = {
    {L"Value", 0, value},
    {L"Name", 0x44C, read<&Field::Name>},
    {L"Type", 0x44E, readNumber<&Field::Type>},
    {L"DefinedSize", 0x44F, readNumber<&Field::DefinedSize>},
    {L"ActualSize", 0x455, readNumber<&Field::ActualSize>},
    {L"Attributes", 0x40C, readNumber<&Field::Attributes>},
    {L"OriginalValue", 0x450, read<&Field::OriginalValue>},
    {L"UnderlyingValue", 0x451, read<&Field::UnderlyingValue>},
    {L"Precision", 0x60030007, readNumber<&Field::Precision>},
    {L"NumericScale", 0x60030008, readNumber<&Field::NumericScale>},
};

OwnedVariant fieldItem(FieldsFace& face, const Arguments& a) {
    const auto field = face.item(face.fields().Item(a[0]));
    if (!a.puts()) return outward(field.get());
    field->field().SetValue(a.newValue());
    return {};
}

OwnedVariant append(FieldsFace& face, const Arguments& a) {
    face.fields().Append(a[0].toText(), static_cast<adodb::DataTypeEnum>(a[1].toI4()),
                         a.number(2, 0), a.number(3, 0));
    return {};
}

constexpr FieldsMember fieldsMembers[] = {
    {L"Item", 0, fieldItem},
    {L"Count", 0x60020000,
     [](FieldsFace& face, const Arguments&) { return outward(face.fields().Count()); }},
    {L"_NewEnum", DISPID_NEWENUM, [](FieldsFace& face, const Arguments&) { return face.all(); }},
    {L"Append", 0x60040001, append},
    {L"Delete", 0x60030002,
     [](FieldsFace& face, const Arguments& a) {
         face.fields().Delete(a[0]);
         return OwnedVariant();
     }},
};

// Walks a fixed list of objects.
class ObjectWalk : public IEnumVARIANT {
  public:
    explicit ObjectWalk(std::vector<ComPtr<IDispatch>> objects) : objects_(std::move(objects)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IEnumVARIANT);
        *out = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override {
        const long left = --references_;
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out, ULONG* fetched) override {
        ULONG done = 0;
        for (; done < count && next_ < objects_.size(); ++done)
            out[done] = outward(objects_[next_++].get()).detach();
        if (fetched) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        next_ += count;
        return next_ <= objects_.size() ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        *out = new ObjectWalk(*this);
        return S_OK;
    }

  private:
    ObjectWalk(const ObjectWalk& other) : objects_(other.objects_), next_(other.next_) {}
    virtual ~ObjectWalk() = default;
    long references_ = 1;
    std::vector<ComPtr<IDispatch>> objects_;
    std::size_t next_ = 0;
};

} // namespace

const DISPID* FieldFace::identifier(const wchar_t* name) const {
    return findName(fieldMembers, name);
}
bool FieldFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(fieldMembers, *this, id, arguments, result);
}

const DISPID* FieldsFace::identifier(const wchar_t* name) const {
    return findName(fieldsMembers, name);
}
bool FieldsFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(fieldsMembers, *this, id, arguments, result);
}

ComPtr<FieldFace> FieldsFace::item(Field& field) {
    auto& face = items_[&field];
    if (!face) face = makeFace<FieldFace>(owner_, field);
    return face;
}

OwnedVariant FieldsFace::all() {
    const int count = fields().Count();
    std::vector<ComPtr<IDispatch>> objects;
    objects.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        objects.push_back(item(fields().Item(i)).as<IDispatch>(IID_IDispatch));
    OwnedVariant value;
    V_VT(&value.ref()) = VT_UNKNOWN;
    V_UNKNOWN(&value.ref()) = new ObjectWalk(std::move(objects));
    return value;
}

} // namespace norvel::prova
