#include "platform/adodb/fetch/FetchLimit.h"

#include <atomic>
#include <limits>

namespace norvel::adodb {

namespace {

std::atomic<std::size_t> limitSet{0};

} // namespace

std::size_t fetchLimit() {
    if (const std::size_t set = limitSet.load()) return set;
    static const std::size_t quarter = machineMemory() / 4;
    return quarter > 0 ? quarter : std::numeric_limits<std::size_t>::max();
}

void setFetchLimit(std::size_t bytes) {
    limitSet.store(bytes);
}

} // namespace norvel::adodb
