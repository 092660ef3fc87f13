#include "platform/controls/HostWindows.h"
#include "platform/controls/NestedLoop.h"
#include "platform/controls/Toolkit.h"
#include "platform/controls/ToolkitThread.h"
#include "platform/runtime/Errore.h"

#include <wx/app.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include <optional>

namespace norvel::controls {

void finishPendingWork() {
    wxTheApp->ProcessPendingEvents();
    wxTheApp->ProcessIdle(); // deletes what was Destroy()ed
    NestedLoop turn;
    const wxEventLoopActivator activator(&turn);
    for (int i = 0; i < 100 && turn.Pending(); ++i)
        turn.Dispatch();
}

namespace {

// The caret of a text stays where it was: with the focus some systems select the whole text, which
// the next key would replace.
void giveFocus(wxWindow& window) {
    auto* const text = dynamic_cast<wxTextEntry*>(&window);
    long from = 0;
    long to = 0;
    if (text != nullptr) text->GetSelection(&from, &to);
    const long caret = text != nullptr ? text->GetInsertionPoint() : 0;
    window.SetFocus();
    if (text == nullptr) return;
    if (from == to)
        text->SetInsertionPoint(caret);
    else
        text->SetSelection(from, to);
}

} // namespace

struct ModalLoop::Impl {
    NestedLoop* loop = nullptr; // while Run runs
    wxWeakRef<wxTopLevelWindow> window;
    std::optional<wxWindowDisabler> disabler; // of the toolkit's windows
    HostWindows hostWindows;
    bool ending = false;

    void onDestroy(wxWindowDestroyEvent& event) {
        event.Skip();
        if (event.GetEventObject() == window.get()) end();
    }
    void onShow(wxShowEvent& event) {
        event.Skip();
        if (!event.IsShown() && event.GetEventObject() == window.get()) end();
    }

    void begin(wxTopLevelWindow& shown) {
        ending = false;
        window = &shown;
        disabler.emplace(&shown);
        hostWindows.takeInputFor(shown);
        shown.Show();
        shown.Raise(); // at once: a window manager may place a window that is only shown
        hostWindows.markModal(shown);
        shown.Bind(wxEVT_DESTROY, &Impl::onDestroy, this);
        shown.Bind(wxEVT_SHOW, &Impl::onShow, this);
    }

    // The other windows take input again before the modal one goes.
    void end() {
        if (ending) return;
        ending = true;
        disabler.reset();
        hostWindows.giveBack();
        if (loop != nullptr) loop->ScheduleExit(0);
    }

    // The window leaves the screen here when it has not done so by itself.
    void leave(wxWindow* focusBefore) {
        if (window) {
            window->Unbind(wxEVT_DESTROY, &Impl::onDestroy, this);
            window->Unbind(wxEVT_SHOW, &Impl::onShow, this);
            window->Hide();
        }
        if (focusBefore != nullptr) {
            wxGetTopLevelParent(focusBefore)->Raise();
            giveFocus(*focusBefore);
        }
        finishPendingWork();
    }
};

ModalLoop::ModalLoop() : impl_(std::make_shared<Impl>()) {}
ModalLoop::~ModalLoop() = default;

bool ModalLoop::Running() const {
    return impl_->loop != nullptr;
}

void ModalLoop::End() {
    impl_->end();
}

void ModalLoop::Run(wxTopLevelWindow& window) {
    const std::shared_ptr<Impl> impl = impl_; // outlives this object, which may go with the window
    if (impl->loop != nullptr)
        throw Errore(400, "Form già visualizzato; impossibile visualizzarlo come form a scelta "
                          "obbligatoria");
    const InUse inUse;
    const wxWeakRef<wxWindow> focusBefore = wxWindow::FindFocus();
    NestedLoop loop;
    impl->loop = &loop;
    impl->begin(window);
    loop.Run();
    impl->loop = nullptr;
    impl->end(); // of a loop that ended because the program is to quit
    impl->leave(focusBefore.get());
}

} // namespace norvel::controls
