// The keys that stand for the toolbar's buttons. One table, walked by the window, its tips and the
// tests.
#pragma once

#include <wx/defs.h>
#include <wx/event.h>

#include <array>
#include <string>
#include <string_view>

namespace norvel::search_window {

struct Scorciatoia {
    const char* chiave; // of the button
    int codice;         // the toolkit's, letters in upper case
    int modificatori;
    const char* testo; // as operators read it
    bool menu = false; // opens the button's menu instead of pressing it
};

// None is a key of the grid, of its cells or of the value list (platform/grid/model/Navigation.h).
// «Taglia» has no action and no key.
inline constexpr std::array<Scorciatoia, 17> scorciatoie{{
    {"Apri", WXK_RETURN, wxMOD_CONTROL, "Ctrl+Invio"},
    {"Apri", 'O', wxMOD_CONTROL, "Ctrl+O", true},
    {"Facilitata", 'L', wxMOD_CONTROL, "Ctrl+L"},
    {"Modifica", 'M', wxMOD_CONTROL, "Ctrl+M"},
    {"Drop", 'F', wxMOD_CONTROL, "Ctrl+F"},
    {"copia", 'E', wxMOD_CONTROL, "Ctrl+E"},
    {"copiaclip", 'C', wxMOD_CONTROL | wxMOD_SHIFT, "Ctrl+Maiusc+C"},
    {"excel", 'S', wxMOD_CONTROL, "Ctrl+S"},
    {"HTML", 'H', wxMOD_CONTROL, "Ctrl+H"},
    {"Stampa", 'P', wxMOD_CONTROL, "Ctrl+P"},
    {"primo", WXK_HOME, wxMOD_ALT, "Alt+Inizio"},
    {"indietro", WXK_LEFT, wxMOD_ALT, "Alt+←"},
    {"avanti", WXK_RIGHT, wxMOD_ALT, "Alt+→"},
    {"ultimo", WXK_END, wxMOD_ALT, "Alt+Fine"},
    {"Aggiorna", WXK_F5, wxMOD_NONE, "F5"},
    {"configura", 'P', wxMOD_CONTROL | wxMOD_SHIFT, "Ctrl+Maiusc+P"},
    {"Chiudi", 'W', wxMOD_CONTROL, "Ctrl+W"},
}};

// The entry of a key press; the keys of the number pad count as those they repeat. Null: none.
const Scorciatoia* scorciatoiaDi(int codice, int modificatori);
// What a button's tip says of its keys: "Ctrl+P", "Ctrl+Invio; menu: Ctrl+O"; "" where it has none.
std::string testoScorciatoie(std::string_view chiave);

} // namespace norvel::search_window
