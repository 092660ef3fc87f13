// What --tempi measures of this process.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace norvel::hosts {

using Istante = std::chrono::steady_clock::time_point;

// When this process started, on the steady clock. The system's own record where it keeps one
// (Linux: field 22 of /proc/self/stat, in steps of 10 ms, so that a duration measured from it is at
// most 10 ms too long and counts the loading of shared libraries), else when this program's static
// objects were made.
Istante inizioProcesso();

// The largest resident memory of the process so far in KB (1024 bytes); 0 where the system does not
// tell.
std::int64_t memoriaMassimaKB();

struct Misure {
    Istante inizio;                      // of the process
    Istante inizioLettura;               // just before the rows' recordset was opened
    std::optional<Istante> primaPittura; // the window had painted its first rows
    std::optional<Istante> fineLettura;  // the last row had come
    std::int64_t righeLette = 0;
    std::int64_t memoriaMassimaKB = 0;
};

// One "name: value" a line; "-" stands for what did not happen before the window was closed.
std::string testoTempi(const Misure& misure);

} // namespace norvel::hosts
