// What the system prints on.
#pragma once

namespace norvel::grid {

// Whether there is something to print on. Windows: an installed printer, local or connected (a PDF
// printer is one). Elsewhere always, since the toolkit's print dialog can print to a file without
// any printer.
bool printerAvailable();

} // namespace norvel::grid
