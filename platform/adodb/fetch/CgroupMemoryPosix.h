// What a container lets its processes have of the machine's memory.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace norvel::adodb {

// The smallest limit that holds for a process, bytes; nullopt: none. membership: the text of
// /proc/self/cgroup; mounts: where the control groups are mounted, /sys/fs/cgroup. Both versions
// of control groups are read; a group's limit is also its parents'. Source: the kernel's
// admin-guide, cgroup-v2.rst and cgroup-v1/memory.rst.
std::optional<std::size_t> cgroupMemory(const std::string& membership,
                                        const std::filesystem::path& mounts);

} // namespace norvel::adodb
