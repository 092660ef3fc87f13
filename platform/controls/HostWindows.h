// The host's own windows, those the toolkit does not know, while one of ours is modal.
#pragma once

#include <vector>

class wxTopLevelWindow;

namespace norvel::controls {

// For the length of a modal window: puts it over the window that was active, which becomes its
// owner, and takes the input away from the calling thread's windows that are not the toolkit's. On
// GTK these are its other top-level windows; on Windows the thread's belong here as well.
class HostWindows {
  public:
    HostWindows() = default;
    ~HostWindows() { giveBack(); }
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;

    // Before the window is shown.
    void takeInputFor(wxTopLevelWindow& modal);
    // Once it is shown.
    void markModal(wxTopLevelWindow& modal);
    // Before it goes.
    void giveBack();

  private:
    struct Disabled {
        void* window;
        unsigned long closeGuard; // what keeps its close box from closing it
    };
    static Disabled disable(void* window);
    std::vector<Disabled> disabled_;
    void* modal_ = nullptr; // the window that outlives an owner of the host's (Windows)
};

// True where a loop over the program's events runs on another thread (a host's own).
bool eventsRunOnAnotherThread();

} // namespace norvel::controls
