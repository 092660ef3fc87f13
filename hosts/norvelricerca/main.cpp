// norvelricerca: the search window as a program. The chosen value goes to the standard output.
#include "component/Ricerca.h"
#include "hosts/norvelricerca/Aiuto.h"
#include "hosts/norvelricerca/Argomenti.h"
#include "hosts/norvelricerca/FileDemo.h"
#include "hosts/norvelricerca/ProprietaRicerca.h"
#include "hosts/norvelricerca/Sessione.h"
#include "platform/runtime/Errore.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace norvel;
using namespace norvel::hosts;

enum Esito : int {
    esitoRisposta = 0, // what was asked for is on the standard output
    esitoNessuna = 1,  // no answer
    esitoErrore = 2    // usage, connection, query, display: a sentence is on the error output
};

constexpr int erroreScrittura = 57; // "Errore di I/O su periferica"

// The one place that writes to the standard output; raises an Errore where that takes nothing.
int scrivi(const std::string& testo) {
    std::cout << testo << std::flush;
    if (!std::cout) throw Errore(erroreScrittura, "L'uscita normale non si può scrivere");
    return esitoRisposta;
}

int cerca(const Argomenti& argomenti) {
    const auto risposta = cercaRisposta(argomenti, std::cerr);
    return risposta ? scrivi(*risposta + '\n') : esitoNessuna;
}

int esegui(const Argomenti& argomenti) {
    switch (argomenti.azione) {
    case Azione::Aiuto:
        return scrivi(testoAiuto(proprietaDellaRicerca()));
    case Azione::Versione:
        return scrivi("norvelricerca " + Ricerca().Ver() + "\n");
    case Azione::CreaDemo:
        creaFileDemo(argomenti.fileDemo, argomenti.righe);
        return esitoRisposta;
    case Azione::Ricerca:
        break;
    }
    return cerca(argomenti);
}

int errore(const std::string& frase) {
    std::cerr << "norvelricerca: " << frase << '\n';
    return esitoErrore;
}

} // namespace

int main(int argc, char** argv) {
    try {
        Argomenti argomenti;
        try {
            argomenti =
                leggiArgomenti(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc),
                               proprietaDellaRicerca());
        } catch (const Errore& uso) {
            return errore(uso.descrizione() + "\nLe opzioni: norvelricerca --aiuto");
        }
        return esegui(argomenti);
    } catch (const Errore& fallito) {
        return errore(fallito.descrizione());
    } catch (const std::exception& fallito) {
        return errore(std::string("errore interno: ") + fallito.what());
    }
}
