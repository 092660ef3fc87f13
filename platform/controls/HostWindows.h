// The host's own windows, those the toolkit does not know, while one of ours is modal.
#pragma once

#include <vector>

namespace norvel::controls {

// Takes the input away from the calling thread's other windows and gives it back: on GTK the
// top-level windows that are not the toolkit's; on Windows the thread's top-level windows belong
// here as well, enabled again in enable(), before the modal window goes.
class HostWindows {
  public:
    HostWindows() = default;
    ~HostWindows() { enable(); }
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;

    void disable();
    void enable();

  private:
    struct Disabled {
        void* window;
        unsigned long closeGuard; // what keeps its close box from closing it
    };
    std::vector<Disabled> disabled_;
};

// True where a loop over the program's events runs on another thread (a host's own).
bool eventsRunOnAnotherThread();

} // namespace norvel::controls
