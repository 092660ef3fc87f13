// A host that runs the toolkit itself, with its own application object, main loop and window.
#include "tests/platform/controls/start/Guest.h"

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <cstdio>
#include <thread>

namespace {

void say(const char* what, bool value) {
    std::printf("%s: %d %s\n", what, value ? 1 : 0, guestError());
    std::fflush(stdout);
}

} // namespace

class Host : public wxApp {
  public:
    bool OnInit() override {
        frame_ = new wxFrame(nullptr, wxID_ANY, "Ospite", wxPoint(400, 300), wxSize(200, 100));
        frame_->Show();
        begin_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { useTheGuest(); });
        begin_.StartOnce(100);
        return true;
    }
    int OnExit() override {
        say("host ended its loop itself", endedItself_);
        return wxApp::OnExit();
    }

  private:
    void useTheGuest() {
        during_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
            say("host enabled meanwhile", frame_->IsThisEnabled());
        });
        during_.StartOnce(100);
        say("shown", guestShowWindow(300) > 0);
        say("own application kept", wxTheApp == this);
        say("host enabled after", frame_->IsThisEnabled());
        std::thread([] { say("another thread", guestStart() == 0); }).join();
        end_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
            endedItself_ = true;
            frame_->Close();
        });
        end_.StartOnce(150);
    }

    wxFrame* frame_ = nullptr;
    wxTimer begin_;
    wxTimer during_;
    wxTimer end_;
    bool endedItself_ = false;
};

wxIMPLEMENT_APP(Host); // NOLINT: the toolkit's own macro
