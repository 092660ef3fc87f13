// Work that another thread hands to the thread that owns the windows.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <functional>

namespace norvel {

// Queues work for the owner thread; callable from any thread. The work must check by itself that
// what it touches still lives (keep a weak reference). An Errore that it throws is shown in the
// usual box.
NR_API void postToOwner(std::function<void()> work);

// Runs what is queued, on the calling thread, in order; returns how many ran. The toolkit calls it
// from its event loop; a program without one calls it, or nothing is ever delivered.
NR_API std::size_t runOwnerQueue();

// Called (from any thread) whenever the queue stops being empty; the toolkit uses it to wake its
// loop.
NR_API void setOwnerWaker(std::function<void()> waker);

} // namespace norvel
