#include "platform/controls/Tip.h"
#include "platform/controls/WxText.h"

#include <wx/window.h>

namespace norvel::controls {

void setTip(wxWindow& window, const std::string& text, const wxRect&) {
    window.UnsetToolTip(); // takes one away that is on show
    if (!text.empty()) window.SetToolTip(toWx(text));
}

} // namespace norvel::controls
