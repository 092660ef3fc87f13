// One search from the command line to the answer.
#pragma once

#include "hosts/norvelricerca/Argomenti.h"

#include <iosfwd>

namespace norvel::hosts {

// The program's exit status.
enum Esito : int {
    esitoRisposta = 0, // the answer is on the output
    esitoNessuna = 1,  // the window was closed without a choice, or the chosen value is empty
    esitoErrore = 2    // usage, connection, query, display: a sentence is on the error output
};

// Opens the data and the window and writes the answer, a line, to uscita; with --tempi the measures
// to errori. An empty answer is no answer: the component's Risposta is "" both for a window that
// was closed and for a chosen value without a character, so the program does not tell them apart,
// and a NULL value counts as empty (errori says so). Raises Errore for what ends with esitoErrore.
Esito eseguiRicerca(const Argomenti& argomenti, std::ostream& uscita, std::ostream& errori);

} // namespace norvel::hosts
