// An event loop inside another, which may be a host's own.
#pragma once

#include <wx/evtloop.h>

#include <optional>

namespace norvel::controls {

#ifdef __WXGTK__

// The toolkit's own loop, when it ends, also ends the gtk_main() around it to see whether that was
// meant; around ours that may be the host's. So this one turns by single iterations.
class NestedLoop : public wxGUIEventLoop {
  public:
    void ScheduleExit(int) override {
        ended_ = true;
        WakeUp();
    }

  protected:
    int DoRun() override {
        while (!ended_)
            Dispatch();
        return 0;
    }

  private:
    bool ended_ = false;
};

#else

// Differs from the toolkit's own in two ways. A program that is told to quit is told by the
// thread's queue, once: this loop ends, and hands the word on to the one around it when it goes.
// And keys are shown to the windows (wxEVT_CHAR_HOOK) once they have been taken from the queue: the
// toolkit does it while they are still there, and a modal window that a key opens would get that
// key again.
class NestedLoop : public wxGUIEventLoop {
  public:
    NestedLoop();
    ~NestedLoop() override;
    NestedLoop(const NestedLoop&) = delete;
    NestedLoop& operator=(const NestedLoop&) = delete;

    bool Dispatch() override;
    bool PreProcessMessage(WXMSG* message) override;

  private:
    std::optional<int> quit_; // the program's exit status
};

#endif

} // namespace norvel::controls
