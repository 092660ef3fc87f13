// The word lists of the sample database.
#pragma once

#include <span>
#include <string_view>

namespace norvel::hosts {

// A province's code and its towns, separated by '|', the chief town first.
struct Provincia {
    std::string_view sigla;
    std::string_view citta;
};

std::span<const Provincia> elencoProvince();
std::span<const std::string_view> elencoNomi();
std::span<const std::string_view> elencoCognomi();
std::span<const std::string_view> elencoAttivita();
std::span<const std::string_view> elencoForme();
std::span<const std::string_view> elencoVie();
std::span<const std::string_view> elencoIntitolazioni();
std::span<const std::string_view> elencoNote();

} // namespace norvel::hosts
