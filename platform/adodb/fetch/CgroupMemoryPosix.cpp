#include "platform/adodb/fetch/CgroupMemoryPosix.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string_view>

namespace norvel::adodb {

namespace {

// "max" where there is none; version 1 writes a number beyond any machine.
std::optional<std::size_t> limitIn(const std::filesystem::path& file) {
    std::size_t limit = 0;
    std::ifstream in(file);
    return in >> limit ? std::optional(limit) : std::nullopt;
}

// A container may see its own group as the root of the mount, whatever its path is called outside.
std::optional<std::size_t> smallestUpwards(const std::filesystem::path& root, std::string_view path,
                                           const char* file) {
    std::optional<std::size_t> smallest = limitIn(root / file);
    std::filesystem::path group = root;
    for (const auto& step : std::filesystem::path(path).relative_path()) {
        group /= step;
        const auto limit = limitIn(group / file);
        if (limit && (!smallest || *limit < *smallest)) smallest = limit;
    }
    return smallest;
}

} // namespace

std::optional<std::size_t> cgroupMemory(const std::string& membership,
                                        const std::filesystem::path& mounts) {
    std::istringstream lines(membership);
    std::optional<std::size_t> smallest;
    for (std::string line; std::getline(lines, line);) { // hierarchy:controllers:path
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos) continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const std::string path = line.substr(second + 1);
        const auto names = splitText(controllers, ",");
        std::optional<std::size_t> limit;
        if (controllers.empty())
            limit = smallestUpwards(mounts, path, "memory.max");
        else if (std::ranges::find(names, "memory") != names.end())
            limit = smallestUpwards(mounts / "memory", path, "memory.limit_in_bytes");
        if (limit && (!smallest || *limit < *smallest)) smallest = limit;
    }
    return smallest;
}

} // namespace norvel::adodb
