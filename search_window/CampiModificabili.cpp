#include "search_window/CampiModificabili.h"

#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::search_window {

bool campoModificabile(const std::vector<std::string>& campi, std::string_view campo) {
    return !campo.empty() && std::ranges::any_of(campi, [&](const std::string& nome) {
        return equalsText(trimText(nome), campo);
    });
}

} // namespace norvel::search_window
