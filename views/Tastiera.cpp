#include "views/Tastiera.h"

#include <wx/listbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace norvel::views {

void suDoppioClicOInvio(wxListBox& lista, const std::function<void()>& fai) {
    lista.Bind(wxEVT_LISTBOX_DCLICK, [fai](wxCommandEvent&) { fai(); });
    lista.Bind(wxEVT_CHAR_HOOK, [&lista, fai](wxKeyEvent& event) {
        const int tasto = event.GetKeyCode();
        const bool invio = tasto == WXK_RETURN || tasto == WXK_NUMPAD_ENTER;
        if (invio && !event.HasAnyModifiers() && lista.GetSelection() >= 0)
            fai();
        else
            event.Skip();
    });
}

void suDoppioClic(wxStaticText& etichetta, const std::function<void()>& fai) {
    etichetta.Bind(wxEVT_LEFT_DCLICK, [fai](wxMouseEvent&) { fai(); });
    etichetta.GetParent()->Bind(wxEVT_LEFT_DCLICK, [&etichetta, fai](wxMouseEvent& event) {
        if (etichetta.GetRect().Contains(event.GetPosition()))
            fai();
        else
            event.Skip();
    });
}

void tuttoConCtrlA(wxTextCtrl& casella) {
    casella.Bind(wxEVT_CHAR_HOOK, [&casella](wxKeyEvent& event) {
        if (event.GetKeyCode() == 'A' && event.GetModifiers() == wxMOD_CONTROL)
            casella.SelectAll();
        else
            event.Skip();
    });
}

void abilita(wxWindow& parte, bool attiva, wxWindow& altra) {
    if (!attiva && parte.HasFocus()) altra.SetFocus();
    parte.Enable(attiva);
}

} // namespace norvel::views
