// Sorting keys of any length.
#pragma once

#include "platform/adodb/sort/RadixSort.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// Keys of bytes, each with a number, as words of eight bytes: the number, then the bytes, the first
// in the highest place, then zeros, one at least.
class RunKeys {
  public:
    // A key that holds no zero byte.
    void add(std::uint64_t number, std::string_view key);
    // Any bytes: they are written so that none is zero, in the same order.
    void addBytes(std::uint64_t number, std::string_view bytes);
    std::size_t size() const { return size_; }
    // Room for keys of so many bytes in all.
    void reserve(std::size_t keys, std::size_t bytes) { grow(keys * 2 + bytes / 8); }

    // Calls work with the address of each key's number.
    template <class Work>
    void each(Work work) {
        for (std::size_t at = 0; at < used_; ++at) {
            work(words_.data() + at);
            do
                ++at;
            while ((words_[at] & 0xFFU) != 0);
        }
    }

  private:
    void grow(std::size_t words);

    Room<std::uint64_t> words_;
    std::size_t used_ = 0;
    std::size_t size_ = 0;
};

// A key on its way to its place.
struct RunItem {
    std::uint64_t key = 0;                 // the word that is compared by now
    const std::uint64_t* number = nullptr; // where the key's number stands
};
inline std::uint64_t sortKey(const RunItem& item) {
    return item.key;
}

// Sorts the items, whose keys are their first words; equal ones stay as they stood. fresh[i]
// becomes 1 where item i differs from the one before it, 0 where it equals that.
void sortRuns(Room<RunItem>& items, std::uint8_t* fresh, unsigned threads);

} // namespace norvel::adodb
