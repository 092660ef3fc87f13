// What the toolkit's simulator cannot press: keys for characters that the keyboard of the virtual
// display does not have, the mouse wheel, and the mouse between the pixels of a scaled display.
// The X server's test extension does it, or the system's own input of Windows.
#pragma once

namespace norvel::tests {

// Presses and releases a key that gives this character, putting it on a spare key of the keyboard
// first where there is none. False when the display has no such extension.
bool pressCharacter(char32_t character);

// Puts the mouse at a place of the display, in device pixels.
bool moveMouse(int x, int y);
// Whether the mouse is there, as the system sees it: a busy Windows may still tell an older place.
bool mouseIsAt(int x, int y);

// Turns the wheel of the mouse by so many notches, towards the operator or away.
bool turnWheel(bool towards, int notches);

// True while a menu or box of the system's own reads the thread's input (Windows): it handles what
// comes by a loop of its own, from which nothing may be taken.
bool systemReadsInput();
// True where only ticks of timers wait to be handled, as far as the system tells (Windows).
bool onlyTimersWait();
// How many dispatches of events are under way, one inside the other, as far as the system tells
// (GTK); -1 elsewhere.
int dispatchDepth();
// True where pressing the mouse button may begin such a loop, which ends when it is let go (the
// scroll bars of Windows).
bool buttonMayBeHeld();

} // namespace norvel::tests
