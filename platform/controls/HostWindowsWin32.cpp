#include "platform/controls/HostWindows.h"

#include <wx/toplevel.h>

#include <algorithm>
#include <utility>
#include <vector>
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

// The modal windows over hosts' windows, and the hook that lasts as long as there are any. All on
// the thread that owns the toolkit.
std::vector<HWND>& overHosts() {
    static std::vector<HWND> windows;
    return windows;
}
HHOOK& destructionHook() {
    static HHOOK hook = nullptr;
    return hook;
}

// An owner takes what it owns along when it is destroyed. A host may close its window while the
// operator searches (a session that expires): the search goes on without an owner.
LRESULT CALLBACK beforeDestruction(int code, WPARAM window, LPARAM parameter) {
    if (code == HCBT_DESTROYWND)
        for (HWND modal : overHosts())
            if (reinterpret_cast<WPARAM>(GetWindow(modal, GW_OWNER)) == window)
                SetWindowLongPtrW(modal, GWLP_HWNDPARENT, 0);
    return CallNextHookEx(nullptr, code, window, parameter);
}

void surviveOwner(HWND modal) {
    overHosts().push_back(modal);
    if (destructionHook() == nullptr)
        destructionHook() =
            SetWindowsHookExW(WH_CBT, beforeDestruction, nullptr, GetCurrentThreadId());
}
void forgetOwner(HWND modal) {
    if (std::erase(overHosts(), modal) == 0 || !overHosts().empty()) return;
    UnhookWindowsHookEx(destructionHook());
    destructionHook() = nullptr;
}

} // namespace

HostWindows::Disabled HostWindows::disable(void* window) {
    EnableWindow(static_cast<HWND>(window), FALSE);
    return {window, 0};
}

// The active window is one of this thread's or none; one of the toolkit's may be hidden and wait
// for its deletion. An owned window stays over its owner, goes to the icon with it and gives the
// focus back to it.
void HostWindows::takeInputFor(wxTopLevelWindow& modal) {
    const HWND owner = GetActiveWindow();
    if (IsWindowVisible(owner) != 0 && owner != modal.GetHandle()) {
        SetWindowLongPtrW(modal.GetHandle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
        if (!isToolkits(owner)) {
            modal_ = modal.GetHandle();
            surviveOwner(modal.GetHandle());
        }
    }
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
    forgetOwner(static_cast<HWND>(std::exchange(modal_, nullptr)));
}

// Every thread of Windows has an event queue of its own.
bool eventsRunOnAnotherThread() {
    return false;
}

} // namespace norvel::controls
