// The data control: holds the recordset that other controls show and tells when it moved.
#pragma once

#include "platform/adodb/Recordset.h"

#include <functional>
#include <vector>

namespace norvel::controls {

// Windowless. Observers are told of the recordset's own events, and of a new recordset; the order
// is that of registration. It keeps a counted reference and never closes what it did not open.
class NR_API DataControl : public adodb::RecordsetEvents {
  public:
    DataControl() = default;
    ~DataControl() override;
    DataControl(const DataControl&) = delete;
    DataControl& operator=(const DataControl&) = delete;

    const adodb::RecordsetRef& Recordset() const { return recordset_; }
    // A null reference unbinds. Observers get RecordsetReplaced().
    void SetRecordset(adodb::RecordsetRef recordset);

    // What an observer may implement, beside the recordset's events.
    class Observer : public adodb::RecordsetEvents {
      public:
        virtual void RecordsetReplaced() {}
    };
    // An observer added twice is told twice. One that is removed while the others are told is told
    // no more; one that is added then is told from the next event on.
    void AddObserver(Observer* observer);
    void RemoveObserver(Observer* observer);

    // RecordsetEvents: passed on to every observer.
    void WillMove(adodb::EventReasonEnum, adodb::EventStatusEnum&, adodb::Recordset&) override;
    void MoveComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                      adodb::Recordset&) override;
    void WillChangeField(int, const std::vector<adodb::Field*>&, adodb::EventStatusEnum&,
                         adodb::Recordset&) override;
    void WillChangeRecord(adodb::EventReasonEnum, int, adodb::EventStatusEnum&,
                          adodb::Recordset&) override;
    void WillChangeRecordset(adodb::EventReasonEnum, adodb::EventStatusEnum&,
                             adodb::Recordset&) override;
    void EndOfRecordset(bool&, adodb::EventStatusEnum&, adodb::Recordset&) override;
    void RecordChangeComplete(adodb::EventReasonEnum, int, const Errore*, adodb::EventStatusEnum,
                              adodb::Recordset&) override;
    void FieldChangeComplete(int, const std::vector<adodb::Field*>&, const Errore*,
                             adodb::EventStatusEnum, adodb::Recordset&) override;
    void RecordsetChangeComplete(adodb::EventReasonEnum, const Errore*, adodb::EventStatusEnum,
                                 adodb::Recordset&) override;
    void FetchProgress(adodb::RowCount, adodb::RowCount, adodb::EventStatusEnum,
                       adodb::Recordset&) override;
    void FetchComplete(const Errore*, adodb::EventStatusEnum, adodb::Recordset&) override;
    void ViewChanged(adodb::Recordset&) override;

  private:
    template <class Call>
    void tell(Call call);
    adodb::RecordsetRef recordset_;
    std::vector<Observer*> observers_;
};

} // namespace norvel::controls
