// Searches in statements: case-blind for the letters A to Z, which is all that keywords are made
// of. Positions are bytes; every routine takes time in proportion to the text, whatever is in it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace norvel::query {

// True where parola stands at position da.
bool stanno(std::string_view testo, std::size_t da, std::string_view parola);
// The first place of parola at or after da; npos if there is none.
std::size_t cerca(std::string_view testo, std::string_view parola, std::size_t da = 0);
bool contiene(std::string_view testo, std::string_view parola);
// Every da becomes a, left to right.
std::string sostituisci(std::string_view testo, std::string_view da, std::string_view a);
// How many characters of an automation host's text (16-bit units) the UTF-8 text is.
std::size_t caratteriDi(std::string_view testo);

} // namespace norvel::query
