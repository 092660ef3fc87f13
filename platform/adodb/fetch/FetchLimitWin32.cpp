#include "platform/adodb/fetch/FetchLimit.h"

#include <algorithm>
#include <limits>
#include <windows.h>

namespace norvel::adodb {

// Of 32 bits a process has at most its own room.
std::size_t machineMemory() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!::GlobalMemoryStatusEx(&status)) return 0;
    const auto room = std::min(status.ullTotalPhys, status.ullTotalVirtual);
    return static_cast<std::size_t>(
        std::min<unsigned long long>(room, std::numeric_limits<std::size_t>::max()));
}

} // namespace norvel::adodb
