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

int esegui(const Argomenti& argomenti) {
    switch (argomenti.azione) {
    case Azione::Aiuto:
        std::cout << testoAiuto(proprietaDellaRicerca());
        return esitoRisposta;
    case Azione::Versione:
        std::cout << "norvelricerca " << Ricerca().Ver() << '\n';
        return esitoRisposta;
    case Azione::CreaDemo:
        creaFileDemo(argomenti.fileDemo, argomenti.righe);
        return esitoRisposta;
    case Azione::Ricerca:
        break;
    }
    return eseguiRicerca(argomenti, std::cout, std::cerr);
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
