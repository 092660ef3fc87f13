#include "platform/controls/Clipboard.h"

#include "platform/controls/ClipboardData.h"
#include "platform/runtime/Errore.h"

#include <wx/clipbrd.h>

#include <utility>

namespace norvel::controls {

void setClipboardText(std::string text) {
    const wxClipboardLocker open;
    if (!open) throw Errore(erroreClipboard, "Impossibile aprire gli Appunti");
    wxTheClipboard->Clear();
    if (text.empty()) return;
    if (!wxTheClipboard->SetData(clipboardData(std::move(text))))
        throw Errore(erroreClipboard, "Impossibile scrivere negli Appunti");
    wxTheClipboard->Flush();
}

} // namespace norvel::controls
