// Which thread a running search belongs to.
#pragma once

namespace norvel {

// Marks the length of one call of Cerca(). Calls on the same thread nest (a host's handler may run
// inside the window's event loop); a call from another thread meanwhile raises erroreAltroThread()
// before it touches the window.
class SessioneInCorso {
  public:
    SessioneInCorso();
    ~SessioneInCorso();
    SessioneInCorso(const SessioneInCorso&) = delete;
    SessioneInCorso& operator=(const SessioneInCorso&) = delete;

    // Raises erroreAltroThread() where a search runs on another thread; for what touches the window
    // outside Cerca().
    static void controllaThread();
};

} // namespace norvel
