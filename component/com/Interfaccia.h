// The dual interface _Ricerca as C++ declares it.
#pragma once

#include "platform/adodb/ado/Com.h"

// The declaration made from NorvelRicerca.idl names a C++ class for COM's class; there is none of
// that name.
#define __Ricerca_FWD_DEFINED__ // NOLINT(bugprone-reserved-identifier)
#include "NorvelRicercaCom.h"
