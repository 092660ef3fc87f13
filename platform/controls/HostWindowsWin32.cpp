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
    // The system hands the pointer through as a number.
    auto* found = reinterpret_cast<std::vector<HWND>*>(list); // NOLINT(performance-no-int-to-ptr)
    if (IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0 && !isToolkits(window))
        found->push_back(window);
    return TRUE;
}

} // namespace

HostWindows::Disabled HostWindows::disable(void* window) {
    EnableWindow(static_cast<HWND>(window), FALSE);
    return {window, 0};
}

// The active window is one of this thread's or none. An owned window stays over its owner, goes to
// the icon with it and gives the focus back to it.
void HostWindows::takeInputFor(wxTopLevelWindow& modal) {
    const HWND owner = GetActiveWindow();
    if (owner != nullptr && owner != modal.GetHandle())
        SetWindowLongPtrW(modal.GetHandle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows));
    for (HWND window : windows)
        disabled_.push_back(disable(window));
}

// To Windows a window is modal when the others are disabled.
void HostWindows::markModal(wxTopLevelWindow&) {}

// A window that the host closed meanwhile is left alone, even where its handle stands for another
// thread's by now.
void HostWindows::giveBack() {
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
