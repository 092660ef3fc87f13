// Texts between the system (UTF-8) and the toolkit, whatever the process's locale is.
#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace norvel::controls {

// The toolkit's own conversions from char* follow the locale, which belongs to the host; every text
// that meets the toolkit goes through these two instead. Text that is not UTF-8 becomes "".
inline wxString toWx(std::string_view text) {
    return wxString::FromUTF8(text.data(), text.size());
}
inline std::string fromWx(const wxString& text) {
    return text.utf8_string();
}

} // namespace norvel::controls
