#include "search_window/Avanzamento.h"

#include "search_window/DialogoAttesa.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace norvel::search_window {

namespace {

using Orologio = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds primaDelDialogo{1000};
constexpr milliseconds turno{40}; // of work between the window's own events
constexpr int respiro = 5;        // milliseconds left to them

// False once the work is done.
bool lavora(output::Lavoro& lavoro, milliseconds tempo) {
    const auto fine = Orologio::now() + tempo;
    do
        if (!lavoro.passo()) return false;
    while (Orologio::now() < fine);
    return true;
}

StatoAttesa statoDi(const output::Lavoro& lavoro) {
    const double fatto = lavoro.fatto();
    if (fatto < 0) return {"Lettura dei record"};
    const int centesimi = static_cast<int>(std::min(1.0, fatto) * 100);
    return {"Completato al " + std::to_string(centesimi) + " %", fatto};
}

} // namespace

bool eseguiConAvanzamento(wxWindow& parent, output::Lavoro& lavoro) {
    if (!lavora(lavoro, primaDelDialogo)) return true;
    return attendiConDialogo(parent, {"Esportazione in corso", respiro,
                                      [&lavoro] { return lavora(lavoro, turno); },
                                      [&lavoro] { return statoDi(lavoro); }});
}

} // namespace norvel::search_window
