#include "tests/support/Clipboard.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

namespace norvel::tests {

std::string clipboardText() {
    const wxClipboardLocker open;
    wxTextDataObject data;
    return open && wxTheClipboard->GetData(data) ? data.GetText().utf8_string() : std::string();
}

} // namespace norvel::tests
