// The subscribers of a recordset and the way they are called.
#pragma once

#include "platform/adodb/Recordset.h"

#include <algorithm>
#include <vector>

namespace norvel::adodb {

// A sink may unsubscribe itself or others while it is called.
class EventSinks {
  public:
    void add(RecordsetEvents* sink) {
        if (sink && std::ranges::find(sinks_, sink) == sinks_.end()) sinks_.push_back(sink);
    }
    void remove(RecordsetEvents* sink) { std::erase(sinks_, sink); }

    // True while a sink is being told of a move or a change: nothing may move then.
    bool telling() const { return telling_ > 0; }

    template <class Call>
    void tell(Call call) {
        const Telling mark(*this);
        tellFreely(call);
    }
    // As tell(), of what leaves the sinks free to move: the news of a fetch.
    template <class Call>
    void tellFreely(Call call) {
        const auto told = sinks_;
        for (RecordsetEvents* sink : told)
            if (std::ranges::find(sinks_, sink) != sinks_.end()) call(*sink);
    }
    // Tells a Will… event; false where a sink cancels.
    template <class Call>
    bool ask(Call call) {
        bool allowed = true;
        tell([&](RecordsetEvents& sink) {
            EventStatusEnum status = adStatusOK;
            call(sink, status);
            if (status == adStatusCancel) allowed = false;
        });
        return allowed;
    }

    // telling(), while it lives.
    class Telling {
      public:
        explicit Telling(EventSinks& sinks) : sinks_(sinks) { ++sinks_.telling_; }
        ~Telling() { --sinks_.telling_; }
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

      private:
        EventSinks& sinks_;
    };

  private:
    std::vector<RecordsetEvents*> sinks_;
    int telling_ = 0;
};

} // namespace norvel::adodb
