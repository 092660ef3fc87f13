#include "tests/support/Devices.h"

#include <wx/msw/private.h>

#include <vector>

namespace norvel::tests {

namespace {

bool send(std::vector<INPUT> inputs) {
    return SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) ==
           inputs.size();
}

INPUT unit(char16_t code, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = code;
    input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    return input;
}

INPUT mouse(DWORD flags, LONG x, LONG y, LONG data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.mouseData = static_cast<DWORD>(data);
    input.mi.dwFlags = flags;
    return input;
}

// Absolute places are told in 65536ths of the screen.
LONG share(int pixel, int metric) {
    return static_cast<LONG>((pixel * 65536LL + 32768) / GetSystemMetrics(metric));
}

} // namespace

// The system takes characters as they are, in units of UTF-16.
bool pressCharacter(char32_t character) {
    std::vector<INPUT> inputs;
    const auto add = [&inputs](char32_t code) {
        inputs.push_back(unit(static_cast<char16_t>(code), 0));
        inputs.push_back(unit(static_cast<char16_t>(code), KEYEVENTF_KEYUP));
    };
    if (character >= 0x10000) {
        add(0xD800 + ((character - 0x10000) >> 10));
        add(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
        add(character);
    }
    return send(inputs);
}

bool moveMouse(int x, int y) {
    return send({mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, share(x, SM_CXSCREEN),
                       share(y, SM_CYSCREEN), 0)});
}

bool mouseIsAt(int x, int y) {
    POINT at{};
    return GetCursorPos(&at) != 0 && at.x == x && at.y == y;
}

bool turnWheel(bool towards, int notches) {
    for (int i = 0; i < notches; ++i)
        if (!send({mouse(MOUSEEVENTF_WHEEL, 0, 0, towards ? -WHEEL_DELTA : WHEEL_DELTA)}))
            return false;
    return true;
}

bool systemReadsInput() {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    if (GetGUIThreadInfo(GetCurrentThreadId(), &state) == 0) return false;
    if ((state.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_INMOVESIZE)) != 0) return true;
    return state.hwndActive != nullptr && wxFindWinFromHandle(state.hwndActive) == nullptr;
}
bool onlyTimersWait() {
    MSG message;
    return PeekMessageW(&message, nullptr, 0, WM_TIMER - 1, PM_NOREMOVE) == 0 &&
           PeekMessageW(&message, nullptr, WM_TIMER + 1, 0xFFFFFFFF, PM_NOREMOVE) == 0;
}
int dispatchDepth() {
    return -1;
}
bool buttonMayBeHeld() {
    return true;
}

} // namespace norvel::tests
