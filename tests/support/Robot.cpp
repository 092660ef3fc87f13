#include "tests/support/Robot.h"

#include "tests/support/Devices.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/window.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace norvel::tests {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// When the event that is being handled inside a pump began; empty between events.
std::optional<Clock::time_point> eventBegan;
int pumps = 0;      // one inside the other
int pumpDepth = -1; // dispatches around the innermost pump, where the system tells

// One turn of the event loop, whichever is running; one of its own where none is.
class Turn {
  public:
    Turn() : outerDepth_(pumpDepth) {
        ++pumps;
        pumpDepth = dispatchDepth();
        loop_ = wxEventLoopBase::GetActive();
        if (loop_ != nullptr) return;
        own_ = std::make_unique<wxGUIEventLoop>();
        activator_ = std::make_unique<wxEventLoopActivator>(own_.get());
        loop_ = own_.get();
    }
    ~Turn() {
        --pumps;
        pumpDepth = outerDepth_;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    // Handles what waits; true when there was anything.
    bool handle() {
        if (systemReadsInput()) return false;
        bool any = false;
        while (loop_->Pending()) {
            any |= !onlyTimersWait();
            const auto outer = eventBegan;
            eventBegan = Clock::now();
            loop_->Dispatch();
            eventBegan = outer;
        }
        if (wxTheApp != nullptr && wxTheApp->HasPendingEvents()) {
            any = true;
            wxTheApp->ProcessPendingEvents();
        }
#ifdef __WXMSW__ // elsewhere idle time is an event like others
        if (!any && wxTheApp != nullptr) wxTheApp->ProcessIdle();
#endif
        return any;
    }
    // Lets a little time pass.
    void rest(milliseconds time) {
        wxMilliSleep(static_cast<unsigned long>(time.count()));
    }

  private:
    int outerDepth_;
    wxEventLoopBase* loop_ = nullptr;
    std::unique_ptr<wxGUIEventLoop> own_;
    std::unique_ptr<wxEventLoopActivator> activator_;
};

// The middle of a logical pixel of a window's client area, on the screen.
wxPoint devicePixels(const wxWindow& window, wxPoint at) {
    const wxPoint place = window.ClientToScreen(at);
    const double scale = window.GetContentScaleFactor();
    return {static_cast<int>((place.x + 0.5) * scale), static_cast<int>((place.y + 0.5) * scale)};
}

void putMouse(const wxWindow& window, wxPoint at) {
    EXPECT_TRUE(window.IsShownOnScreen()) << "The robot was sent to a window that is not shown";
    const wxPoint place = devicePixels(window, at);
    EXPECT_TRUE(moveMouse(place.x, place.y)) << "no mouse";
}

constexpr int dragSteps = 8;
wxPoint between(wxPoint from, wxPoint to, int step) {
    const wxPoint distance = to - from;
    return from + wxPoint(distance.x * step / dragSteps, distance.y * step / dragSteps);
}

// Two presses at about one place within this time are a double click (the defaults of GTK are 400
// ms and 5 pixels, of Windows 500 ms and 4 pixels).
#ifdef __WXMSW__
constexpr milliseconds doubleClickTime{550};
#else
constexpr milliseconds doubleClickTime{450};
#endif
constexpr int doubleClickDistance = 8;
Clock::time_point lastPress;
wxPoint lastPressAt;

// The next character of a UTF-8 text that is known to be valid.
char32_t nextCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length && i < text.size(); ++i)
        character = (character << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    text.remove_prefix(std::min(length, text.size()));
    return character;
}

} // namespace

void Robot::press(int key, int modifiers) {
    EXPECT_TRUE(simulator_.Char(key, modifiers)) << "The key was not pressed: " << key;
    pump();
}

void Robot::pressTimes(int times, int key, int modifiers) {
    for (int i = 0; i < times; ++i)
        press(key, modifiers);
}

void Robot::type(std::string_view text) {
    while (!text.empty()) {
        const char32_t character = nextCharacter(text);
        if (character == U'\n')
            press(WXK_RETURN);
        else if (character == U'\t')
            press(WXK_TAB);
        else
            EXPECT_TRUE(pressCharacter(character)) << "no key for a character";
        pump();
    }
}

void Robot::holdModifiers(int modifiers, bool down) {
    for (const auto& [bit, key] :
         {std::pair{wxMOD_CONTROL, WXK_CONTROL}, std::pair{wxMOD_SHIFT, WXK_SHIFT},
          std::pair{wxMOD_ALT, WXK_ALT}}) {
        if ((modifiers & bit) == 0) continue;
        if (down)
            simulator_.KeyDown(key);
        else
            simulator_.KeyUp(key);
    }
}

// Lets the time go in which a press here would make a double click of the last one.
void Robot::separatePresses() {
    const auto since = std::chrono::duration_cast<milliseconds>(Clock::now() - lastPress);
    const wxPoint place = wxGetMousePosition();
    const wxPoint distance = place - lastPressAt;
    if (since < doubleClickTime && std::abs(distance.x) <= doubleClickDistance &&
        std::abs(distance.y) <= doubleClickDistance)
        pumpFor(static_cast<int>((doubleClickTime - since).count()));
    lastPress = Clock::now();
    lastPressAt = place;
}

// In two moves, as a hand does: the first may only tell the window that the mouse came in.
void Robot::moveTo(const wxWindow& window, wxPoint at) {
    putMouse(window, at + wxPoint(1, 0));
    settleMouse(window, at);
    pump();
}

// Until the mouse stays there: the system may answer with an older place meanwhile.
void Robot::settleMouse(const wxWindow& window, wxPoint at) {
    const wxPoint place = devicePixels(window, at);
    putMouse(window, at);
    int steady = 0;
    const auto there = [&] {
        if (mouseIsAt(place.x, place.y)) return ++steady == 3;
        steady = 0;
        moveMouse(place.x, place.y);
        return false;
    };
    waitUntil(there, 1000);
}

void Robot::click(const wxWindow& window, wxPoint at, int modifiers) {
    moveTo(window, at);
    separatePresses();
    holdModifiers(modifiers, true);
    simulator_.MouseClick();
    holdModifiers(modifiers, false);
    pump();
}

void Robot::doubleClick(const wxWindow& window, wxPoint at) {
    moveTo(window, at);
    separatePresses();
    simulator_.MouseDblClick();
    pump();
}

void Robot::rightClick(const wxWindow& window, wxPoint at) {
    moveTo(window, at);
    simulator_.MouseClick(wxMOUSE_BTN_RIGHT);
    pump();
}

void Robot::buttonDown(const wxWindow& window, wxPoint at) {
    moveTo(window, at);
    separatePresses();
    simulator_.MouseDown();
    pump();
}

void Robot::buttonUp() {
    simulator_.MouseUp();
    pump();
}

void Robot::dragFree(const wxWindow& window, wxPoint from, wxPoint to) {
    simulator_.MouseDown();
    pump();
    for (int i = 1; i <= dragSteps; ++i) {
        putMouse(window, between(from, to, i));
        pump();
    }
    settleMouse(window, to);
    simulator_.MouseUp();
}

// By another hand: this one may be inside the press until the button is let go.
void Robot::dragHeld(const wxWindow& window, wxPoint from, wxPoint to) {
    constexpr milliseconds pace{60};
    std::vector<wxPoint> places;
    for (int i = 1; i <= dragSteps; ++i)
        places.push_back(devicePixels(window, between(from, to, i)));
    std::atomic<bool> over = false;
    std::thread hand([&] {
        wxUIActionSimulator mouse;
        mouse.MouseDown();
        for (const wxPoint& place : places) {
            std::this_thread::sleep_for(pace);
            moveMouse(place.x, place.y);
        }
        std::this_thread::sleep_for(pace);
        mouse.MouseUp();
        over = true;
    });
    waitUntil([&over] { return over.load(); });
    hand.join();
}

void Robot::drag(const wxWindow& window, wxPoint from, wxPoint to, int modifiers) {
    moveTo(window, from);
    separatePresses();
    holdModifiers(modifiers, true);
    if (buttonMayBeHeld())
        dragHeld(window, from, to);
    else
        dragFree(window, from, to);
    holdModifiers(modifiers, false);
    pump();
}

void Robot::wheel(const wxWindow& window, wxPoint at, int notches, int modifiers) {
    moveTo(window, at);
    holdModifiers(modifiers, true);
    EXPECT_TRUE(turnWheel(notches > 0, std::abs(notches))) << "no wheel";
    holdModifiers(modifiers, false);
    pump();
}

void Robot::pump() {
    Turn turn;
    const auto end = Clock::now() + milliseconds(500);
    int quiet = 0; // turns in which nothing came
    while (quiet < 5 && Clock::now() < end) {
        quiet = turn.handle() ? 0 : quiet + 1;
        turn.rest(milliseconds(4));
    }
}

void Robot::pumpFor(int time) {
    Turn turn;
    const auto end = Clock::now() + milliseconds(time);
    while (Clock::now() < end) {
        turn.handle();
        turn.rest(milliseconds(4));
    }
}

bool Robot::waitUntil(const std::function<bool()>& condition, int time) {
    Turn turn;
    const auto end = Clock::now() + milliseconds(time);
    while (!condition()) {
        if (Clock::now() > end) return false;
        if (!turn.handle()) turn.rest(milliseconds(4));
    }
    return true;
}

// Raised at once: a window manager may place a window that is only shown where it likes.
void Robot::show(wxTopLevelWindow& window) {
    window.Show();
    window.Raise();
    waitForActive(window);
}

void Robot::focus(wxWindow& window) {
    window.SetFocus();
    EXPECT_TRUE(waitUntil([&] { return window.HasFocus(); })) << "The window got no focus";
}

bool Robot::waitForActive(wxWindow& window, int time) {
    auto* top = wxDynamicCast(wxGetTopLevelParent(&window), wxTopLevelWindow);
    const bool active =
        waitUntil([&] { return window.IsShownOnScreen() && (!top || top->IsActive()); }, time);
    EXPECT_TRUE(active) << "The window did not become active";
    pump();
    return active;
}

bool Robot::pumping() {
    return pumps > 0;
}

// Whoever asks is called from a dispatch itself: the pump's own, or one within an event.
bool Robot::blockedInEvent(int time) {
    const int depth = dispatchDepth();
    if (depth >= 0 && depth <= pumpDepth + 1) return false;
    return eventBegan && Clock::now() - *eventBegan > milliseconds(time);
}

} // namespace norvel::tests
