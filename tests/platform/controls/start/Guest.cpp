#include "tests/platform/controls/start/Guest.h"

#include "platform/controls/Toolkit.h"
#include "platform/runtime/Errore.h"

#include <wx/frame.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <functional>
#include <string>
#include <thread>

namespace {

using norvel::Errore;
using norvel::controls::avviaToolkit;
using norvel::controls::ModalLoop;

std::string lastError;

int guarded(const std::function<int()>& action) {
    lastError.clear();
    try {
        return action();
    } catch (const Errore& errore) {
        lastError = errore.descrizione();
        return -1;
    }
}

// A frame with a text field that counts its paint events and closes when its time is over.
class Window : public wxFrame {
  public:
    explicit Window(ModalLoop* loop)
        : wxFrame(nullptr, wxID_ANY, "Ospite", wxPoint(100, 100), wxSize(300, 120)), loop_(loop) {
        auto* field = new wxTextCtrl(this, wxID_ANY, "prova");
        field->SetFocus();
        Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
            ++paints_;
            event.Skip();
        });
        timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
            if (loop_ != nullptr) loop_->End();
        });
    }
    void closeAfter(int milliseconds) { timer_.StartOnce(milliseconds); }
    int paints() const { return paints_; }

  private:
    ModalLoop* loop_;
    wxTimer timer_;
    int paints_ = 0;
};

int showWindow(int milliseconds, const std::function<void()>& meanwhile) {
    avviaToolkit();
    ModalLoop loop;
    auto* window = new Window(&loop);
    window->closeAfter(milliseconds);
    if (meanwhile) window->CallAfter(meanwhile);
    loop.Run(*window);
    const int paints = window->paints();
    window->Destroy();
    return paints;
}

} // namespace

int guestStart() {
    return guarded([] {
        avviaToolkit();
        return 0;
    });
}

int guestShowWindow(int milliseconds) {
    return guarded([&] { return showWindow(milliseconds, nullptr); });
}

int guestShowWindowWhileOtherThreadTries(int milliseconds) {
    std::string told;
    const int answer = guarded([&] {
        return showWindow(milliseconds, [&] {
            std::thread([&] {
                try {
                    avviaToolkit();
                } catch (const Errore& errore) {
                    told = errore.descrizione();
                }
            }).join();
        });
    });
    if (answer >= 0) lastError = told;
    return answer;
}

int guestLeaveWindowOpen() {
    return guarded([] {
        avviaToolkit();
        auto* window = new Window(nullptr);
        window->Show();
        return 0;
    });
}

int guestOwns() {
    return norvel::controls::threadDelToolkit() ? 1 : 0;
}

const char* guestError() {
    return lastError.c_str();
}
