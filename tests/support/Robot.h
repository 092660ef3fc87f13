// The operator of window tests: presses real keys and moves the real mouse of the virtual display.
#pragma once

#include "tests/support/Patience.h"

#include <wx/gdicmn.h>
#include <wx/uiaction.h>

#include <functional>
#include <string_view>

class wxTopLevelWindow;
class wxWindow;

namespace norvel::tests {

// Every action returns when the events it caused have been handled (see pump). Points are pixels of
// the given window's client area; a window that is not shown on screen is a test failure. Use it
// on the thread that owns the toolkit, from a test's body or from a Script's step.
class Robot {
  public:
    // --- keys: they go to whatever has the keyboard focus ---
    // A key with modifiers: press(WXK_RETURN), press('A', wxMOD_CONTROL), press(WXK_TAB,
    // wxMOD_SHIFT).
    void press(int key, int modifiers = wxMOD_NONE);
    // Several times the same key.
    void pressTimes(int times, int key, int modifiers = wxMOD_NONE);
    // Any Unicode text (UTF-8), a key press for each character: type("Forlì 12 €").
    // '\n' is Enter, '\t' is Tab.
    void type(std::string_view text);

    // --- mouse ---
    void moveTo(const wxWindow& window, wxPoint at);
    // Never the second half of a double click, however fast it follows another.
    void click(const wxWindow& window, wxPoint at, int modifiers = wxMOD_NONE);
    void doubleClick(const wxWindow& window, wxPoint at);
    void rightClick(const wxWindow& window, wxPoint at);
    // Presses the left button at from, moves in steps to to, releases.
    void drag(const wxWindow& window, wxPoint from, wxPoint to, int modifiers = wxMOD_NONE);
    // The halves of a drag, for tests that look at what happens in between.
    void buttonDown(const wxWindow& window, wxPoint at);
    void buttonUp();
    // Notches of the wheel at a point: positive towards the operator (the view scrolls down).
    void wheel(const wxWindow& window, wxPoint at, int notches, int modifiers = wxMOD_NONE);

    // --- time ---
    // Handles events until none has come for a short while, at most half a second.
    void pump();
    // Handles events for so long, whatever comes.
    void pumpFor(int milliseconds);
    // Handles events until the condition holds; false when it did not within the time.
    bool waitUntil(const std::function<bool()>& condition, int milliseconds = patience);

    // Shows a top-level window in front, where it was put, and waits until it is active and
    // painted.
    void show(wxTopLevelWindow& window);
    // Gives the window the keyboard focus and waits until it has it.
    void focus(wxWindow& window);
    // Waits until the window is shown, active and painted; a failure is reported as a test failure.
    bool waitForActive(wxWindow& window, int milliseconds = patience);

    // True while some action of a robot handles events.
    static bool pumping();
    // True while it has been inside one event for longer than that: the event opened a menu, a box
    // or a modal window, which waits for the operator. Script uses it.
    static bool blockedInEvent(int milliseconds);

  private:
    void separatePresses();
    void holdModifiers(int modifiers, bool down);
    void settleMouse(const wxWindow& window, wxPoint at);
    void dragFree(const wxWindow& window, wxPoint from, wxPoint to);
    void dragHeld(const wxWindow& window, wxPoint from, wxPoint to);
    wxUIActionSimulator simulator_;
};

} // namespace norvel::tests
