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
};

// In their designed order, all enabled. "excel" has no text in the design.
inline constexpr std::array<Pulsante, 17> pulsantiBarra{{
    {"Apri", "Selezione", TipoPulsante::ConMenu, true},
    {"Facilitata", "Abilita / Disabilita la lettura facilitata", TipoPulsante::Interruttore, true},
    {"Modifica", "Modifica", TipoPulsante::Interruttore, false},
    {"Drop", "Visualizza ricerca avanzata", TipoPulsante::Interruttore, true},
    {"Taglia", "Taglia", TipoPulsante::Comando, true},
    {"copia", "Esporta su clipboard in formato excel", TipoPulsante::Comando, true},
    {"copiaclip", "Copia negli appunti", TipoPulsante::Comando, true},
    {"excel", "", TipoPulsante::Comando, true},
    {"HTML", "Esporta in html", TipoPulsante::Comando, true},
    {"Stampa", "Stampa il documento", TipoPulsante::Comando, true},
    {"primo", "Vai al primo record", TipoPulsante::Comando, true},
    {"indietro", "Vai al record precedente", TipoPulsante::Comando, true},
    {"avanti", "Vai al record successivo", TipoPulsante::Comando, true},
    {"ultimo", "Vai all'ultimo record", TipoPulsante::Comando, true},
    {"Aggiorna", "Aggiorna elenco", TipoPulsante::Comando, true},
    {"configura", "Personalizza Ricerca", TipoPulsante::Comando, true},
    {"Chiudi", "Chiudi Finestra", TipoPulsante::Comando, true},
}};

} // namespace norvel::search_window
