#include "platform/controls/StatusBar.h"

#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"
#include "platform/runtime/Twips.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

namespace norvel::controls {

StatusBar::StatusBar(wxWindow* parent, int panels)
    : wxControl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE),
      texts_(static_cast<std::size_t>(panels)) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
}

const std::string& StatusBar::PanelText(int panel) const {
    if (panel < 1 || panel > static_cast<int>(texts_.size()))
        throw Errore(35600, "Indice fuori dai limiti");
    return texts_[static_cast<std::size_t>(panel) - 1];
}

void StatusBar::SetPanelText(int panel, const std::string& text) {
    if (PanelText(panel) == text) return;
    texts_[static_cast<std::size_t>(panel) - 1] = text;
    Refresh();
}

int StatusBar::HeightTwips() const {
    return (GetCharHeight() + 8) * 15;
}

} // namespace norvel::controls
