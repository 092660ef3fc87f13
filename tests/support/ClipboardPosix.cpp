#include "tests/support/Clipboard.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

namespace norvel::tests {

std::string clipboardText() {
    const wxClipboardLocker open;
    wxTextDataObject data;
    if (!open) return {};
    return wxTheClipboard->GetData(data) ? data.GetText().utf8_string() : std::string();
}

} // namespace norvel::tests
