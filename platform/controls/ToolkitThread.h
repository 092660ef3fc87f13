// Which thread owns the toolkit, and handing it from one to another.
#pragma once

#include "platform/runtime/Api.h"

namespace norvel::controls {

// Makes the calling thread the one that owns the windows. No window may be open.
void adoptCallingThread();

// Gives back what only the owner's thread can: hidden windows of the toolkit's, which would keep it
// from working on another thread once this one has ended or handles no messages. For the owner's
// thread, after the last window was destroyed; while one is open it does nothing. Cheap.
NR_API void leaveThread();

// While one lives the owner's thread is busy with a modal window or a box, and the toolkit stays.
class InUse {
  public:
    InUse();
    ~InUse();
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
};
// True while any InUse lives, on whichever thread.
bool toolkitInUse();
// True also while a window is shown; one that waits for its deletion is not open any more.
bool aWindowIsOpen();

} // namespace norvel::controls
