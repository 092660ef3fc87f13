#include "platform/adodb/ado/EventRelay.h"

#include "platform/adodb/Errors.h"

#include <algorithm>

namespace norvel::adodb {

void EventRelay::Add(RecordsetEvents* sink) {
    sinks_.push_back(sink);
}

bool EventRelay::Remove(RecordsetEvents* sink) {
    const bool had = !sinks_.empty();
    std::erase(sinks_, sink);
    return had && sinks_.empty();
}

bool EventRelay::isIn(const RecordsetEvents* sink) const {
    return std::ranges::find(sinks_, sink) != sinks_.end();
}

Errore EventRelay::cancelled() {
    return adoError(adErrOperationCancelled);
}

} // namespace norvel::adodb
