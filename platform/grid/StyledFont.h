// A font as a style changes it.
#pragma once

#include "platform/grid/model/Model.h"

#include <wx/font.h>

namespace norvel::grid {

// What the style leaves open stays as it is.
wxFont styledFont(wxFont font, const FontStyle& style);

} // namespace norvel::grid
