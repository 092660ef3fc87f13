#include "platform/controls/Toolkit.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include <optional>

namespace norvel::controls {

namespace {

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
using NestedLoop = wxGUIEventLoop;
#endif

} // namespace

struct ModalLoop::Impl {
    NestedLoop* loop = nullptr; // while Run runs
    wxWeakRef<wxTopLevelWindow> window;
    wxWeakRef<wxWindow> focusBefore;
    std::optional<wxWindowDisabler> disabler;
    bool ending = false;

    void onDestroy(wxWindowDestroyEvent& event) {
        event.Skip();
        if (event.GetEventObject() == window.get()) end();
    }

    // The others are enabled before the modal window goes, or the focus would leave the program.
    void end() {
        if (ending) return;
        ending = true;
        disabler.reset();
        if (loop != nullptr) loop->ScheduleExit(0);
    }
};

ModalLoop::ModalLoop() : impl_(std::make_unique<Impl>()) {}
ModalLoop::~ModalLoop() = default;

bool ModalLoop::Running() const {
    return impl_->loop != nullptr;
}

void ModalLoop::End() {
    impl_->end();
}

void ModalLoop::Run(wxTopLevelWindow& window) {
    Impl& impl = *impl_;
    impl.ending = false;
    impl.window = &window;
    impl.focusBefore = wxWindow::FindFocus();
    window.Bind(wxEVT_DESTROY, &Impl::onDestroy, impl_.get());
    impl.disabler.emplace(&window);
    window.Show();
    window.Raise();
    NestedLoop loop;
    impl.loop = &loop;
    loop.Run();
    impl.loop = nullptr;
    impl.disabler.reset();
    if (impl.window) impl.window->Unbind(wxEVT_DESTROY, &Impl::onDestroy, impl_.get());
    if (impl.focusBefore) impl.focusBefore->SetFocus();
}

} // namespace norvel::controls
