#include "platform/controls/Keyboard.h"

namespace norvel::controls {

void travelByTab(wxTopLevelWindow&) {}
void forgetTypedCharacter(const wxWindow&) {}

} // namespace norvel::controls
