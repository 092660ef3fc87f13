#include "bench/Sample.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

namespace norvel::bench {

Settings readArguments(int count, char** arguments, Settings defaults) {
    Settings settings = std::move(defaults);
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string_view name = arguments[i];
        if (name == "--righe") settings.rows = std::max(1LL, std::atoll(arguments[i + 1]));
        if (name == "--giri") settings.rounds = std::max(1, std::atoi(arguments[i + 1]));
        if (name == "--file") settings.file = arguments[i + 1];
    }
    return settings;
}

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double residentMegabytes(std::string_view line) {
    std::ifstream status("/proc/self/status");
    std::string text;
    while (std::getline(status, text))
        if (text.starts_with(line)) return std::atof(text.c_str() + line.size()) / 1024.0;
    return 0;
}
} // namespace norvel::bench
