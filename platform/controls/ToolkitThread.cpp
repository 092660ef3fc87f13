#include "platform/controls/ToolkitThread.h"

#include "platform/runtime/Errore.h"

#include <wx/app.h>
#include <wx/debug.h>
#include <wx/module.h>
#include <wx/object.h>
#include <wx/toplevel.h>

#include <atomic>
#include <memory>

#ifdef __WXMSW__
void wxSetKeyboardHook(bool set); // the toolkit's own, for which it has no header
#endif

namespace norvel::controls {

namespace {
std::atomic<int> uses{0};
} // namespace

InUse::InUse() {
    ++uses;
}
InUse::~InUse() {
    --uses;
}
bool toolkitInUse() {
    return uses > 0;
}

namespace {

// The toolkit's modules act on statics of theirs: any object of the class begins and ends them.
std::unique_ptr<wxModule> moduleNamed(const char* name) {
    std::unique_ptr<wxObject> object(wxCreateDynamicObject(name));
    auto* module = dynamic_cast<wxModule*>(object.get());
    if (module != nullptr) static_cast<void>(object.release());
    return std::unique_ptr<wxModule>(module);
}

// Some modules' end asserts that it runs on the old owner, which is not here to do it.
class NoAssertions {
  public:
    NoAssertions() : before_(wxSetAssertHandler(nullptr)) {}
    ~NoAssertions() { wxSetAssertHandler(before_); }
    NoAssertions(const NoAssertions&) = delete;
    NoAssertions& operator=(const NoAssertions&) = delete;

  private:
    wxAssertHandler_t before_;
};

#ifdef __WXMSW__

// Windows that the toolkit makes for itself when it first needs them, and makes anew after this:
// the one through which timers tick, the tips, the owner of windows without a task-bar button, the
// one that hears of changes of the screens.
void endHiddenWindows() {
    for (const char* name : {"wxTimerHiddenWindowModule", "wxToolTipModule",
                             "wxTLWHiddenParentModule", "wxDisplayModule"})
        if (const auto module = moduleNamed(name)) module->Exit();
}

// Keys before they reach a window, and idle time in the loops of the system's own menus and boxes,
// come through hooks of one thread; a hook of a thread that has ended is gone already. Drag and
// drop and the clipboard want OLE on the thread.
void adoptHooks() {
    endHiddenWindows(); // of an owner that ended without doing it
    wxSetKeyboardHook(false);
    wxSetKeyboardHook(true);
    if (const auto idle = moduleNamed("wxIdleWakeUpModule")) {
        idle->Exit();
        idle->Init();
    }
    if (const auto ole = moduleNamed("wxOleInitModule")) ole->Init();
}

#else
void endHiddenWindows() {}
void adoptHooks() {}
#endif

} // namespace

bool aWindowIsOpen() {
    if (toolkitInUse()) return true;
    for (wxWindow* window : wxTopLevelWindows)
        if (window->IsShown() && !wxPendingDelete.Member(window)) return true;
    return false;
}

void leaveThread() {
    if (!aWindowIsOpen()) endHiddenWindows();
}

// The toolkit keeps its owner's identity in one module of its own; ending and beginning that module
// on the new thread makes it the owner. Windows of GTK belong to no thread, only to one at a time.
void adoptCallingThread() {
    const std::unique_ptr<wxModule> module = moduleNamed("wxThreadModule");
    if (!module)
        throw Errore(430, "La finestra di ricerca può essere aperta solo dal primo thread");
    const NoAssertions quiet;
    module->Exit();
    if (!module->Init()) throw Errore(7, "Memoria esaurita");
    adoptHooks();
}

} // namespace norvel::controls
