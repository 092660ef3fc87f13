#include "platform/grid/preview/Printers.h"

#include <windows.h>
#include <winspool.h>

namespace norvel::grid {

// Asked of the system, which says so without a box; a size that is needed means a printer.
bool printerAvailable() {
    constexpr DWORD anyOfMine = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
    constexpr DWORD names = 4; // the level that needs no answer from a printer
    DWORD needed = 0;
    DWORD found = 0;
    EnumPrintersW(anyOfMine, nullptr, names, nullptr, 0, &needed, &found);
    return needed > 0;
}

} // namespace norvel::grid
