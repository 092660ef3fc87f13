// The toolbar as designed: keys, order and texts. One table, walked by the window.
#pragma once

#include <array>
#include <string_view>

namespace norvel::search_window {

enum class TipoPulsante { Comando, Interruttore, ConMenu };

struct Pulsante {
    const char* chiave; // what the window dispatches on, case-blind
    const char* testo;  // the descriptive text, shown as the tip
    TipoPulsante tipo;
    bool visibile; // at the start
    bool comando;  // false: designed without an action
};

// In their designed order. "excel" has no text in the design, so its tip is empty.
inline constexpr std::array<Pulsante, 17> pulsantiBarra{{
    {"Apri", "Selezione", TipoPulsante::ConMenu, true, true},
    {"Facilitata", "Abilita / Disabilita la lettura facilitata", TipoPulsante::Interruttore, true,
     true},
    {"Modifica", "Modifica", TipoPulsante::Interruttore, false, true},
    {"Drop", "Visualizza ricerca avanzata", TipoPulsante::Interruttore, true, true},
    {"Taglia", "Taglia", TipoPulsante::Comando, true, false},
    {"copia", "Esporta su clipboard in formato excel", TipoPulsante::Comando, true, true},
    {"copiaclip", "Copia negli appunti", TipoPulsante::Comando, true, true},
    {"excel", "", TipoPulsante::Comando, true, true},
    {"HTML", "Esporta in html", TipoPulsante::Comando, true, true},
    {"Stampa", "Stampa il documento", TipoPulsante::Comando, true, true},
    {"primo", "Vai al primo record", TipoPulsante::Comando, true, true},
    {"indietro", "Vai al record precedente", TipoPulsante::Comando, true, true},
    {"avanti", "Vai al record successivo", TipoPulsante::Comando, true, true},
    {"ultimo", "Vai all'ultimo record", TipoPulsante::Comando, true, true},
    {"Aggiorna", "Aggiorna elenco", TipoPulsante::Comando, true, true},
    {"configura", "Personalizza Ricerca", TipoPulsante::Comando, true, true},
    {"Chiudi", "Chiudi Finestra", TipoPulsante::Comando, true, true},
}};

} // namespace norvel::search_window
