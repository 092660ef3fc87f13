#include "platform/adodb/fetch/FetchLimit.h"

#include <unistd.h>

namespace norvel::adodb {

std::size_t machineMemory() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long size = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || size <= 0) return 0;
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(size);
}

} // namespace norvel::adodb
