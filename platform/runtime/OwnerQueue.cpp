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
    std::mutex mutex; // of work, posted and taken
    std::deque<std::function<void()>> work;
    std::uint64_t posted = 0;
    std::uint64_t taken = 0;

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

bool somethingQueued() {
    const std::lock_guard lock(queue().mutex);
    return !queue().work.empty();
}

// The next piece of work posted before the given count; empty if there is none.
std::function<void()> takeWork(std::uint64_t before) {
    Queue& all = queue();
    const std::lock_guard lock(all.mutex);
    if (all.work.empty() || all.taken >= before) return {};
    std::function<void()> next = std::move(all.work.front());
    all.work.pop_front();
    ++all.taken;
    return next;
}

struct WakeIfQueued {
    ~WakeIfQueued() {
        if (somethingQueued()) wake();
    }
};

} // namespace

void postToOwner(std::function<void()> work) {
    if (!work) return;
    bool wasEmpty = false;
    {
        const std::lock_guard lock(queue().mutex);
        wasEmpty = queue().work.empty();
        queue().work.push_back(std::move(work));
        ++queue().posted;
    }
    if (wasEmpty) wake();
}

std::size_t runOwnerQueue() {
    std::uint64_t end = 0;
    {
        const std::lock_guard lock(queue().mutex);
        end = queue().posted;
    }
    const WakeIfQueued leftOver;
    std::size_t count = 0;
    while (const std::function<void()> work = takeWork(end)) {
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
    if (somethingQueued()) wake();
}

} // namespace norvel
