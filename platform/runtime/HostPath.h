// Paths as the host writes them, turned into the system's own.
#pragma once

#include "platform/runtime/Api.h"

#include <filesystem>
#include <string_view>

namespace norvel {

// Turns a path in the host's notation ("C:\dati\parametri\Clienti.grx", "parametri\", or an
// ordinary path of this system; UTF-8) into one that the system opens. '\' separates as '/' does;
// each component is matched against what exists on disk ignoring case, an exact match first, then
// the first in byte order; components that do not exist are kept as written, so that the result can
// also be created. Never fails: what cannot be looked at is taken as written.
// A component with others behind it, or with a separator at the end, is matched by folders only.
// A drive ("C:\dati") is dropped: its root is this system's root, and "C:dati" is relative; a
// server ("\\server\dati") is a folder below the root. "." and ".." stay for the system to resolve
// (so that links mean what they mean to it), and a separator at the end stays, too. Names on disk
// that are not UTF-8 are matched as Windows-1252.
NR_API std::filesystem::path percorsoSistema(std::string_view percorsoHost);

} // namespace norvel
