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

// Runs what was queued when it was called, on the calling thread, in order; returns how many ran.
// What the work itself queues waits for the next run. Work that runs an event loop of its own (a
// box, a modal window) lets that loop run what follows it. The toolkit calls it from its event
// loop; a program without one calls it, or nothing is ever delivered.
NR_API std::size_t runOwnerQueue();

// Called (from any thread) when the queue stops being empty, and when a run has more to do than the
// work that it is about to run; once, until the next run begins. Called at once if something is
// queued already. The toolkit uses it to wake its loop. It signals only: it must not run the queue,
// nor wait for another thread that posts. When setOwnerWaker returns, the waker that was there is
// no longer running and is never called again.
NR_API void setOwnerWaker(std::function<void()> waker);

} // namespace norvel
