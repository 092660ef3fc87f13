// Filter, order, edits and events of the adapter.
#include "platform/adodb/ado/RecordsetAdapter.h"

namespace norvel::adodb {

using com::fromVariant;
using com::numberArgument;
using com::toVariant;

Variant AdoRecordset::Filter() const {
    return fromVariant(object_.get(L"Filter").get());
}
void AdoRecordset::SetFilter(const Variant& criteria) {
    changeView(
        [&] { relay_.Move(adRsnMove, [&] { object_.put(L"Filter", toVariant(criteria)); }); });
}
std::string AdoRecordset::Sort() const {
    return object_.text(L"Sort");
}
void AdoRecordset::SetSort(const std::string& criteria) {
    changeView([&] { object_.putText(L"Sort", criteria); });
}

// --- edits ---

EditModeEnum AdoRecordset::EditMode() const {
    return static_cast<EditModeEnum>(object_.number(L"EditMode"));
}

void AdoRecordset::AddNew(const std::vector<Variant>& fields, const std::vector<Variant>& values) {
    mirror_.Renew();
    relay_.ChangeRecord(adRsnAddNew, [&] {
        relay_.Move(adRsnMove, [&] {
            if (fields.empty()) {
                object_.call(L"AddNew");
            } else {
                object_.call(L"AddNew", {toVariant(fields), toVariant(values)});
            }
        });
    });
    mirror_.Renew();
}

void AdoRecordset::Update() {
    relay_.ChangeRecord(adRsnUpdate, [&] { object_.call(L"Update"); });
    mirror_.Renew();
}

void AdoRecordset::CancelUpdate() {
    const auto reason = EditMode() == adEditAdd ? adRsnUndoAddNew : adRsnUndoUpdate;
    relay_.ChangeRecord(reason, [&] { object_.call(L"CancelUpdate"); });
    mirror_.Renew();
}

void AdoRecordset::Delete(AffectEnum affect) {
    relay_.ChangeRecord(adRsnDelete, [&] { object_.call(L"Delete", {numberArgument(affect)}); });
    mirror_.Renew();
}

// --- the view that listeners know ---

std::optional<AdoRecordset::View> AdoRecordset::readView() const {
    try {
        return View{Filter(), Sort()};
    } catch (const Errore&) { // a closed or busy recordset has none to tell
        return std::nullopt;
    }
}

void AdoRecordset::noteView() {
    const auto now = readView();
    if (now && view_ && !(*now == *view_)) tellViewChanged();
}

void AdoRecordset::tellViewChanged() {
    ++viewsTold_;
    if (!relay_.HasSinks()) return;
    if (auto now = readView()) view_ = std::move(now);
    relay_.Tell([](RecordsetEvents& sink, Recordset& owner) { sink.ViewChanged(owner); });
}

// --- events ---

void AdoRecordset::Subscribe(RecordsetEvents* sink) {
    const bool first = !relay_.HasSinks();
    relay_.Add(sink);
    if (!first) return;
    view_ = readView();
    relay_.SetHostFires(!own_ && connection_.Connect(object_.get(), weak_from_this(), hostTold_));
}

void AdoRecordset::Unsubscribe(RecordsetEvents* sink) {
    if (!relay_.Remove(sink)) return;
    relay_.SetHostFires(false);
    connection_.Disconnect();
    view_.reset();
}

void AdoRecordset::HostTold::WillMove(EventReasonEnum reason, EventStatusEnum& status, Recordset&) {
    adapter_.relay_.Tell(
        [&](RecordsetEvents& sink, Recordset& owner) { sink.WillMove(reason, status, owner); });
}

// The host may have set another filter or order: that is told first, so that a position is looked
// up among the rows that it counts.
void AdoRecordset::HostTold::MoveComplete(EventReasonEnum reason, const Errore* error,
                                          EventStatusEnum status, Recordset&) {
    adapter_.noteView();
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.MoveComplete(reason, error, status, owner);
    });
}

void AdoRecordset::HostTold::WillChangeField(int count, const std::vector<Field*>& fields,
                                             EventStatusEnum& status, Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.WillChangeField(count, fields, status, owner);
    });
}

void AdoRecordset::HostTold::FieldChangeComplete(int count, const std::vector<Field*>& fields,
                                                 const Errore* error, EventStatusEnum status,
                                                 Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.FieldChangeComplete(count, fields, error, status, owner);
    });
}

void AdoRecordset::HostTold::WillChangeRecord(EventReasonEnum reason, int count,
                                              EventStatusEnum& status, Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.WillChangeRecord(reason, count, status, owner);
    });
}

void AdoRecordset::HostTold::RecordChangeComplete(EventReasonEnum reason, int count,
                                                  const Errore* error, EventStatusEnum status,
                                                  Recordset&) {
    adapter_.mirror_.Renew();
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.RecordChangeComplete(reason, count, error, status, owner);
    });
}

void AdoRecordset::HostTold::WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status,
                                                 Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.WillChangeRecordset(reason, status, owner);
    });
}

void AdoRecordset::HostTold::RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                                     EventStatusEnum status, Recordset&) {
    adapter_.mirror_.Renew();
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.RecordsetChangeComplete(reason, error, status, owner);
    });
    if (status != adStatusErrorsOccurred) adapter_.tellViewChanged();
}

void AdoRecordset::HostTold::EndOfRecordset(bool& moreData, EventStatusEnum& status, Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.EndOfRecordset(moreData, status, owner);
    });
}

void AdoRecordset::HostTold::FetchProgress(RowCount progress, RowCount maxProgress,
                                           EventStatusEnum status, Recordset&) {
    adapter_.relay_.Tell([&](RecordsetEvents& sink, Recordset& owner) {
        sink.FetchProgress(progress, maxProgress, status, owner);
    });
}

void AdoRecordset::HostTold::FetchComplete(const Errore* error, EventStatusEnum status,
                                           Recordset&) {
    if (error) adapter_.fetchError_ = *error;
    adapter_.relay_.Tell(
        [&](RecordsetEvents& sink, Recordset& owner) { sink.FetchComplete(error, status, owner); });
}

} // namespace norvel::adodb
