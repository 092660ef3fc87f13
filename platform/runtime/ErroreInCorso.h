// Whatever is being trapped, as the one failure type of the system.
#pragma once

#include "platform/runtime/Api.h"
#include "platform/runtime/Errore.h"

namespace norvel {

// To be called in a catch block. An Errore is given back as it is; memory that ran out is 7
// ("Memoria esaurita"); anything else, which no routine of the system throws by design, is 51
// ("Errore interno: " and what it says of itself).
NR_API Errore erroreInCorso();

} // namespace norvel
