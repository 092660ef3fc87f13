// Bringing the window toolkit up inside a host that may know nothing of it, and running a modal
// window.
#pragma once

#include "platform/runtime/Api.h"

#include <functional>
#include <memory>

class wxTopLevelWindow;

namespace norvel::controls {

// Starts the toolkit on the calling thread if it is not running (a host that runs it already keeps
// its own), installs the message box and the owner queue's waker, and leaves the process's locale
// as it was. While no window is open a call from another thread moves the toolkit there; while one
// is open it raises Errore 430-like "La finestra di ricerca è aperta in un altro thread". Without a
// display: a clear Errore.
NR_API void avviaToolkit();
// True on the thread that owns the toolkit, or when the toolkit is not running.
NR_API bool threadDelToolkit();

// Shows a top-level window modally: a nested event loop, the toolkit's other windows (and the
// host's, on Windows) disabled meanwhile, enabled again before the window goes, the focus back
// where it was. Returns when EndModal was called or the window was destroyed.
class NR_API ModalLoop {
  public:
    ModalLoop();
    ~ModalLoop();
    void Run(wxTopLevelWindow& window);
    void End();
    bool Running() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace norvel::controls
