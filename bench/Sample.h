// What the benchmarks share: their arguments, the sample database, the clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace norvel::bench {

struct Settings {
    std::int64_t rows = 1'000'000;
    int rounds = 5;
    std::string file{}; // "": the sample database
};

// [--righe N] [--giri N] [--file PATH]; what is not given stays as in defaults, other words are
// passed over.
Settings readArguments(int count, char** arguments, Settings defaults = {});

// The same, the sample database of as many rows made where no file is given: once, in the system's
// folder of temporary files. Raises Errore where it cannot be written.
Settings withSampleFile(Settings settings);

using Clock = std::chrono::steady_clock;
double millisecondsSince(Clock::time_point start);

// Of this process: "VmRSS:", now, or "VmHWM:", the most so far; 0 where the system does not tell.
double residentMegabytes(std::string_view line);

} // namespace norvel::bench
