// The public class's properties as options.
#pragma once

#include "hosts/norvelricerca/Argomenti.h"

#include <vector>

namespace norvel::hosts {

// From the component's own table of members, in its order; methods are no options.
std::vector<Proprieta> proprietaDellaRicerca();

} // namespace norvel::hosts
