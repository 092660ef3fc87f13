#include "platform/runtime/Parallel.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#ifdef __linux__
#include <sched.h>
#endif

namespace norvel {

namespace {

// One call of runParallel: its pieces are taken one by one by whoever has time.
struct Job {
    std::size_t pieces = 0;
    const std::function<void(std::size_t)>* work = nullptr; // the caller's, who waits for helpers
    std::atomic<std::size_t> next{0};

    std::mutex mutex; // of what follows
    std::condition_variable left;
    unsigned helpers = 0; // threads inside take() beside the caller
    std::exception_ptr failure;

    // Runs pieces until there are none.
    void take() {
        try {
            for (std::size_t piece = next++; piece < pieces; piece = next++)
                (*work)(piece);
        } catch (...) {
            next = pieces;
            const std::scoped_lock lock(mutex);
            if (!failure) failure = std::current_exception();
        }
    }
};

// The threads kept for the process. They sleep between jobs and are never joined: a library that is
// being unloaded must not wait for threads.
class Pool {
  public:
    // Offers the job to so many threads, made where there are not enough yet.
    void offer(const std::shared_ptr<Job>& job, unsigned helpers) {
        const std::scoped_lock lock(mutex_);
        for (unsigned i = 0; i < helpers; ++i)
            offers_.push_back(job);
        while (threads_ < offers_.size() && threads_ < parallelThreads() - 1 && addThread())
            ++threads_;
        wake_.notify_all();
    }
    // Takes back the offers that no thread has taken up.
    void withdraw(const std::shared_ptr<Job>& job) {
        const std::scoped_lock lock(mutex_);
        std::erase(offers_, job);
    }

  private:
    // False where the system gives no thread: the caller then works alone.
    bool addThread() {
        try {
            std::thread([this] { serve(); }).detach();
            return true;
        } catch (const std::system_error&) {
            return false;
        }
    }

    [[noreturn]] void serve() {
        for (;;) {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [&] { return !offers_.empty(); });
            const std::shared_ptr<Job> job = std::move(offers_.front());
            offers_.pop_front();
            {
                const std::scoped_lock inside(job->mutex);
                ++job->helpers;
            }
            lock.unlock();
            job->take();
            const std::scoped_lock inside(job->mutex);
            if (--job->helpers == 0) job->left.notify_all();
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::shared_ptr<Job>> offers_;
    std::size_t threads_ = 0;
};

Pool& pool() {
    static Pool& only = *new Pool;
    return only;
}

unsigned processors() {
#ifdef __linux__
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0) {
        const int count = CPU_COUNT(&allowed);
        if (count > 0) return static_cast<unsigned>(count);
    }
#endif
    return std::max(1U, std::thread::hardware_concurrency());
}

} // namespace

unsigned parallelThreads() {
    static const unsigned count = processors();
    return count;
}

void runParallel(std::size_t pieces, const std::function<void(std::size_t)>& work,
                 unsigned threads) {
    if (pieces == 0) return;
    const unsigned limit = threads == 0 ? parallelThreads() : std::min(threads, parallelThreads());
    const auto helpers = static_cast<unsigned>(std::min<std::size_t>(limit, pieces) - 1);
    if (helpers == 0) {
        for (std::size_t piece = 0; piece < pieces; ++piece)
            work(piece);
        return;
    }
    const auto job = std::make_shared<Job>();
    job->pieces = pieces;
    job->work = &work;
    pool().offer(job, helpers);
    job->take();
    pool().withdraw(job);
    std::unique_lock lock(job->mutex);
    job->left.wait(lock, [&] { return job->helpers == 0; });
    if (job->failure) std::rethrow_exception(job->failure);
}

} // namespace norvel
