// What the toolkit's simulator cannot press: keys for characters that the keyboard of the virtual
// display does not have, the mouse wheel, and the mouse between the pixels of a scaled display
// (X11).
#pragma once

namespace norvel::tests {

// Presses and releases a key that gives this character, putting it on a spare key of the keyboard
// first where there is none. False when the display has no such extension.
bool pressCharacter(char32_t character);

// Puts the mouse at a place of the display, in device pixels.
bool moveMouse(int x, int y);

// Turns the wheel of the mouse by so many notches, towards the operator or away.
bool turnWheel(bool towards, int notches);

} // namespace norvel::tests
