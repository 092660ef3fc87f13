#include "platform/runtime/Parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace norvel {
namespace {

TEST(Parallel, EveryPieceIsWorkedOnOnce) {
    std::vector<std::atomic<int>> times(1000);
    runParallel(times.size(), [&](std::size_t piece) { ++times[piece]; });
    for (const auto& count : times)
        EXPECT_EQ(count, 1);
}

TEST(Parallel, NoPiecesAreNoWork) {
    runParallel(0, [](std::size_t) { FAIL(); });
}

TEST(Parallel, OneThreadIsTheCaller) {
    std::set<std::thread::id> threads;
    runParallel(
        100, [&](std::size_t) { threads.insert(std::this_thread::get_id()); }, 1);
    EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
}

TEST(Parallel, NoMoreThreadsThanAllowedWorkAtOnce) {
    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    runParallel(
        200,
        [&](std::size_t) {
            const int now = ++inside;
            int seen = most;
            while (now > seen && !most.compare_exchange_weak(seen, now)) {
            }
            std::this_thread::yield();
            --inside;
        },
        2);
    EXPECT_LE(most, 2);
}

TEST(Parallel, TheFirstFailureComesBackAndThePiecesNotBegunAreLeftOut) {
    std::atomic<int> done{0};
    const auto work = [&](std::size_t piece) {
        if (piece == 3) throw std::runtime_error("terzo");
        ++done;
    };
    EXPECT_THROW(runParallel(100000, work), std::runtime_error);
    EXPECT_LT(done, 100000);
    runParallel(10, [&](std::size_t) { ++done; }); // and the threads go on
}

TEST(Parallel, CallsFromSeveralThreadsAndFromWithinWorkEnd) {
    std::atomic<int> sum{0};
    std::vector<std::thread> callers;
    callers.reserve(4);
    for (int i = 0; i < 4; ++i)
        callers.emplace_back([&] {
            for (int round = 0; round < 20; ++round)
                runParallel(8, [&](std::size_t) { runParallel(8, [&](std::size_t) { ++sum; }); });
        });
    for (auto& caller : callers)
        caller.join();
    EXPECT_EQ(sum, 4 * 20 * 64);
}

TEST(Parallel, WhatPiecesWroteIsSeenAfterwards) {
    for (int round = 0; round < 200; ++round) {
        std::vector<int> values(64);
        runParallel(values.size(),
                    [&](std::size_t piece) { values[piece] = static_cast<int>(piece) + 1; });
        int total = 0;
        for (const int value : values)
            total += value;
        ASSERT_EQ(total, 64 * 65 / 2);
    }
}

} // namespace
} // namespace norvel
