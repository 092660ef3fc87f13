#include "search_window/Attesa.h"

#include "search_window/DialogoAttesa.h"

#include <string>

namespace norvel::search_window {

namespace {

constexpr int primaDelDialogo = 250; // milliseconds
constexpr int battito = 100;         // milliseconds between two looks at the fetch

} // namespace

bool attendiLettura(wxWindow& parent, adodb::Recordset& recordset) {
    if (recordset.WaitFetch(primaDelDialogo)) return true;
    const auto stato = [&recordset] {
        return StatoAttesa{"Record letti finora: " + std::to_string(recordset.RecordCount())};
    };
    return attendiConDialogo(parent, {"Lettura dei record in corso", battito,
                                      [&recordset] { return !recordset.WaitFetch(0); }, stato});
}

} // namespace norvel::search_window
