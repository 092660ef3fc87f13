#include "tests/platform/grid/data/GeneratedRecordset.h"

#include <array>
#include <string_view>

namespace norvel::tests {

using namespace adodb;

namespace {

// A number that differs from row to row without any pattern an eye would find.
std::uint64_t mixed(RowCount row, std::uint64_t salt) {
    auto x = static_cast<std::uint64_t>(row) * 0x9E3779B97F4A7C15U + salt * 0xBF58476D1CE4E5B9U;
    x ^= x >> 31;
    x *= 0x94D049BB133111EBU;
    return x ^ (x >> 29);
}

template <std::size_t N>
std::string pick(const std::array<std::string_view, N>& from, std::uint64_t number) {
    return std::string(from[number % N]);
}

constexpr std::array<std::string_view, 12> surnames{
    "Rossi",  "D'Amico", "Bianchi", "Forlì", "Esposito",  "Dell'Acqua",
    "Nicolò", "Ferrari", "Russo",   "Greco", "De Santis", "Cantù"};
constexpr std::array<std::string_view, 6> kinds{" S.r.l.",    " S.p.A.",   " & Figli S.n.c.",
                                                " Trasporti", " Impianti", " Società Cooperativa"};
constexpr std::array<std::string_view, 8> cities{
    "Torino", "Forlì", "Reggio nell'Emilia", "Milano", "Agrigento", "Bolzano", "Cefalù", "Roma"};
constexpr std::array<std::string_view, 8> provinces{"TO", "FC", "RE", "MI", "AG", "BZ", "PA", "RM"};
constexpr std::array<std::string_view, 5> streets{"Via Garibaldi", "Corso Vittorio Emanuele II",
                                                  "Piazza dell'Università", "Viale Europa",
                                                  "Strada Provinciale"};

Variant name(RowCount row) {
    return pick(surnames, mixed(row, 1)) + " " + std::to_string(mixed(row, 2) % 10000) +
           pick(kinds, mixed(row, 3));
}
Variant address(RowCount row) {
    return pick(streets, mixed(row, 6)) + ", " + std::to_string(mixed(row, 7) % 300 + 1);
}
Variant note(RowCount row) {
    if (mixed(row, 9) % 3 == 0) return Variant::null();
    if (mixed(row, 9) % 3 == 1) return "";
    return "Consegna dal lato cortile, chiedere del sig. " + pick(surnames, mixed(row, 10)) +
           " al citofono n. " + std::to_string(mixed(row, 11) % 90);
}

} // namespace

std::vector<GeneratedColumn> customerColumns() {
    return {
        {"codice", adInteger, [](RowCount r) { return Variant(static_cast<std::int32_t>(r + 1)); }},
        {"ragione_sociale", adVarWChar, name},
        {"citta", adVarWChar, [](RowCount r) { return Variant(pick(cities, mixed(r, 4))); }},
        {"provincia", adVarWChar, [](RowCount r) { return Variant(pick(provinces, mixed(r, 4))); }},
        {"indirizzo", adVarWChar, address},
        {"data_nascita", adDate,
         [](RowCount r) {
             return Variant(Date{20000.0 + static_cast<double>(mixed(r, 5) % 20000)});
         }},
        {"fatturato", adNumeric,
         [](RowCount r) { return Variant(static_cast<double>(mixed(r, 8) % 100000000) / 100); }},
        {"attivo", adBoolean, [](RowCount r) { return Variant(mixed(r, 12) % 3 != 0); }},
        {"note", adLongVarWChar, note},
    };
}

} // namespace norvel::tests
