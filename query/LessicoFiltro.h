// A recordset's filter text cut at its values, by the rules of the criteria language.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::query {

// A piece of a filter text: a value in quotes or between hashes, or all that stands between two of
// them (names, operators, numbers, names in brackets).
struct PezzoFiltro {
    enum class Genere { Resto, Virgolette, Cancelletti };
    Genere genere = Genere::Resto;
    std::string_view testo; // as it stands, with quotes or hashes
};

// nullopt where the text cannot be what a recordset accepted: a value that never ends, or outside
// values and brackets something that no criteria have ("; \ ` ~", double quotes, comments, control
// characters).
std::optional<std::vector<PezzoFiltro>> pezziDiFiltro(std::string_view filtro);

// What a value in quotes says: without them, doubled ones single.
std::string valoreDi(std::string_view traVirgolette);

} // namespace norvel::query
