// What the keyboard does of itself on one system and not on another.
#pragma once

#include "platform/runtime/Api.h"

class wxTopLevelWindow;
class wxWindow;

namespace norvel::controls {

// Lets Tab and Shift+Tab go round a window's parts, in the order of their creation, also where the
// toolkit does that for dialogs alone (Windows). For the length of the window's life.
NR_API void travelByTab(wxTopLevelWindow& top);

// For a key that opens a menu: on Windows its character is still to come, and would be the menu's.
void forgetTypedCharacter(const wxWindow& window);

} // namespace norvel::controls
