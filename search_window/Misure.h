// What a benchmark or the command-line host wants to know of the last search.
#pragma once

#include "platform/runtime/Api.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace norvel::search_window {

using Istante = std::chrono::steady_clock::time_point;

// Set anew each time the window is loaded; nullopt: it has not happened (yet).
struct MisureFinestra {
    std::optional<Istante> primaPittura; // the grid had painted its first data rows
    std::int64_t righePrimaPittura = 0;  // rows painted then
    std::optional<Istante> fineLettura;  // the window was told that the last row had come
    std::int64_t righeLette = 0;         // rows the recordset had then
};

NR_API MisureFinestra& misureFinestra();

} // namespace norvel::search_window
