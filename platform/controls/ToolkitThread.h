// Which thread owns the toolkit, and handing it from one to another.
#pragma once

namespace norvel::controls {

// Makes the calling thread the one that owns the windows. No window may be open.
void adoptCallingThread();

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

} // namespace norvel::controls
