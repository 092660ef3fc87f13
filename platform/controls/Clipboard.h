// The system's clipboard, for plain text.
#pragma once

#include "platform/runtime/Api.h"

#include <string>

namespace norvel::controls {

// The clipboard holds the text (UTF-8) and nothing else, also once the program has ended where the
// system can keep it; "" empties it. Errore 521 where another program holds it.
NR_API void setClipboardText(std::string text);

inline constexpr int erroreClipboard = 521;

} // namespace norvel::controls
