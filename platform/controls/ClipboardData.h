// A text as the clipboard takes it from the toolkit.
#pragma once

#include <wx/dataobj.h>

#include <string>

namespace norvel::controls {

wxDataObject* clipboardData(std::string text); // the clipboard owns it

} // namespace norvel::controls
