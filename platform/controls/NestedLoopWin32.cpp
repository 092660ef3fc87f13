#include "platform/controls/NestedLoop.h"

#include <wx/msw/private.h>

// The toolkit's own, for which it has no header.
void wxSetKeyboardHook(bool set);
LRESULT APIENTRY wxKeyboardHook(int code, WPARAM key, LPARAM data);

namespace norvel::controls {

namespace {
int loops = 0; // one inside the other, on the thread that owns the toolkit
} // namespace

NestedLoop::NestedLoop() {
    if (++loops == 1) wxSetKeyboardHook(false);
}

NestedLoop::~NestedLoop() {
    if (--loops == 0) wxSetKeyboardHook(true);
    if (quit_) PostQuitMessage(*quit_);
}

bool NestedLoop::Dispatch() {
    MSG message{};
    if (!GetNextMessage(&message)) {
        quit_ = static_cast<int>(message.wParam);
        return false;
    }
    ProcessMessage(&message);
    return true;
}

bool NestedLoop::PreProcessMessage(WXMSG* message) {
    const bool key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
    if (key && wxKeyboardHook(HC_ACTION, message->wParam, message->lParam) != 0) return true;
    return wxGUIEventLoop::PreProcessMessage(message);
}

} // namespace norvel::controls
