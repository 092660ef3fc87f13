// An event loop inside another, which may be a host's own.
#pragma once

#include <wx/app.h>
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

// A program that is told to quit is told by the thread's queue, once: this loop ends, and hands the
// word on to the one around it when it goes.
class NestedLoop : public wxGUIEventLoop {
  public:
    NestedLoop() = default;
    ~NestedLoop() override {
        if (quit_) PostQuitMessage(*quit_);
    }
    NestedLoop(const NestedLoop&) = delete;
    NestedLoop& operator=(const NestedLoop&) = delete;

    bool Dispatch() override {
        MSG message{};
        if (!GetNextMessage(&message)) {
            quit_ = static_cast<int>(message.wParam);
            return false;
        }
        ProcessMessage(&message);
        return true;
    }

  private:
    std::optional<int> quit_; // the program's exit status
};

#endif

} // namespace norvel::controls
