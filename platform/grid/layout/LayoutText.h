// Layouts as the text of a layout file.
//
//   NorvelRicerca grid layout 1
//
//   [layout "ROSSIClienti"]
//   FilterBar = true
//   Font.Name = "Arial"
//   GroupColumns = "citta", "zona"
//
//   [column "codice"]
//   Caption = "Codice"
//   Width = 1440
//   …
//   [end]
//
// UTF-8, lines ended by LF (CR LF is read, too), texts between quotes with \" \\ \n \r \t, numbers
// with a point. Columns follow their layout in the order in which they are shown. Keys and sections
// that are not known are passed over, so that a later release may add some; a key that is missing
// keeps the default. The last line tells a file that is whole.
#pragma once

#include "platform/grid/layout/Layout.h"

#include <string>
#include <string_view>
#include <vector>

namespace norvel::grid {

struct NamedLayout {
    std::string Name;
    Layout Contents;
    bool operator==(const NamedLayout&) const = default;
};

NR_API std::string layoutText(const std::vector<NamedLayout>& layouts);

// Raises Errore 321 ("Formato di file non valido") where the text is no layout file, breaks off, or
// holds a value that makes no sense; laterLayoutVersion where a later version wrote it.
inline constexpr int laterLayoutVersion = 325;
NR_API std::vector<NamedLayout> readLayoutText(std::string_view text);

} // namespace norvel::grid
