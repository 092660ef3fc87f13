#include "platform/adodb/sort/RunSort.h"

#include <cstring>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace norvel::adodb {

namespace {

constexpr std::size_t wordBytes = sizeof(std::uint64_t);

// Eight bytes, the first in the highest place, so that words compare as their bytes do.
std::uint64_t wordAt(const char* bytes) {
    const auto byte = [&](unsigned i) {
        return std::uint64_t{static_cast<unsigned char>(bytes[i])} << (56U - 8U * i);
    };
    return byte(0) | byte(1) | byte(2) | byte(3) | byte(4) | byte(5) | byte(6) | byte(7);
}

// The same of fewer than eight at the end of a key, then zeros.
std::uint64_t lastWord(std::string_view key) {
    const std::size_t rest = key.size() % wordBytes;
    if (rest == 0) return 0;
    if (key.size() > wordBytes)
        return wordAt(key.data() + key.size() - wordBytes) << (64U - 8U * rest);
    char bytes[wordBytes] = {};
    std::memcpy(bytes, key.data(), rest);
    return wordAt(bytes);
}

bool hasMore(std::uint64_t word) {
    return (word & 0xFFU) != 0;
}

// Items that are equal up to some word and are to be sorted by the next.
struct Rest {
    std::size_t begin = 0;
    std::size_t count = 0;
    std::size_t word = 0; // 1 is the first
};

class Sorting {
  public:
    Sorting(Room<RunItem>& items, std::uint8_t* fresh, unsigned threads)
        : items_(items), spare_(items.size()), fresh_(fresh), threads_(threads) {}

    void run() {
        large_.push_back({0, items_.size(), 1});
        while (!large_.empty()) {
            const Rest next = large_.back();
            large_.pop_back();
            RunItem* const items = items_.data() + next.begin;
            radixSort(
                items, spare_.data() + next.begin, next.count,
                [&](RunItem* from, RunItem* to, std::size_t count) {
                    finish(from, to, count, next.word);
                },
                threads_);
        }
    }

  private:
    static constexpr std::size_t many = itemsAPiece; // equal ones that all threads go on with

    // One part: by this word, then, where equal keys go on, by the next ones.
    void finish(RunItem* from, RunItem* to, std::size_t count, std::size_t word) {
        std::vector<Rest> rest;
        sortRest(from, to, {0, count, word}, rest);
        while (!rest.empty()) {
            const Rest next = rest.back();
            rest.pop_back();
            std::copy_n(to + next.begin, next.count, from + next.begin);
            sortRest(from, to, next, rest);
        }
    }
    void sortRest(RunItem* from, RunItem* to, const Rest& by, std::vector<Rest>& rest) {
        radix::sortInto(from + by.begin, to + by.begin, by.count);
        const std::size_t end = by.begin + by.count;
        for (std::size_t i = by.begin; i < end;) {
            std::size_t behind = i + 1;
            while (behind < end && to[behind].key == to[i].key)
                ++behind;
            mark(to + i, behind - i);
            if (behind - i > 1 && hasMore(to[i].key)) goOn(to, {i, behind - i, by.word + 1}, rest);
            i = behind;
        }
    }
    void mark(const RunItem* equals, std::size_t count) {
        std::uint8_t* const fresh = fresh_ + (equals - items_.data());
        fresh[0] = 1;
        std::memset(fresh + 1, 0, count - 1);
    }
    void goOn(RunItem* to, const Rest& next, std::vector<Rest>& rest) {
        for (std::size_t i = next.begin; i < next.begin + next.count; ++i)
            to[i].key = to[i].number[next.word];
        if (next.count < many) {
            rest.push_back(next);
            return;
        }
        const std::scoped_lock lock(mutex_);
        large_.push_back(
            {static_cast<std::size_t>(to - items_.data()) + next.begin, next.count, next.word});
    }

    Room<RunItem>& items_;
    Room<RunItem> spare_;
    std::uint8_t* fresh_;
    unsigned threads_;
    std::mutex mutex_; // of large_
    std::vector<Rest> large_;
};

} // namespace

// By so many words.
void RunKeys::grow(std::size_t words) {
    Room<std::uint64_t> larger(words_.size() + words);
    std::copy_n(words_.data(), used_, larger.data());
    words_ = std::move(larger);
}

void RunKeys::add(std::uint64_t number, std::string_view key) {
    const std::size_t whole = key.size() / wordBytes;
    if (words_.size() - used_ < whole + 2) grow(std::max(words_.size(), whole + 2));
    std::uint64_t* const words = words_.data() + used_;
    used_ += whole + 2;
    words[0] = number;
    for (std::size_t i = 0; i < whole; ++i)
        words[i + 1] = wordAt(key.data() + i * wordBytes);
    words[whole + 1] = lastWord(key);
    ++size_;
}

// 0 becomes 1 1, and 1 becomes 1 2.
void RunKeys::addBytes(std::uint64_t number, std::string_view bytes) {
    std::string key;
    key.reserve(bytes.size());
    for (const char byte : bytes) {
        if (byte == 0 || byte == 1) {
            key += '\1';
            key += static_cast<char>(byte + 1);
        } else {
            key += byte;
        }
    }
    add(number, key);
}

void sortRuns(Room<RunItem>& items, std::uint8_t* fresh, unsigned threads) {
    if (items.size() > 0) Sorting(items, fresh, threads).run();
}

} // namespace norvel::adodb
