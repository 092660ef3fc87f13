#include "tests/windows/prova/RecordsetFace.h"

#include "platform/runtime/Errore.h"

#include <olectl.h>

namespace norvel::prova {

using adodb::Recordset;
using com::OwnedVariant;

namespace {

using Row = Member<RecordsetFace>;

// --- shapes of members ---

template <auto Read>
OwnedVariant read(RecordsetFace& face, const Arguments&) {
    return outward(Variant((face.recordset().*Read)()));
}
template <auto Read>
OwnedVariant readNumber(RecordsetFace& face, const Arguments&) {
    return outward(static_cast<std::int32_t>((face.recordset().*Read)()));
}
template <auto Read, auto Write, class Enumeration>
OwnedVariant number(RecordsetFace& face, const Arguments& a) {
    if (!a.puts()) return readNumber<Read>(face, a);
    (face.recordset().*Write)(static_cast<Enumeration>(a.newValue().toI4()));
    return {};
}
template <auto Read, auto Write>
OwnedVariant value(RecordsetFace& face, const Arguments& a) {
    if (!a.puts()) return read<Read>(face, a);
    (face.recordset().*Write)(a.newValue());
    return {};
}
template <auto Action>
OwnedVariant plain(RecordsetFace& face, const Arguments&) {
    (face.recordset().*Action)();
    return {};
}

// --- members of their own ---

// The collection itself, or at once one of its columns: rs("x"), rs("x") = 1.
OwnedVariant fields(RecordsetFace& face, const Arguments& a) {
    if (a.count() == 0) return outward(&face.fields());
    const auto field = face.fields().item(face.recordset().Fields().Item(a[0]));
    if (!a.puts()) return outward(field.get());
    field->field().SetValue(a.newValue());
    return {};
}

OwnedVariant collect(RecordsetFace& face, const Arguments& a) {
    adodb::Field& field = face.recordset().Fields().Item(a[0]);
    if (!a.puts()) return outward(field.Value());
    field.SetValue(a.newValue());
    return {};
}

OwnedVariant absolutePosition(RecordsetFace& face, const Arguments& a) {
    if (!a.puts()) return readNumber<&Recordset::AbsolutePosition>(face, a);
    face.recordset().SetAbsolutePosition(a.newValue().toI8());
    return {};
}

OwnedVariant sort(RecordsetFace& face, const Arguments& a) {
    if (!a.puts()) return outward(face.recordset().Sort());
    face.recordset().SetSort(a.newValue().toText());
    return {};
}

OwnedVariant open(RecordsetFace& face, const Arguments& a) {
    face.recordset().Open(a[0], a[1], static_cast<adodb::CursorTypeEnum>(a.number(2, -1)),
                          static_cast<adodb::LockTypeEnum>(a.number(3, -1)), a.number(4, -1));
    return {};
}

OwnedVariant requery(RecordsetFace& face, const Arguments& a) {
    face.recordset().Requery(a.number(0, -1));
    return {};
}

OwnedVariant clone(RecordsetFace& face, const Arguments& a) {
    return outward(
        ObjectRef(face.recordset().Clone(static_cast<adodb::LockTypeEnum>(a.number(0, -1)))));
}

OwnedVariant move(RecordsetFace& face, const Arguments& a) {
    face.recordset().Move(a[0].toI8(), a[1]);
    return {};
}

OwnedVariant getRows(RecordsetFace& face, const Arguments& a) {
    std::vector<Variant> asked;
    if (a[2].type() == VarType::Array) {
        asked = a[2].array();
    } else if (!a[2].isEmpty()) {
        asked.push_back(a[2]);
    }
    return com::rowsArray(face.recordset().GetRows(a.number(0, -1), a[1], asked).values);
}

OwnedVariant compareBookmarks(RecordsetFace& face, const Arguments& a) {
    return outward(static_cast<std::int32_t>(face.recordset().CompareBookmarks(a[0], a[1])));
}

std::vector<Variant> listOf(const Variant& value) {
    if (value.type() == VarType::Array) return value.array();
    return value.isEmpty() ? std::vector<Variant>() : std::vector<Variant>{value};
}

// Update and AddNew take fields and values: one each, or lists.
OwnedVariant addNew(RecordsetFace& face, const Arguments& a) {
    face.recordset().AddNew(listOf(a[0]), listOf(a[1]));
    return {};
}
OwnedVariant update(RecordsetFace& face, const Arguments& a) {
    const auto names = listOf(a[0]);
    const auto values = listOf(a[1]);
    if (names.size() != values.size()) throw erroreArgomento();
    for (std::size_t i = 0; i < names.size(); ++i)
        face.recordset().Fields().Item(names[i]).SetValue(values[i]);
    face.recordset().Update();
    return {};
}
OwnedVariant deleteRow(RecordsetFace& face, const Arguments& a) {
    face.recordset().Delete(static_cast<adodb::AffectEnum>(a.number(0, adodb::adAffectCurrent)));
    return {};
}
OwnedVariant supports(RecordsetFace& face, const Arguments& a) {
    return outward(face.recordset().Supports(a[0].toI4()));
}

constexpr Row members[] = {
    {L"Fields", 0, fields},
    {L"Collect", -8, collect},
    {L"AbsolutePosition", 0x3E8, absolutePosition},
    {L"ActiveConnection", 0x3E9,
     value<&Recordset::ActiveConnection, &Recordset::SetActiveConnection>},
    {L"BOF", 0x3EA, read<&Recordset::BOF>},
    {L"Bookmark", 0x3EB, value<&Recordset::Bookmark, &Recordset::SetBookmark>},
    {L"CursorType", 0x3ED,
     number<&Recordset::CursorType, &Recordset::SetCursorType, adodb::CursorTypeEnum>},
    {L"EOF", 0x3EE, read<&Recordset::EOF_>},
    {L"LockType", 0x3F0,
     number<&Recordset::LockType, &Recordset::SetLockType, adodb::LockTypeEnum>},
    {L"RecordCount", 0x3F2, readNumber<&Recordset::RecordCount>},
    {L"Source", 0x3F3, value<&Recordset::Source, &Recordset::SetSource>},
    {L"AddNew", 0x3F4, addNew},
    {L"CancelUpdate", 0x3F5, plain<&Recordset::CancelUpdate>},
    {L"Close", 0x3F6, plain<&Recordset::Close>},
    {L"Delete", 0x3F7, deleteRow},
    {L"GetRows", 0x3F8, getRows},
    {L"Move", 0x3F9, move},
    {L"MoveNext", 0x3FA, plain<&Recordset::MoveNext>},
    {L"MovePrevious", 0x3FB, plain<&Recordset::MovePrevious>},
    {L"MoveFirst", 0x3FC, plain<&Recordset::MoveFirst>},
    {L"MoveLast", 0x3FD, plain<&Recordset::MoveLast>},
    {L"Open", 0x3FE, open},
    {L"Requery", 0x3FF, requery},
    {L"Update", 0x401, update},
    {L"EditMode", 0x402, readNumber<&Recordset::EditMode>},
    {L"Filter", 0x406, value<&Recordset::Filter, &Recordset::SetFilter>},
    {L"Sort", 0x407, sort},
    {L"Clone", 0x40A, clone},
    {L"Supports", 0x40C, supports},
    {L"CursorLocation", 0x41B,
     number<&Recordset::CursorLocation, &Recordset::SetCursorLocation, adodb::CursorLocationEnum>},
    {L"State", 0x41E, readNumber<&Recordset::State>},
    {L"Cancel", 0x41F, plain<&Recordset::Cancel>},
    {L"ActiveCommand", 0x425, read<&Recordset::ActiveCommand>},
    {L"CompareBookmarks", 0x429, compareBookmarks},
};

} // namespace

const DISPID* RecordsetFace::identifier(const wchar_t* name) const {
    return findName(members, name);
}
bool RecordsetFace::run(DISPID id, const Arguments& arguments, OwnedVariant& result) {
    return runMember(members, *this, id, arguments, result);
}

FieldsFace& RecordsetFace::fields() {
    if (!fields_) fields_ = makeFace<FieldsFace>(recordset_);
    return *fields_.get();
}

HRESULT RecordsetFace::QueryInterface(REFIID iid, void** out) {
    if (!IsEqualIID(iid, IID_IConnectionPointContainer)) return Face::QueryInterface(iid, out);
    *out = static_cast<IConnectionPointContainer*>(this);
    AddRef();
    return S_OK;
}

HRESULT RecordsetFace::EnumConnectionPoints(IEnumConnectionPoints** points) {
    *points = nullptr;
    return E_NOTIMPL;
}

HRESULT RecordsetFace::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    *point = nullptr;
    if (!IsEqualIID(iid, adodb::recordsetEventsClassic) &&
        !IsEqualIID(iid, adodb::recordsetEventsNew))
        return CONNECT_E_NOCONNECTION;
    *point = &events_;
    events_.AddRef();
    return S_OK;
}

} // namespace norvel::prova
