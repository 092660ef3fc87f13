// Sorting on all processors.
#pragma once

#include "platform/runtime/Parallel.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace norvel::adodb {

inline constexpr std::size_t itemsAPiece = 65536; // fewer are done before threads are awake

// All items of the runs in order, which are sorted each and then merged two by two. less is a total
// order but for items that may be exchanged.
template <class T, class Less>
std::vector<T> sortRuns(std::vector<std::vector<T>> runs, Less less, unsigned threads) {
    runParallel(
        runs.size(), [&](std::size_t i) { std::sort(runs[i].begin(), runs[i].end(), less); },
        threads);
    while (runs.size() > 1) {
        std::vector<std::vector<T>> merged((runs.size() + 1) / 2);
        runParallel(
            merged.size(),
            [&](std::size_t i) {
                std::vector<T> a = std::move(runs[2 * i]);
                if (2 * i + 1 < runs.size()) {
                    const std::vector<T> b = std::move(runs[2 * i + 1]);
                    merged[i].reserve(a.size() + b.size());
                    std::merge(a.begin(), a.end(), b.begin(), b.end(),
                               std::back_inserter(merged[i]), less);
                } else {
                    merged[i] = std::move(a);
                }
            },
            threads);
        runs = std::move(merged);
    }
    return runs.empty() ? std::vector<T>() : std::move(runs.front());
}

// The same of make(0) to make(count - 1).
template <class T, class Make, class Less>
std::vector<T> sortMade(std::size_t count, Make make, Less less, unsigned threads) {
    std::vector<std::vector<T>> runs((count + itemsAPiece - 1) / itemsAPiece);
    runParallel(
        runs.size(),
        [&](std::size_t piece) {
            const std::size_t end = std::min(count, (piece + 1) * itemsAPiece);
            runs[piece].reserve(end - piece * itemsAPiece);
            for (std::size_t i = piece * itemsAPiece; i < end; ++i)
                runs[piece].push_back(make(i));
        },
        threads);
    return sortRuns(std::move(runs), less, threads);
}

} // namespace norvel::adodb
