// A page of the configuration window: title, description, and what stands below them.
#pragma once

#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>

namespace norvel::views {

// It scrolls where it has no room, and its long texts break their lines where it ends. Its controls
// are stops for the keyboard; the page itself never is, also where it has none: nobody would see
// where the keyboard is.
class PaginaConfigura : public wxScrolled<wxPanel> {
  public:
    PaginaConfigura(wxWindow* su, const char* titolo, const char* descrizione);

    wxSizer& Contenuto() { return *contenuto_; }
    int Spazio() const; // pixels between the parts of a page
    void AggiungiTesto(wxSizer& dove, const char* parole);

  private:
    void adattaTesti();

    wxSizer* contenuto_ = nullptr;
};

} // namespace norvel::views
