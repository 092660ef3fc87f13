// Bringing the window toolkit up inside a host that may know nothing of it, and running a modal
// window.
#pragma once

#include "platform/runtime/Api.h"

#include <memory>

class wxTopLevelWindow;

namespace norvel::controls {

// Starts the toolkit on the calling thread if it is not running (a host that runs it already keeps
// its own), installs the message box and the owner queue's waker, and leaves the process's locale
// as it was. Cheap when there is nothing to do: call it before every use.
//
// While no window is open a call from another thread moves the toolkit there. A toolkit that the
// host itself started is never moved. Errore 430: "La finestra di ricerca è aperta in un altro
// thread"; the host's own toolkit runs on another thread; or there is no display, after which a
// later call may succeed.
NR_API void avviaToolkit();
// True on the thread that owns the toolkit, or when the toolkit is not running.
NR_API bool threadDelToolkit();

// Lets the toolkit do what is left of its work, as its event loop would: takes windows that were
// hidden or destroyed off the screen, also in a host that runs no event loop after this.
NR_API void finishPendingWork();

// Shows a top-level window modally: a nested event loop, the other windows of the toolkit and of
// the host disabled meanwhile, the focus back where it was at the end. Modal windows nest: a second
// one over the first, a message box over both. Works whether or not the host runs an event loop,
// and inside one of GTK's that is not the toolkit's.
//
// The window ends it by End() and then Destroy(), in this order, so that the other windows take
// input again before it goes (or the focus would leave the program). A window that is destroyed, or
// hidden, without End() ends it as well. The object may be a member of the window that it shows.
class NR_API ModalLoop {
  public:
    ModalLoop();
    ~ModalLoop();
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    // Returns when it has ended: the window is no longer on screen, and where Destroy() was called
    // it is gone. Raises nothing of its own; what a handler throws is the handler's affair.
    // While it runs already: Errore 400.
    void Run(wxTopLevelWindow& window);
    void End();
    bool Running() const;

  private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace norvel::controls
