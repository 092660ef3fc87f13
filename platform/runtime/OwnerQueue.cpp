#include "platform/runtime/OwnerQueue.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/MessageBox.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>

namespace norvel {
namespace {

struct Queue {
    std::mutex mutex; // of all down to signalled
    std::deque<std::function<void()>> work;
    std::uint64_t posted = 0;
    std::uint64_t taken = 0;
    bool signalled = false; // the owner was woken and has not begun a run since

    std::recursive_mutex wakerMutex; // taken after mutex is released, never inside it
    std::function<void()> waker;
};

// Never destroyed: a thread may still post while the process ends.
Queue& queue() {
    static Queue& only = *new Queue;
    return only;
}

void wake() {
    const std::lock_guard lock(queue().wakerMutex);
    const std::function<void()> waker = queue().waker; // it may replace itself
    if (waker) waker();
}

// How much work was posted so far, where a run stops.
std::uint64_t beginRun() {
    const std::lock_guard lock(queue().mutex);
    queue().signalled = false;
    return queue().posted;
}

// The next piece of work posted before the given count; empty if there is none. What follows it is
// signalled before it runs, since it may run an event loop of its own.
std::function<void()> takeWork(std::uint64_t before) {
    Queue& all = queue();
    std::function<void()> next;
    bool signal = false;
    {
        const std::lock_guard lock(all.mutex);
        if (all.work.empty() || all.taken >= before) return {};
        next = std::move(all.work.front());
        all.work.pop_front();
        ++all.taken;
        signal = !all.work.empty() && !all.signalled;
        all.signalled = all.signalled || signal;
    }
    if (signal) wake();
    return next;
}

// Wakes the owner for what a run has left; an empty queue signals anew at the next post.
void endRun() {
    Queue& all = queue();
    bool signal = false;
    {
        const std::lock_guard lock(all.mutex);
        signal = !all.work.empty() && !all.signalled;
        all.signalled = !all.work.empty();
    }
    if (signal) wake();
}

// Work may end a run by an exception of another kind; the rest must not be forgotten for it.
struct Run {
    const std::uint64_t end = beginRun();
    Run() = default;
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() { endRun(); }
};

} // namespace

void postToOwner(std::function<void()> work) {
    if (!work) return;
    bool signal = false;
    {
        const std::lock_guard lock(queue().mutex);
        queue().work.push_back(std::move(work));
        ++queue().posted;
        signal = !queue().signalled;
        queue().signalled = true;
    }
    if (signal) wake();
}

std::size_t runOwnerQueue() {
    const Run run;
    std::size_t count = 0;
    while (const std::function<void()> work = takeWork(run.end)) {
        ++count;
        try {
            work();
        } catch (const Errore& errore) {
            mostraErroreModulo(errore);
        }
    }
    return count;
}

void setOwnerWaker(std::function<void()> waker) {
    {
        const std::lock_guard lock(queue().wakerMutex);
        queue().waker = std::move(waker);
    }
    bool waiting = false;
    {
        const std::lock_guard lock(queue().mutex);
        waiting = !queue().work.empty();
    }
    if (waiting) wake();
}

} // namespace norvel
