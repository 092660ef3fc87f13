// What the program says of itself: the help text and what it knows of each property beyond the
// component's own table.
#pragma once

#include "hosts/norvelricerca/Argomenti.h"

#include <string>
#include <string_view>
#include <vector>

namespace norvel::hosts {

// Whether the property's text is used as a number by the component (switches and geometry), so that
// a text that is none can be refused at the shell.
bool eNumero(std::string_view proprieta);

// What --aiuto prints: every option with a phrase, then an example. A property of the list that
// this program has no phrase for stands there with its name alone.
std::string testoAiuto(const std::vector<Proprieta>& proprieta);

// The phrase of a property, "" for one that is not known here. Names are case-blind.
std::string_view fraseProprieta(std::string_view proprieta);

} // namespace norvel::hosts
