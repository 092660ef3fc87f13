// Who listens to an adapter, and how it is told.
#pragma once

#include "platform/adodb/Recordset.h"

#include <vector>

namespace norvel::adodb {

// The subscribers of one recordset adapter. While the host's object fires events itself, the
// adapter only passes them on; otherwise it tells of what it does.
class EventRelay {
  public:
    explicit EventRelay(Recordset& owner) : owner_(owner) {}
    EventRelay(const EventRelay&) = delete;
    EventRelay& operator=(const EventRelay&) = delete;

    void Add(RecordsetEvents* sink);
    // True when that was the last one.
    bool Remove(RecordsetEvents* sink);
    bool HasSinks() const { return !sinks_.empty(); }
    void SetHostFires(bool fires) { hostFires_ = fires; }
    bool HostFires() const { return hostFires_; }

    // A subscriber that leaves while others are told is told no more.
    template <class Call>
    void Tell(Call call) {
        const auto told = sinks_;
        for (RecordsetEvents* sink : told)
            if (isIn(sink)) call(*sink, owner_);
    }

    // Runs an action between its Will… and …Complete event, unless the host's object fires them.
    // 3712 where a subscriber cancels.
    template <class Action>
    void Move(EventReasonEnum reason, Action action) {
        surround([&](RecordsetEvents& s,
                     EventStatusEnum& status) { s.WillMove(reason, status, owner_); },
                 [&](RecordsetEvents& s, const Errore* error, EventStatusEnum status) {
                     s.MoveComplete(reason, error, status, owner_);
                 },
                 action);
    }
    template <class Action>
    void ChangeRecord(EventReasonEnum reason, Action action) {
        surround([&](RecordsetEvents& s,
                     EventStatusEnum& status) { s.WillChangeRecord(reason, 1, status, owner_); },
                 [&](RecordsetEvents& s, const Errore* error, EventStatusEnum status) {
                     s.RecordChangeComplete(reason, 1, error, status, owner_);
                 },
                 action);
    }
    template <class Action>
    void ChangeField(Field& field, Action action) {
        const std::vector<Field*> fields{&field};
        surround([&](RecordsetEvents& s,
                     EventStatusEnum& status) { s.WillChangeField(1, fields, status, owner_); },
                 [&](RecordsetEvents& s, const Errore* error, EventStatusEnum status) {
                     s.FieldChangeComplete(1, fields, error, status, owner_);
                 },
                 action);
    }
    template <class Action>
    void ChangeRecordset(EventReasonEnum reason, Action action) {
        surround([&](RecordsetEvents& s,
                     EventStatusEnum& status) { s.WillChangeRecordset(reason, status, owner_); },
                 [&](RecordsetEvents& s, const Errore* error, EventStatusEnum status) {
                     s.RecordsetChangeComplete(reason, error, status, owner_);
                 },
                 action);
    }

  private:
    bool isIn(const RecordsetEvents* sink) const;
    static Errore cancelled();

    template <class Will, class Complete, class Action>
    void surround(Will will, Complete complete, Action action) {
        if (hostFires_ || sinks_.empty()) return action();
        EventStatusEnum status = adStatusOK;
        Tell([&](RecordsetEvents& sink, Recordset&) { will(sink, status); });
        const auto failed = [&](const Errore& error) {
            Tell([&](RecordsetEvents& s, Recordset&) {
                complete(s, &error, adStatusErrorsOccurred);
            });
        };
        if (status == adStatusCancel) {
            failed(cancelled());
            throw cancelled();
        }
        try {
            action();
        } catch (const Errore& error) {
            failed(error);
            throw;
        }
        Tell([&](RecordsetEvents& s, Recordset&) { complete(s, nullptr, adStatusOK); });
    }

    Recordset& owner_;
    std::vector<RecordsetEvents*> sinks_;
    bool hostFires_ = false;
};

} // namespace norvel::adodb
