// The DLL as a module of the host's process: how long it must stay.
#pragma once

#include <string>
#include <windows.h>

namespace norvel::com {

// Where the DLL lies, with its name.
std::wstring percorsoModulo();

// Counted by every object and every LockServer; the DLL may be unloaded at none.
void aggiungiUso();
void togliUso();

// The session lives as long as the process: from the first time that something is stored in it, or
// that the window is asked for, the DLL is never unloaded, whatever the host asks.
void trattieniModulo();

// True while nothing needs the DLL.
bool moduloLibero();

} // namespace norvel::com
