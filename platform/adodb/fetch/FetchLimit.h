// How much memory the rows of one fetch may take.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>

namespace norvel::adodb {

// Bytes: a quarter of the machine's memory, or of what a container lets the process have of it,
// unless set otherwise. Any thread.
NR_API std::size_t fetchLimit();
// 0: the quarter again. Fetches that begin later follow it.
NR_API void setFetchLimit(std::size_t bytes);

// The memory that the process may have at most, bytes; 0 where the system does not tell.
std::size_t machineMemory();

} // namespace norvel::adodb
