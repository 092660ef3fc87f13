#include "tests/windows/hosts/Operator.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace norvel::tests {

namespace {

constexpr ULONGLONG patience = 60000;  // milliseconds that anything may take on a busy machine
constexpr ULONGLONG untilReady = 600;  // and the search window takes Enter
constexpr ULONGLONG untilAgain = 5000; // before what showed nothing is done once more
constexpr DWORD pause = 20;
constexpr int looksAtRest = 3; // a window that has not moved between so many has found its place

// A window that answers nobody has no text.
std::wstring textOf(HWND window) {
    constexpr UINT wait = 1000;
    std::wstring text(512, L'\0');
    DWORD_PTR units = 0;
    if (SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                            SMTO_ABORTIFHUNG, wait, &units) == 0)
        units = 0;
    text.resize(units);
    return text;
}

std::wstring classOf(HWND window) {
    std::wstring text(256, L'\0');
    text.resize(static_cast<std::size_t>(GetClassNameW(window, text.data(), 256)));
    return text;
}

struct Search {
    const std::wstring& title;
    HWND found = nullptr;
};

// Only windows that are shown are asked: a hidden one's thread may be waiting for this one.
BOOL CALLBACK compareTitle(HWND window, LPARAM pointer) {
    auto& search = *reinterpret_cast<Search*>(pointer); // NOLINT(performance-no-int-to-ptr)
    if (IsWindowVisible(window) == 0) return TRUE;
    std::wstring text(256, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 256)));
    if (text != search.title) return TRUE;
    search.found = window;
    return FALSE;
}

HWND visible(const std::wstring& title) {
    Search search{title};
    EnumWindows(compareTitle, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

BOOL CALLBACK collect(HWND window, LPARAM pointer) {
    auto& list =
        *reinterpret_cast<std::vector<HWND>*>(pointer); // NOLINT(performance-no-int-to-ptr)
    if (IsWindowVisible(window) != 0) list.push_back(window);
    return TRUE;
}

std::vector<HWND> parts(HWND window) {
    std::vector<HWND> list;
    EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&list));
    return list;
}

RECT placeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

void send(std::vector<INPUT> inputs) {
    if (SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) != inputs.size())
        throw std::runtime_error("the system took no input");
}

INPUT stroke(WORD key, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    return input;
}

INPUT mouse(DWORD flags, LONG x = 0, LONG y = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.dx = x;
    input.mi.dy = y;
    return input;
}

HWND focusOf(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    return state.hwndFocus;
}

// Absolute places are told in 65536ths of the screen.
LONG share(LONG pixel, int metric) {
    return (pixel * 65536 + 32768) / GetSystemMetrics(metric);
}

std::string narrow(const std::wstring& text) {
    std::string out;
    for (const wchar_t unit : text)
        out += unit < 128 ? static_cast<char>(unit) : '?';
    return out;
}

} // namespace

void waitUntil(const std::string& what, const std::function<bool()>& condition) {
    for (const ULONGLONG start = GetTickCount64(); !condition(); Sleep(pause))
        if (GetTickCount64() - start > patience)
            throw std::runtime_error("a minute is over: " + what);
}

void repeatUntil(const std::string& what, const std::function<void()>& action,
                 const std::function<bool()>& condition) {
    ULONGLONG next = 0;
    waitUntil(what, [&] {
        if (condition()) return true;
        if (GetTickCount64() >= next) {
            action();
            next = GetTickCount64() + untilAgain;
        }
        return false;
    });
}

void press(WORD key, int times) {
    for (int i = 0; i < times; ++i)
        send({stroke(key, true), stroke(key, false)});
}

void pressHolding(WORD held, WORD key) {
    send({stroke(held, true), stroke(key, true), stroke(key, false), stroke(held, false)});
}

bool Shown::isThere(const std::wstring& title) {
    return visible(title) != nullptr;
}

// The window manager may place it after it was shown.
Shown Shown::titled(const std::wstring& title, const std::function<void()>& ended) {
    HWND window = nullptr;
    RECT before{};
    int rests = 0;
    waitUntil("no window '" + narrow(title) + "' in front", [&] {
        window = visible(title);
        if (window == nullptr && ended) ended();
        if (window == nullptr || IsWindowEnabled(window) == 0) return false;
        if (GetForegroundWindow() != window) {
            SetForegroundWindow(window);
            return false;
        }
        const RECT now = placeOf(window);
        rests = EqualRect(&now, &before) != 0 ? rests + 1 : 0;
        before = now;
        return rests >= looksAtRest;
    });
    return Shown(window);
}

bool Shown::open() const {
    return IsWindowVisible(handle_) != 0;
}

void Shown::waitClosed() const {
    waitUntil("the window is still open", [this] { return !open(); });
}

// The largest part.
HWND Shown::rows() const {
    const auto all = parts(handle_);
    const auto area = [](HWND part) {
        const RECT place = placeOf(part);
        return (place.right - place.left) * (place.bottom - place.top);
    };
    return all.empty() ? nullptr : *std::ranges::max_element(all, {}, area);
}

// The part in the upper left corner that is lower than wide.
HWND Shown::toolbar() const {
    const auto all = parts(handle_);
    POINT corner{0, 0};
    ClientToScreen(handle_, &corner);
    const auto found = std::ranges::find_if(all, [&](HWND part) {
        const RECT place = placeOf(part);
        return place.left == corner.x && place.top == corner.y && part != rows();
    });
    if (found == all.end()) throw std::runtime_error("the window has no toolbar");
    return *found;
}

long Shown::spaceBelowRows() const {
    RECT inside{};
    GetClientRect(handle_, &inside);
    POINT bottom{0, inside.bottom};
    ClientToScreen(handle_, &bottom);
    return bottom.y - placeOf(rows()).bottom;
}

HWND Shown::button(const std::wstring& caption) const {
    const auto all = parts(handle_);
    const auto found = std::ranges::find(all, caption, textOf);
    if (found == all.end()) throw std::runtime_error("no button '" + narrow(caption) + "'");
    return *found;
}

void Shown::click(HWND part, int x, int y, int times) const {
    const RECT place = placeOf(part);
    std::vector<INPUT> inputs = {mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE,
                                       share(place.left + x, SM_CXSCREEN),
                                       share(place.top + y, SM_CYSCREEN))};
    for (int i = 0; i < times; ++i) {
        inputs.push_back(mouse(MOUSEEVENTF_LEFTDOWN));
        inputs.push_back(mouse(MOUSEEVENTF_LEFTUP));
    }
    send(inputs);
}

void Shown::clickMiddle(HWND part, int times) const {
    const RECT place = placeOf(part);
    click(part, (place.right - place.left) / 2, (place.bottom - place.top) / 2, times);
}

void Shown::endBy(const std::function<void()>& action) const {
    repeatUntil("the window is still open", action, [this] { return !open(); });
}

void Shown::chooseByEnter() const {
    waitUntil("the clock stands still", [this] { return GetTickCount64() >= since_ + untilReady; });
    endBy([] { press(VK_RETURN); });
}

void Shown::doubleClickARow() const {
    clickMiddle(rows(), 2);
}

void Shown::chooseByDoubleClick() const {
    endBy([this] { doubleClickARow(); });
}

void Shown::clickApri() const {
    click(toolbar(), 16, 16);
}

void Shown::leaveByButton() const {
    endBy([this] { clickMiddle(button(L"Chiudi")); });
}

Shown Shown::boxAfter(const std::function<void()>& action, const std::wstring& title) {
    repeatUntil("no box '" + narrow(title) + "'", action, [&] { return isThere(title); });
    return titled(title);
}

// A window that a box has just left takes input again a moment later.
void Shown::close() const {
    endBy([this] { PostMessageW(handle_, WM_SYSCOMMAND, SC_CLOSE, 0); });
}

void Shown::closeByKeys() const {
    endBy([] { pressHolding(VK_MENU, VK_F4); });
}

std::wstring Shown::words() const {
    std::wstring words;
    for (HWND part : parts(handle_))
        if (classOf(part) == L"Static") words += textOf(part);
    return words;
}

// The only button of a box is also the one that Esc presses, and may bear that number. By keys:
// under Wine the window manager now and then leaves a box no room for its buttons.
void Shown::answer(int button) const {
    std::vector<HWND> buttons = parts(handle_);
    std::erase_if(buttons, [](HWND part) { return classOf(part) != L"Button"; });
    const auto numbered = std::ranges::find(buttons, button, GetDlgCtrlID);
    if (numbered == buttons.end() && buttons.size() != 1)
        throw std::runtime_error("the box has no button " + std::to_string(button));
    const HWND chosen = numbered == buttons.end() ? buttons.front() : *numbered;
    endBy([&] {
        repeatUntil(
            "the button gets no focus", [] { press(VK_TAB); },
            [&] { return !open() || focusOf(handle_) == chosen; });
        if (open()) press(VK_SPACE);
    });
}

} // namespace norvel::tests
