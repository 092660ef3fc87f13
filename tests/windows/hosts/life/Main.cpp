// A host for what only a process of its own can try: host_life AWARENESS [END]
// AWARENESS of the screen's resolution: unaware, system, monitor, monitor2 (the second kind).
// END, as soon as the search window is shown: quit (its message loop is told to end), exit (the
// C library ends the program), process (the system does), terminate (nobody gets a word in).
// Searches a hundred rows with a window of its own in front and writes the place of the search
// window as this host sees it, in pixels, and the answer; after quit, the code that its message
// loop was told. Exit status: 0; 1 where a call failed; 7 for an END that ends it.
#include "tests/windows/hosts/CppHost.h"

#include <cstdio>
#include <cstdlib>
#include <objbase.h>
#include <optional>
#include <string_view>

namespace {

using namespace norvel;
using tests::HostWindow;

constexpr int endStatus = 7;
constexpr int quitCode = 5;

// A thread's awareness is its windows', whatever the program's; Windows 10 has it. The contexts are
// numbered -1 to -4 (windef.h).
bool setAwareness(std::string_view wanted) {
    using Set = LONG_PTR(WINAPI*)(LONG_PTR);
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    const auto set = reinterpret_cast<Set>(
        reinterpret_cast<void*>(GetProcAddress(user32, "SetThreadDpiAwarenessContext")));
    LONG_PTR context = 0;
    for (const std::string_view name : {"unaware", "system", "monitor", "monitor2"}) {
        --context;
        if (wanted == name) return set != nullptr && set(context) != 0;
    }
    return false;
}

void endAs(std::string_view how) {
    if (how == "quit") PostQuitMessage(quitCode);
    if (how == "exit") std::exit(endStatus); // NOLINT(concurrency-mt-unsafe): what is tried here
    if (how == "process") ExitProcess(endStatus);
    if (how == "terminate") TerminateProcess(GetCurrentProcess(), endStatus);
}

// What the host's message loop is told next, if it is to end.
void writeQuit() {
    MSG message{};
    if (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0)
        std::printf("quit %d\n", static_cast<int>(message.wParam));
}

int searchOnce(std::string_view end) {
    RECT place{};
    bool seen = false;
    std::optional<HostWindow> window;
    window.emplace([&] {
        const HWND shown = FindWindowW(nullptr, tests::caption.c_str());
        if (seen || shown == nullptr || IsWindowVisible(shown) == 0) return;
        seen = true;
        GetWindowRect(shown, &place);
        if (end == "window") DestroyWindow(window->handle());
        endAs(end);
    });
    const com::ComPtr<_Ricerca> ricerca = tests::createRicerca();
    if (!ricerca) return 1;
    tests::prepare(*ricerca.get(), tests::clients(100));
    VARIANT result;
    VariantInit(&result);
    if (FAILED(ricerca->Ricerca(&result))) return 1;
    std::printf("%ldx%ld\n%ls\n", place.right - place.left, place.bottom - place.top,
                tests::answerOf(*ricerca.get()).c_str());
    writeQuit();
    return IsWindowEnabled(window->handle()) != 0 || end == "window" ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || !setAwareness(argv[1])) {
        std::fprintf(stderr, "host_life: which awareness?\n");
        return 1;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int status = searchOnce(argc > 2 ? argv[2] : "");
    CoUninitialize();
    return status;
}
