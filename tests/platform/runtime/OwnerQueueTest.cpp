// Work from other threads, run by the owner of the windows.
#include "platform/runtime/OwnerQueue.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/MessageBox.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace norvel {
namespace {

class OwnerQueue : public testing::Test {
  protected:
    void SetUp() override {
        setOwnerWaker({});
        before_ = impostaGestoreMessaggi([this](const Messaggio& messaggio) {
            boxes_.push_back(messaggio);
            return BoxAnswer::Ok;
        });
    }
    void TearDown() override {
        setOwnerWaker({});
        while (runOwnerQueue() > 0) {
        }
        impostaGestoreMessaggi(before_);
    }

    // Work that only notes its name.
    std::function<void()> note(int name) {
        return [this, name] { ran_.push_back(name); };
    }

    std::vector<int> ran_;
    std::vector<Messaggio> boxes_;
    BoxHandler before_;
};

TEST_F(OwnerQueue, RunsInTheOrderOfPosting) {
    EXPECT_EQ(runOwnerQueue(), 0U);
    for (int name = 1; name <= 3; ++name)
        postToOwner(note(name));
    EXPECT_TRUE(ran_.empty());
    EXPECT_EQ(runOwnerQueue(), 3U);
    EXPECT_EQ(ran_, (std::vector{1, 2, 3}));
    EXPECT_EQ(runOwnerQueue(), 0U);
}

TEST_F(OwnerQueue, WorkThatPostsWaitsForTheNextRun) {
    postToOwner([this] {
        ran_.push_back(1);
        postToOwner(note(3));
    });
    postToOwner(note(2));
    EXPECT_EQ(runOwnerQueue(), 2U);
    EXPECT_EQ(ran_, (std::vector{1, 2}));
    EXPECT_EQ(runOwnerQueue(), 1U);
    EXPECT_EQ(ran_, (std::vector{1, 2, 3}));
}

TEST_F(OwnerQueue, ALoopInsideWorkRunsWhatFollowsOnce) {
    std::size_t inside = 0;
    postToOwner([this, &inside] {
        ran_.push_back(1);
        postToOwner(note(3));
        inside = runOwnerQueue(); // as a modal window's event loop does
        ran_.push_back(10);
    });
    postToOwner(note(2));
    EXPECT_EQ(runOwnerQueue(), 1U);
    EXPECT_EQ(inside, 2U);
    EXPECT_EQ(ran_, (std::vector{1, 2, 3, 10}));
    EXPECT_EQ(runOwnerQueue(), 0U);
}

TEST_F(OwnerQueue, NoWorkIsNoWork) {
    postToOwner({});
    EXPECT_EQ(runOwnerQueue(), 0U);
}

TEST_F(OwnerQueue, AnErroreIsShownInTheUsualBoxAndTheRestRuns) {
    postToOwner([] { throw Errore(3021, "Record corrente assente"); });
    postToOwner(note(2));
    EXPECT_EQ(runOwnerQueue(), 2U);
    EXPECT_EQ(ran_, std::vector{2});
    ASSERT_EQ(boxes_.size(), 1U);
    EXPECT_EQ(boxes_[0], (Messaggio{"Errore nel modulo di ricerca, rivolgersi all'assistenza\r\n"
                                    "Record corrente assente",
                                    "TAMBORIN", BoxIcon::Information, BoxButtons::Ok}));
}

TEST_F(OwnerQueue, AnyOtherExceptionLeavesTheRestInTheQueueAndWakesForIt) {
    postToOwner([] { throw std::logic_error("x"); });
    postToOwner(note(2));
    int wakes = 0;
    setOwnerWaker([&wakes] { ++wakes; });
    wakes = 0;
    EXPECT_THROW(runOwnerQueue(), std::logic_error);
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(runOwnerQueue(), 1U);
    EXPECT_EQ(ran_, std::vector{2});
}

TEST_F(OwnerQueue, WakesOnceWhenTheQueueStopsBeingEmpty) {
    int wakes = 0;
    setOwnerWaker([&wakes] { ++wakes; });
    EXPECT_EQ(wakes, 0);
    postToOwner(note(1));
    EXPECT_EQ(wakes, 1);
    postToOwner(note(2));
    EXPECT_EQ(wakes, 1);
    runOwnerQueue();
    const int afterRun = wakes;
    postToOwner(note(3));
    EXPECT_EQ(wakes, afterRun + 1);
}

TEST_F(OwnerQueue, AWakerSetLateLearnsOfWhatIsQueued) {
    postToOwner(note(1));
    int wakes = 0;
    setOwnerWaker([&wakes] { ++wakes; });
    EXPECT_EQ(wakes, 1);
}

TEST_F(OwnerQueue, WakesForWorkLeftByARun) {
    int wakes = 0;
    setOwnerWaker([&wakes] { ++wakes; });
    postToOwner([this, &wakes] {
        wakes = 0;
        postToOwner(note(2));
    });
    runOwnerQueue();
    EXPECT_EQ(wakes, 1);
}

// A box shown by work has a loop of its own, which must learn of what stands behind it.
TEST_F(OwnerQueue, WakesBeforeWorkThatHasMoreBehindIt) {
    int wakes = 0;
    bool wokenBefore = false;
    setOwnerWaker([&wakes] { ++wakes; });
    postToOwner([&] { wokenBefore = wakes > 0; });
    postToOwner(note(2));
    wakes = 0;
    runOwnerQueue();
    EXPECT_TRUE(wokenBefore);
}

TEST_F(OwnerQueue, AWakerMayReplaceItself) {
    int second = 0;
    setOwnerWaker([&second] { setOwnerWaker([&second] { ++second; }); });
    postToOwner(note(1)); // the first waker sets the second, which learns of the work at once
    EXPECT_EQ(second, 1);
}

// What an owner with an event loop does: sleeps until woken, runs, sleeps.
class Owner {
  public:
    Owner() {
        setOwnerWaker([this] {
            const std::lock_guard lock(mutex_);
            woken_ = true;
            wake_.notify_one();
        });
    }
    ~Owner() { setOwnerWaker({}); }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    // Runs the queue until so many pieces of work ran; false if a wake was missed.
    bool run(std::size_t pieces) {
        std::size_t count = 0;
        while (count < pieces) {
            std::unique_lock lock(mutex_);
            if (!wake_.wait_for(lock, std::chrono::seconds(20), [this] { return woken_; }))
                return false;
            woken_ = false;
            lock.unlock();
            count += runOwnerQueue();
        }
        return count == pieces;
    }

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    bool woken_ = false;
};

TEST_F(OwnerQueue, ManyThreadsLoseNothingAndKeepTheirOrder) {
    constexpr int threads = 4;
    constexpr int pieces = 2000;
    std::vector<std::vector<int>> seen(threads);
    const std::thread::id owner = std::this_thread::get_id();
    bool onOwner = true;
    Owner loop;
    std::vector<std::thread> posting;
    posting.reserve(threads);
    for (int thread = 0; thread < threads; ++thread) {
        posting.emplace_back([&, thread] {
            for (int piece = 0; piece < pieces; ++piece) {
                postToOwner([&, thread, piece] {
                    onOwner = onOwner && std::this_thread::get_id() == owner;
                    seen[static_cast<std::size_t>(thread)].push_back(piece);
                });
            }
        });
    }
    EXPECT_TRUE(loop.run(threads * pieces));
    for (std::thread& thread : posting)
        thread.join();
    EXPECT_TRUE(onOwner);
    for (const std::vector<int>& order : seen) {
        ASSERT_EQ(order.size(), static_cast<std::size_t>(pieces));
        for (int piece = 0; piece < pieces; ++piece)
            ASSERT_EQ(order[static_cast<std::size_t>(piece)], piece);
    }
}

TEST_F(OwnerQueue, AWakerIsNeverCalledAfterItWasReplaced) {
    std::atomic<bool> stop = false;
    std::thread posting([&] {
        while (!stop) {
            postToOwner([] {});
            std::this_thread::yield();
        }
    });
    for (int round = 0; round < 200; ++round) {
        auto alive = std::make_unique<std::atomic<int>>(0);
        setOwnerWaker([&counter = *alive] { ++counter; });
        runOwnerQueue();
        setOwnerWaker({});
        alive.reset(); // a waker still running would touch freed memory
    }
    stop = true;
    posting.join();
}

TEST_F(OwnerQueue, BoxesFromManyThreadsReachTheHandler) {
    std::atomic<int> shown = 0;
    impostaGestoreMessaggi([&shown](const Messaggio&) {
        ++shown;
        return BoxAnswer::Ok;
    });
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int box = 0; box < 100; ++box)
                mostraMessaggio({"messaggio"});
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(shown, 400);
}

} // namespace
} // namespace norvel
