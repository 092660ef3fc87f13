// What the controls of the configuration window do alike under mouse and keyboard.
#pragma once

#include <functional>

class wxListBox;
class wxStaticText;
class wxTextCtrl;
class wxWindow;

namespace norvel::views {

// A double click on an entry, or Enter while one is selected.
void suDoppioClicOInvio(wxListBox& lista, const std::function<void()>& fai);

// A double click on a label, also where labels hear nothing of the mouse and their page does.
void suDoppioClic(wxStaticText& etichetta, const std::function<void()>& fai);

// Ctrl+A selects all of a text box, also where the system's own does not know it.
void tuttoConCtrlA(wxTextCtrl& casella);

// Enables a control, or disables it; the focus that it has goes to the other one then.
void abilita(wxWindow& parte, bool attiva, wxWindow& altra);

} // namespace norvel::views
