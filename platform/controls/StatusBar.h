// A status bar of text panels.
#pragma once

#include "platform/runtime/Api.h"

#include <wx/control.h>

#include <string>
#include <vector>

namespace norvel::controls {

// The first panel takes the room that the others leave; they are as wide as their texts, and not
// there while they have none. Where all do not fit, the others give way to the first one's text,
// up to half of the bar. The height follows from the font: give the bar HeightTwips() and no text
// is clipped, at any scale and font.
class NR_API StatusBar : public wxControl {
  public:
    explicit StatusBar(wxWindow* parent, int panels = 1);
    // Panels are numbered from 1, as hosts know them. Errore 35600 ("Indice fuori dai limiti")
    // otherwise.
    const std::string& PanelText(int panel) const;
    void SetPanelText(int panel, const std::string& text);
    int HeightTwips() const; // from the font
    // Where a panel stands, in client pixels.
    wxRect PanelRect(int panel) const;

    bool AcceptsFocus() const override { return false; }

  protected:
    wxSize DoGetBestClientSize() const override;

  private:
    std::size_t indexOf(int panel) const;
    double scale() const;
    int heightPixels() const;
    int textWidth(std::size_t index) const;
    int panelWidth(std::size_t index) const;
    void paint();
    std::vector<std::string> texts_;
};

} // namespace norvel::controls
