// Printing by the system: its dialog, its printers, a progress window of our own.
#pragma once

#include "platform/grid/preview/Printout.h"

#include <string>

class wxWindow;

namespace norvel::grid {

struct PrintOutcome {
    bool printed = false; // false with an empty reason: the operator left it
    std::string reason;   // why it failed
};

// Prints, after the system's dialog where ask. Returns once all pages have gone to the printer. A
// print that takes longer than a second shows how far it is and offers "Annulla". data: what the
// dialog begins with; what was chosen in it comes back. Raises nothing, and no box opens but the
// dialog.
PrintOutcome runPrint(wxWindow& parent, Printout& printout, wxPrintDialogData& data, bool ask);

} // namespace norvel::grid
