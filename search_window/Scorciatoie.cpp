#include "search_window/Scorciatoie.h"

#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::search_window {

namespace {

int senzaTastierino(int codice) {
    switch (codice) {
    case WXK_NUMPAD_ENTER:
        return WXK_RETURN;
    case WXK_NUMPAD_HOME:
        return WXK_HOME;
    case WXK_NUMPAD_END:
        return WXK_END;
    case WXK_NUMPAD_LEFT:
        return WXK_LEFT;
    case WXK_NUMPAD_RIGHT:
        return WXK_RIGHT;
    default:
        return codice;
    }
}

} // namespace

const Scorciatoia* scorciatoiaDi(int codice, int modificatori) {
    const auto* const voce = std::ranges::find_if(scorciatoie, [&](const Scorciatoia& s) {
        return s.codice == senzaTastierino(codice) && s.modificatori == modificatori;
    });
    return voce == scorciatoie.end() ? nullptr : voce;
}

std::string testoScorciatoie(std::string_view chiave) {
    std::string testo;
    for (const Scorciatoia& s : scorciatoie) {
        if (!equalsText(s.chiave, chiave)) continue;
        if (!testo.empty()) testo += "; ";
        if (s.menu) testo += "menu: ";
        testo += s.testo;
    }
    return testo;
}

} // namespace norvel::search_window
