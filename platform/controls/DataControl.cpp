#include "platform/controls/DataControl.h"

#include <algorithm>
#include <utility>

namespace norvel::controls {

using namespace adodb;

DataControl::~DataControl() {
    if (recordset_) recordset_->Unsubscribe(this);
}

void DataControl::SetRecordset(RecordsetRef recordset) {
    if (recordset_) recordset_->Unsubscribe(this);
    recordset_ = std::move(recordset);
    if (recordset_) recordset_->Subscribe(this);
    tell([](Observer& o) { o.RecordsetReplaced(); });
}

void DataControl::AddObserver(Observer* observer) {
    observers_.push_back(observer);
}

void DataControl::RemoveObserver(Observer* observer) {
    std::erase(observers_, observer);
}

// Over a copy: an observer may remove itself, or another, while it is told.
template <class Call>
void DataControl::tell(Call call) {
    const auto told = observers_;
    for (Observer* observer : told)
        if (std::ranges::find(observers_, observer) != observers_.end()) call(*observer);
}

void DataControl::WillMove(EventReasonEnum reason, EventStatusEnum& status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.WillMove(reason, status, rs); });
}
void DataControl::MoveComplete(EventReasonEnum reason, const Errore* error, EventStatusEnum status,
                               adodb::Recordset& rs) {
    tell([&](Observer& o) { o.MoveComplete(reason, error, status, rs); });
}
void DataControl::WillChangeField(int count, const std::vector<Field*>& fields,
                                  EventStatusEnum& status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.WillChangeField(count, fields, status, rs); });
}
void DataControl::WillChangeRecord(EventReasonEnum reason, int count, EventStatusEnum& status,
                                   adodb::Recordset& rs) {
    tell([&](Observer& o) { o.WillChangeRecord(reason, count, status, rs); });
}
void DataControl::WillChangeRecordset(EventReasonEnum reason, EventStatusEnum& status,
                                      adodb::Recordset& rs) {
    tell([&](Observer& o) { o.WillChangeRecordset(reason, status, rs); });
}
void DataControl::EndOfRecordset(bool& moreData, EventStatusEnum& status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.EndOfRecordset(moreData, status, rs); });
}
void DataControl::RecordChangeComplete(EventReasonEnum reason, int count, const Errore* error,
                                       EventStatusEnum status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.RecordChangeComplete(reason, count, error, status, rs); });
}
void DataControl::FieldChangeComplete(int count, const std::vector<Field*>& fields,
                                      const Errore* error, EventStatusEnum status,
                                      adodb::Recordset& rs) {
    tell([&](Observer& o) { o.FieldChangeComplete(count, fields, error, status, rs); });
}
void DataControl::RecordsetChangeComplete(EventReasonEnum reason, const Errore* error,
                                          EventStatusEnum status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.RecordsetChangeComplete(reason, error, status, rs); });
}
void DataControl::FetchProgress(RowCount progress, RowCount maxProgress, EventStatusEnum status,
                                adodb::Recordset& rs) {
    tell([&](Observer& o) { o.FetchProgress(progress, maxProgress, status, rs); });
}
void DataControl::FetchComplete(const Errore* error, EventStatusEnum status, adodb::Recordset& rs) {
    tell([&](Observer& o) { o.FetchComplete(error, status, rs); });
}
void DataControl::ViewChanged(adodb::Recordset& rs) {
    tell([&](Observer& o) { o.ViewChanged(rs); });
}

} // namespace norvel::controls
