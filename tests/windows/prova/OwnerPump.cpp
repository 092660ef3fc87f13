#include "tests/windows/prova/OwnerPump.h"

#include "platform/adodb/ado/Com.h"
#include "platform/runtime/OwnerQueue.h"

namespace norvel::prova {

namespace {

constexpr UINT runQueue = WM_APP + 1;
constexpr auto className = L"NorvelProvaCoda";
HWND window = nullptr;

LRESULT CALLBACK procedure(HWND target, UINT message, WPARAM w, LPARAM l) {
    if (message != runQueue) return DefWindowProcW(target, message, w, l);
    runOwnerQueue();
    return 0;
}

} // namespace

void startOwnerPump() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.lpszClassName = className;
    kind.hInstance = GetModuleHandleW(nullptr);
    RegisterClassW(&kind);
    window = CreateWindowExW(0, className, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             kind.hInstance, nullptr);
    setOwnerWaker([target = window] { PostMessageW(target, runQueue, 0, 0); });
}

void stopOwnerPump() {
    setOwnerWaker({});
    DestroyWindow(window);
    UnregisterClassW(className, GetModuleHandleW(nullptr)); // its procedure may be unloaded
    window = nullptr;
}

} // namespace norvel::prova
