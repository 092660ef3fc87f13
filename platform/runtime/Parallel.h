// Work on all processors.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <functional>

namespace norvel {

// Threads that runParallel uses at most: the processors this process may run on, at least 1.
NR_API unsigned parallelThreads();

// Calls work(0) to work(pieces - 1), each once, on the calling thread and on threads kept for it;
// returns when all have ended. threads: at most so many, 0: parallelThreads(). The first exception
// is raised again here, after the others have ended; pieces not begun by then are left out. Calls
// from several threads, and from within work, are allowed.
NR_API void runParallel(std::size_t pieces, const std::function<void(std::size_t)>& work,
                        unsigned threads = 0);

} // namespace norvel
