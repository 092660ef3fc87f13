// The side menu of the configuration window, and what its entries do: the table and the rules.
#pragma once

#include "component/VariabiliGlobali.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace norvel::views {

// The window's own images: an entry names one by its key, or by its place counted from 1.
inline constexpr std::array<const char*, 7> immaginiMenu{"Configura", "nota",  "nuovo", "vista",
                                                         "ordine",    "salva", "chiudi"};

struct VoceMenu {
    const char* immagine; // its key
    const char* testo;
    const char* chiave;
    const char* descrizione;
    bool nota; // a text to read, no command
};

struct GruppoMenu {
    const char* immagine; // "": none
    const char* testo;
    const char* chiave;
    const char* secondoTitolo;
    const char* descrizione;
    bool speciale; // its heading stands out
    std::span<const VoceMenu> voci;
};

// From top to bottom.
NR_API std::span<const GruppoMenu> gruppiMenu();
// The entry of a page, 0 to 3.
NR_API const VoceMenu& voceDiPagina(int pagina);

// The page that a clicked key shows; nullopt: the window closes. Keys are compared case-blind, and
// one that leads nowhere (a group, the note) leads to page 0.
NR_API std::optional<int> paginaVoce(std::string_view chiave);
inline constexpr int pagineConfigura = 4;
inline constexpr int paginaSalvataggio = 3;

// The names that the window proposes: when it is loaded, and on the page of views for an empty box.
NR_API std::string nomeIniziale(const VariabiliGlobali& sessione);
NR_API std::string nomeProposto(const VariabiliGlobali& sessione);
// The designed caption and the search's code.
NR_API std::string titoloConfigura(const std::string& disegnato, const VariabiliGlobali& sessione);

} // namespace norvel::views
