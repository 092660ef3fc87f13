// The little modal window over something that takes time: a text, a bar, "Annulla".
#pragma once

#include <functional>
#include <string>

class wxWindow;

namespace norvel::search_window {

// What it tells.
struct StatoAttesa {
    std::string testo;
    double fatto = -1; // from 0 to 1; below 0 nobody knows, and the bar moves by itself
};

struct Attesa {
    const char* titolo = "";
    int pausa = 0;                      // milliseconds between two calls of passo
    std::function<bool()> passo;        // false: it was the last one
    std::function<StatoAttesa()> stato; // asked behind each
};

// Opens the window and returns when passo has answered false, or the operator took "Annulla": false
// then. The pointer over it is the ordinary one, whoever has made it the busy one. What passo or
// stato raises ends it and is raised here, as an Errore.
bool attendiConDialogo(wxWindow& parent, const Attesa& attesa);

} // namespace norvel::search_window
