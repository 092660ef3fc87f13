// A host program that knows nothing of the toolkit: each mode does what one test looks at, says
// what it saw on standard output, and ends by returning from main() without any clean-up.
#include "tests/platform/controls/start/Guest.h"

#include <atomic>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <map>
#include <string>
#include <thread>

namespace {

int report(const char* what, int answer) {
    std::printf("%s: %d %s\n", what, answer, guestError());
    std::fflush(stdout);
    return answer;
}

void onThread(const std::function<void()>& work) {
    std::thread(work).join();
}

void threadsInTurn() {
    for (int turn = 0; turn < 6; ++turn) {
        onThread([] {
            report("first", guestShowWindow(150) > 0 ? 1 : 0);
            report("owns", guestOwns());
        });
        report("main owns", guestOwns());
        onThread([] { report("second", guestShowWindow(150) > 0 ? 1 : 0); });
        if (turn % 2 == 0) report("main", guestShowWindow(150) > 0 ? 1 : 0);
    }
}

void localeKept() {
    std::setlocale(LC_ALL, "C.UTF-8");
    std::setlocale(LC_NUMERIC, "C");
    const std::string before = std::setlocale(LC_ALL, nullptr);
    report("start", guestStart());
    report("start kept", before == std::setlocale(LC_ALL, nullptr) ? 1 : 0);
    report("window", guestShowWindow(150) > 0 ? 1 : 0);
    report("window kept", before == std::setlocale(LC_ALL, nullptr) ? 1 : 0);
}

void noDisplayThenOne() {
    const char* display = std::getenv("DISPLAY");
    const std::string name = display != nullptr ? display : "";
    unsetenv("DISPLAY");
    report("without", guestStart());
    report("again", guestStart());
    setenv("DISPLAY", ":4093", 1);
    report("wrong", guestStart());
    setenv("DISPLAY", name.c_str(), 1);
    report("with", guestShowWindow(150) > 0 ? 1 : 0);
}

// A thread that runs GTK's event loop, as a host with windows of its own does.
void foreignLoop() {
    auto iterate =
        reinterpret_cast<int (*)(void*, int)>(dlsym(RTLD_DEFAULT, "g_main_context_iteration"));
    std::atomic<bool> over = false;
    std::thread loop([&] {
        auto acquire =
            reinterpret_cast<int (*)(void*)>(dlsym(RTLD_DEFAULT, "g_main_context_acquire"));
        acquire(nullptr);
        while (!over) {
            iterate(nullptr, 0);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    report("start", guestStart());
    over = true;
    loop.join();
}

// A host with a window of its own inside gtk_main(), which opens the modal window from a timer.
struct GtkHost {
    template <class Function>
    static Function call(const char* name) {
        return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
    }
    void* window = nullptr;
    bool loopEnded = false;

    void say(const char* when) const {
        const bool sensitive = call<int (*)(void*)>("gtk_widget_get_sensitive")(window) != 0;
        std::printf("%s: %s\n", when, sensitive ? "sensitive" : "insensitive");
    }
    static int look(void* self) {
        static_cast<GtkHost*>(self)->say("modal");
        return 0;
    }
    static int open(void* self) {
        auto* host = static_cast<GtkHost*>(self);
        host->say("before");
        call<unsigned (*)(unsigned, int (*)(void*), void*)>("g_timeout_add")(100, look, self);
        report("shown", guestShowWindow(300) > 0 ? 1 : 0);
        host->say("after");
        call<unsigned (*)(unsigned, int (*)(void*), void*)>("g_timeout_add")(200, end, self);
        return 0;
    }
    static int end(void* self) {
        auto* host = static_cast<GtkHost*>(self);
        std::printf("host loop: %s\n", host->loopEnded ? "ended" : "still running");
        call<void (*)()>("gtk_main_quit")();
        return 0;
    }
};

void gtkHost() {
    GtkHost host;
    GtkHost::call<int (*)(int*, char***)>("gtk_init_check")(nullptr, nullptr);
    host.window = GtkHost::call<void* (*)(int)>("gtk_window_new")(0);
    GtkHost::call<void (*)(void*)>("gtk_widget_show")(host.window);
    GtkHost::call<unsigned (*)(unsigned, int (*)(void*), void*)>("g_timeout_add")(
        100, GtkHost::open, &host);
    GtkHost::call<void (*)()>("gtk_main")();
    host.loopEnded = true;
}

const std::map<std::string, std::function<void()>> modes{
    {"threads", threadsInTurn},
    {"locale", localeKept},
    {"display", noDisplayThenOne},
    {"busy", [] { report("busy", guestShowWindowWhileOtherThreadTries(400) > 0 ? 1 : 0); }},
    {"use", [] { report("use", guestShowWindow(150) > 0 ? 1 : 0); }},
    {"open", [] { report("open", guestLeaveWindowOpen()); }},
    {"exit-in-thread",
     [] {
         report("use", guestShowWindow(150) > 0 ? 1 : 0);
         onThread([] { std::exit(0); }); // NOLINT(concurrency-mt-unsafe): what such a host does
     }},
    {"foreign-loop", foreignLoop},
    {"gtk-host", gtkHost},
    {"modeless",
     [] {
         report("open", guestLeaveWindowOpen());
         onThread([] { report("elsewhere", guestStart()); });
     }},
    {"thread-only", [] { onThread([] { report("use", guestShowWindow(150) > 0 ? 1 : 0); }); }},
};

} // namespace

int main(int argc, char** argv) {
    const auto mode = modes.find(argc > 1 ? argv[1] : "");
    if (mode == modes.end()) return 2;
    mode->second();
    return 0;
}
