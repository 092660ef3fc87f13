// One search from the command line to the answer.
#pragma once

#include "hosts/norvelricerca/Argomenti.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace norvel::hosts {

// Opens the data and the window and gives back the answer once the window is closed; with --tempi
// the measures go to errori. nullopt: none was chosen, or an empty one. The component's Risposta is
// "" both for a window that was closed and for a chosen value without a character, so the program
// does not tell them apart; a NULL value counts as empty (errori says so). Raises Errore where
// there is no display, a connection, query or field is wrong, the window did not open, the answer
// has no text.
std::optional<std::string> cercaRisposta(const Argomenti& argomenti, std::ostream& errori);

} // namespace norvel::hosts
