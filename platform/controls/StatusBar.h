// A status bar of text panels.
#pragma once

#include "platform/runtime/Api.h"

#include <wx/control.h>

#include <string>
#include <vector>

namespace norvel::controls {

class NR_API StatusBar : public wxControl {
  public:
    explicit StatusBar(wxWindow* parent, int panels = 1);
    // Panels are numbered from 1, as hosts know them. Errore 35600 ("Indice fuori dai limiti")
    // otherwise.
    const std::string& PanelText(int panel) const;
    void SetPanelText(int panel, const std::string& text);
    int HeightTwips() const; // from the font

  private:
    std::vector<std::string> texts_;
};

} // namespace norvel::controls
