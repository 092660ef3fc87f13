// The component's rows in the registry.
#pragma once

#include <windows.h>

namespace norvel::com {

// Writes the rows for the machine or, where there are no rights to that, for the user alone; a
// registration for the user that would hide the machine's is taken away then. What was written
// before a failure is taken back. The rows name the DLL by where it lies now.
HRESULT registra();

// Takes the rows away, the machine's and the user's, and the keys that are empty then. Rows that
// the component of the other width shares stay while that one is registered.
HRESULT annullaRegistrazione();

} // namespace norvel::com
