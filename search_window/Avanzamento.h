// Work that may take long: how far it is, and a way to stop it.
#pragma once

#include "output/Lavoro.h"

class wxWindow;

namespace norvel::search_window {

// Does the work, a step after the other. After a second a small modal window says how much is done
// and offers "Annulla"; the steps go on between its events. False when the operator took it. Raises
// what a step raises.
bool eseguiConAvanzamento(wxWindow& parent, output::Lavoro& lavoro);

} // namespace norvel::search_window
