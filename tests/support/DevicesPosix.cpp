#include "tests/support/Devices.h"

#include <array>
#include <chrono>
#include <deque>
#include <dlfcn.h>
#include <map>
#include <thread>

namespace norvel::tests {

namespace {

using KeySym = unsigned long;

// The few calls of the X libraries that this needs, taken from the libraries that the toolkit has
// loaded already, so that tests need no headers of X (signatures: Xlib.h, XTest.h).
struct XCalls {
    void* (*openDisplay)(const char*) = nullptr;
    int (*displayKeycodes)(void*, int*, int*) = nullptr;
    KeySym* (*getKeyboardMapping)(void*, unsigned char, int, int*) = nullptr;
    int (*changeKeyboardMapping)(void*, int, int, KeySym*, int) = nullptr;
    int (*sync)(void*, int) = nullptr;
    int (*free)(void*) = nullptr;
    int (*fakeKeyEvent)(void*, unsigned, int, unsigned long) = nullptr;
    int (*fakeButtonEvent)(void*, unsigned, int, unsigned long) = nullptr;
    int (*fakeMotionEvent)(void*, int, int, int, unsigned long) = nullptr;

    template <class Function>
    static bool load(Function& function, const char* library, const char* name) {
        void* handle = dlopen(library, RTLD_LAZY);
        function = handle ? reinterpret_cast<Function>(dlsym(handle, name)) : nullptr;
        return function != nullptr;
    }
    bool loadAll() {
        const char* x11 = "libX11.so.6";
        return load(openDisplay, x11, "XOpenDisplay") &&
               load(displayKeycodes, x11, "XDisplayKeycodes") &&
               load(getKeyboardMapping, x11, "XGetKeyboardMapping") &&
               load(changeKeyboardMapping, x11, "XChangeKeyboardMapping") &&
               load(sync, x11, "XSync") && load(free, x11, "XFree") &&
               load(fakeKeyEvent, "libXtst.so.6", "XTestFakeKeyEvent") &&
               load(fakeButtonEvent, "libXtst.so.6", "XTestFakeButtonEvent") &&
               load(fakeMotionEvent, "libXtst.so.6", "XTestFakeMotionEvent");
    }
};

// A connection of its own to the display. The spare keys of the keyboard keep what is put on them
// until all are in use, so that the application looks a key up while it still means what it meant.
class Devices {
  public:
    Devices() {
        if (!x_.loadAll()) return;
        display_ = x_.openDisplay(nullptr);
        if (display_ != nullptr) findSpares();
    }

    bool press(char32_t character) {
        if (!ready() || spares_.empty()) return false;
        const unsigned key = keyFor(character);
        x_.fakeKeyEvent(display_, key, 1, 0);
        x_.fakeKeyEvent(display_, key, 0, 0);
        x_.sync(display_, 0);
        return true;
    }

    bool moveMouse(int x, int y) {
        if (!ready()) return false;
        x_.fakeMotionEvent(display_, -1, x, y, 0); // -1: the screen it is on
        x_.sync(display_, 0);
        return true;
    }

    // Buttons 4 and 5 are the wheel's notches.
    bool turnWheel(bool towards, int notches) {
        if (!ready()) return false;
        const unsigned button = towards ? 5 : 4;
        for (int i = 0; i < notches; ++i) {
            x_.fakeButtonEvent(display_, button, 1, 0);
            x_.fakeButtonEvent(display_, button, 0, 0);
        }
        x_.sync(display_, 0);
        return true;
    }

  private:
    bool ready() const {
        return display_ != nullptr && x_.sync != nullptr && x_.fakeKeyEvent != nullptr &&
               x_.fakeButtonEvent != nullptr && x_.fakeMotionEvent != nullptr;
    }

    // Keyboard symbols of Unicode characters: Latin-1 as they are, the rest above 0x1000000
    // (X Window System Protocol, appendix A).
    static KeySym symbolOf(char32_t character) {
        return character <= 0xFF ? character : 0x1000000U + character;
    }

    void findSpares() {
        int first = 0;
        int last = 0;
        int perKey = 0;
        x_.displayKeycodes(display_, &first, &last);
        const int count = last - first + 1;
        KeySym* symbols =
            x_.getKeyboardMapping(display_, static_cast<unsigned char>(first), count, &perKey);
        for (int key = 0; key < count; ++key) {
            bool spare = true;
            for (int i = 0; i < perKey; ++i)
                spare &= symbols[key * perKey + i] == 0;
            if (spare) spares_.push_back(static_cast<unsigned>(first + key));
        }
        x_.free(symbols);
    }

    unsigned keyFor(char32_t character) {
        if (const auto known = assigned_.find(character); known != assigned_.end())
            return known->second;
        const unsigned key = spares_.front();
        spares_.pop_front();
        spares_.push_back(key);
        std::erase_if(assigned_, [&](const auto& entry) { return entry.second == key; });
        std::array<KeySym, 2> symbols{symbolOf(character), symbolOf(character)};
        x_.changeKeyboardMapping(display_, static_cast<int>(key), 2, symbols.data(), 1);
        x_.sync(display_, 0);
        assigned_[character] = key;
        // The application reads its keyboard again when it is told of the change.
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        return key;
    }

    XCalls x_;
    void* display_ = nullptr;
    std::deque<unsigned> spares_;
    std::map<char32_t, unsigned> assigned_;
};

Devices& devices() {
    static Devices only;
    return only;
}

} // namespace

bool pressCharacter(char32_t character) {
    return devices().press(character);
}

bool moveMouse(int x, int y) {
    return devices().moveMouse(x, y);
}

// The X server keeps the order of what was sent to it.
bool mouseIsAt(int, int) {
    return true;
}

bool turnWheel(bool towards, int notches) {
    return devices().turnWheel(towards, notches);
}

bool systemReadsInput() {
    return false;
}
bool onlyTimersWait() {
    return false;
}
// One dispatch of GTK's loop handles several events, so the time that it lasts tells nothing.
int dispatchDepth() {
    static const auto depth = reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "g_main_depth"));
    return depth ? depth() : -1;
}
bool buttonMayBeHeld() {
    return false;
}

} // namespace norvel::tests
