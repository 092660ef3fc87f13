// The system's dialogs for colours and fonts, which a test may answer in their place.
#pragma once

#include "platform/grid/model/Model.h"

#include <cstdint>
#include <functional>
#include <optional>

class wxWindow;

namespace norvel::views {

// Each opens modally over the window, with what is in force now; nullopt: cancelled.
struct DialoghiSistema {
    std::function<std::optional<std::uint32_t>(wxWindow& su, std::uint32_t presente)> colore;
    std::function<std::optional<grid::FontStyle>(wxWindow& su, const grid::FontStyle& presente)>
        carattere;
};

// Replaces them; returns those that were there.
NR_API DialoghiSistema impostaDialoghi(DialoghiSistema nuovi);

// The chosen one. Errore 32755 ("È stato scelto Annulla") where the dialog was cancelled.
std::uint32_t scegliColore(wxWindow& su, std::uint32_t presente);
grid::FontStyle scegliCarattere(wxWindow& su, const grid::FontStyle& presente);

} // namespace norvel::views
