#include "platform/adodb/fetch/CgroupMemoryPosix.h"
#include "platform/adodb/fetch/FetchLimit.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace norvel::adodb {

std::size_t machineMemory() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long size = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || size <= 0) return 0;
    const auto machine = static_cast<std::size_t>(pages) * static_cast<std::size_t>(size);
    std::ifstream groups("/proc/self/cgroup");
    const std::string membership{std::istreambuf_iterator<char>(groups), {}};
    return std::min(machine, cgroupMemory(membership, "/sys/fs/cgroup").value_or(machine));
}

} // namespace norvel::adodb
