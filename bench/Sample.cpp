#include "bench/Sample.h"

#include "hosts/norvelricerca/DatiDemo.h"

#include <filesystem>
#include <utility>

namespace norvel::bench {

Settings withSampleFile(Settings settings) {
    if (!settings.file.empty()) return settings;
    const auto file = std::filesystem::temp_directory_path() /
                      ("norvelricerca_bench_" + std::to_string(settings.rows) + ".db");
    if (!std::filesystem::exists(file)) hosts::creaDatiDemo(file, settings.rows);
    settings.file = file.string();
    return settings;
}

} // namespace norvel::bench
