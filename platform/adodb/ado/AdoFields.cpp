#include "platform/adodb/ado/AdoFields.h"

#include "platform/adodb/Errors.h"
#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::adodb {

using com::DispatchObject;

namespace {

DispatchObject fieldAt(const DispatchObject& recordset, int index) {
    return recordset.object(L"Fields").object(L"Item", {com::numberArgument(index)});
}

} // namespace

AdoField::AdoField(const DispatchObject& recordset, EventRelay& relay, int index)
    : recordset_(recordset), relay_(relay), index_(index), field_(fieldAt(recordset, index)),
      name_(field_.text(L"Name")) {}

// Runs a call on the column's object, once more on a new one where the old one's recordset was
// closed and opened again since.
template <class Call>
auto AdoField::on(Call call) const {
    if (!field_) throw adoError(adErrObjectNotSet);
    try {
        return call(field_);
    } catch (const Errore& error) {
        if (error.numero() != adErrObjectNotSet) throw;
    }
    DispatchObject anew;
    try {
        anew = fieldAt(recordset_, index_);
        if (!equalsText(anew.text(L"Name"), name_)) anew = {};
    } catch (const Errore&) { // the recordset is closed, or has fewer columns now
        anew = {};
    }
    if (!anew) throw adoError(adErrObjectNotSet);
    field_ = anew;
    return call(field_);
}

bool AdoField::Alive() const {
    try {
        return on([&](const auto& f) { return equalsText(f.text(L"Name"), name_); });
    } catch (const Errore&) { // 3420, and whatever else an object without a column answers
        return false;
    }
}

std::string AdoField::Name() const {
    if (!field_) throw adoError(adErrObjectNotSet);
    return name_;
}

DataTypeEnum AdoField::Type() const {
    return static_cast<DataTypeEnum>(on([](const auto& f) { return f.number(L"Type"); }));
}
std::int64_t AdoField::DefinedSize() const {
    return on([](const auto& f) { return f.number(L"DefinedSize"); });
}
std::int64_t AdoField::ActualSize() const {
    return on([](const auto& f) { return f.number(L"ActualSize"); });
}
int AdoField::Attributes() const {
    return static_cast<int>(on([](const auto& f) { return f.number(L"Attributes"); }));
}
int AdoField::Precision() const {
    return static_cast<int>(on([](const auto& f) { return f.number(L"Precision"); }));
}
int AdoField::NumericScale() const {
    return static_cast<int>(on([](const auto& f) { return f.number(L"NumericScale"); }));
}
Variant AdoField::Value() const {
    return on([](const auto& f) { return com::fromVariant(f.get(L"Value").get()); });
}
Variant AdoField::OriginalValue() const {
    return on([](const auto& f) { return com::fromVariant(f.get(L"OriginalValue").get()); });
}
Variant AdoField::UnderlyingValue() const {
    return on([](const auto& f) { return com::fromVariant(f.get(L"UnderlyingValue").get()); });
}

void AdoField::SetValue(const Variant& value) {
    relay_.ChangeField(*this,
                       [&] { on([&](const auto& f) { f.put(L"Value", com::toVariant(value)); }); });
}

// --- the collection ---

DispatchObject AdoFields::collection() const {
    return recordset_.object(L"Fields");
}

int AdoFields::Count() const {
    return static_cast<int>(collection().number(L"Count"));
}

void AdoFields::Forget() {
    for (auto& field : fields_) {
        field->Retire();
        retired_.push_back(std::move(field));
    }
    fields_.clear();
    numbers_.clear();
    loaded_ = false;
}

// The columns as they are now; those handed out stay where they are still the same.
void AdoFields::load() {
    const int count = Count();
    if (loaded_ && count == static_cast<int>(fields_.size()) &&
        std::ranges::all_of(fields_, [](const auto& field) { return field->Alive(); }))
        return;
    Forget();
    for (int i = 0; i < count; ++i) {
        fields_.push_back(std::make_unique<AdoField>(recordset_, relay_, i));
        numbers_.emplace(foldText(fields_.back()->Name()), i);
    }
    loaded_ = true;
}

// A text is a name; everything else a number, coerced as ADO does.
AdoField* AdoFields::find(const Variant& nameOrIndex) {
    if (!loaded_) load();
    int index = -1;
    if (nameOrIndex.isText()) {
        const auto found = numbers_.find(foldText(nameOrIndex.text()));
        if (found != numbers_.end()) index = found->second;
    } else {
        index = nameOrIndex.toI4();
    }
    if (index < 0 || index >= static_cast<int>(fields_.size())) return nullptr;
    return fields_[static_cast<std::size_t>(index)].get();
}

// The host may have opened its recordset over other columns since they were asked.
Field& AdoFields::Item(const Variant& nameOrIndex) {
    AdoField* field = find(nameOrIndex);
    if (!field || !field->Alive()) {
        load();
        field = find(nameOrIndex);
    }
    if (!field) throw adoError(adErrItemNotFound);
    return *field;
}

void AdoFields::Append(const std::string& name, DataTypeEnum type, std::int64_t size,
                       int attributes) {
    collection().call(
        L"Append", {com::textArgument(name), com::numberArgument(type),
                    size ? com::numberArgument(size) : com::OwnedVariant::missing(),
                    attributes ? com::numberArgument(attributes) : com::OwnedVariant::missing()});
    Forget();
}

void AdoFields::Delete(const Variant& nameOrIndex) {
    collection().call(L"Delete", {com::toVariant(nameOrIndex)});
    Forget();
}

} // namespace norvel::adodb
