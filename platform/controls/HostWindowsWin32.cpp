#include "platform/controls/HostWindows.h"

#include <wx/toplevel.h>

#include <algorithm>
#include <windows.h>

namespace norvel::controls {

namespace {

bool isToolkits(HWND handle) {
    return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(),
                       [handle](const wxWindow* window) { return window->GetHandle() == handle; });
}

// The thread's top-level windows that an operator could use; the list is theirs to fill.
BOOL CALLBACK collect(HWND window, LPARAM list) {
    if (IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0 && !isToolkits(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

} // namespace

void HostWindows::disable() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
    for (HWND window : windows) {
        EnableWindow(window, FALSE);
        disabled_.push_back({window, 0});
    }
}

// A window that the host closed meanwhile is left alone, even where its handle stands for another
// thread's by now.
void HostWindows::enable() {
    for (const Disabled& each : disabled_) {
        const HWND window = static_cast<HWND>(each.window);
        if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId())
            EnableWindow(window, TRUE);
    }
    disabled_.clear();
}

// Every thread of Windows has an event queue of its own.
bool eventsRunOnAnotherThread() {
    return false;
}

} // namespace norvel::controls
