// Stable sorting by whole numbers, on all processors.
#pragma once

#include "platform/adodb/store/Slab.h"
#include "platform/runtime/Parallel.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace norvel::adodb {

inline constexpr std::size_t itemsAPiece = 65536; // fewer are done before threads are awake

// Items of a plain type that nobody has written yet, so that threads touch their parts first.
template <class T>
class Room {
  public:
    Room() = default;
    explicit Room(std::size_t size) : slab_(size * sizeof(T)), size_(size) {}
    T* data() { return reinterpret_cast<T*>(slab_.data()); }
    const T* data() const { return reinterpret_cast<const T*>(slab_.data()); }
    std::size_t size() const { return size_; }
    std::size_t bytes() const { return slab_.size(); }
    T& operator[](std::size_t i) { return data()[i]; }
    const T& operator[](std::size_t i) const { return data()[i]; }

  private:
    Slab slab_;
    std::size_t size_ = 0;
};

// Calls work(begin, end) for pieces of 0 to count - 1, each but the last a multiple of 64 long.
template <class Work>
void forPieces(std::size_t count, unsigned threads, Work work) {
    runParallel((count + itemsAPiece - 1) / itemsAPiece,
                [&](std::size_t piece) {
                    work(piece * itemsAPiece, std::min(count, (piece + 1) * itemsAPiece));
                },
                threads);
}

// A key and where it comes from, in twelve bytes.
struct KeyedPlace {
    std::uint32_t high;
    std::uint32_t low;
    std::uint32_t at;
};
inline KeyedPlace keyed(std::uint64_t key, std::uint32_t at) {
    return {static_cast<std::uint32_t>(key >> 32U), static_cast<std::uint32_t>(key), at};
}
// The same in one number: the key in the upper half.
using PackedPlace = std::uint64_t;
inline PackedPlace packed(std::uint32_t key, std::uint32_t at) {
    return PackedPlace{key} << 32U | at;
}

inline std::uint64_t sortKey(const KeyedPlace& item) {
    return std::uint64_t{item.high} << 32U | item.low;
}
inline std::uint64_t sortKey(PackedPlace item) {
    return item >> 32U;
}

namespace radix {

inline constexpr std::size_t few = 40; // so many are put in order one by one

template <class Item>
void insertEach(const Item* from, Item* to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Item item = from[i];
        std::size_t at = i;
        for (; at > 0 && sortKey(to[at - 1]) > sortKey(item); --at)
            to[at] = to[at - 1];
        to[at] = item;
    }
}

// Moves the items to their places by one byte of their keys.
template <class Item>
void moveByByte(const Item* from, Item* to, std::size_t count, unsigned shift) {
    std::array<std::uint32_t, 256> places{};
    for (std::size_t i = 0; i < count; ++i)
        ++places[sortKey(from[i]) >> shift & 0xFFU];
    std::uint32_t next = 0;
    for (std::uint32_t& place : places) {
        const std::uint32_t size = place;
        place = next;
        next += size;
    }
    for (std::size_t i = 0; i < count; ++i)
        to[places[sortKey(from[i]) >> shift & 0xFFU]++] = from[i];
}

// Sorts what lies in from into to; both are written. On this thread, for what fits its cache.
template <class Item>
void sortInto(Item* from, Item* to, std::size_t count) {
    if (count <= few) return insertEach(from, to, count);
    const std::uint64_t first = sortKey(from[0]);
    std::uint64_t differing = 0;
    for (std::size_t i = 1; i < count; ++i)
        differing |= sortKey(from[i]) ^ first;
    Item* source = from;
    Item* target = to;
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xFFU) == 0) continue;
        moveByByte(source, target, count, shift);
        std::swap(source, target);
    }
    if (source != to) std::copy_n(source, count, to);
}

// Parts the keys between so many that some of them, looked at here and there, seem equally many.
class Parting {
  public:
    template <class Item>
    Parting(const Item* items, std::size_t count) {
        constexpr std::size_t aPart = 4096;
        constexpr std::size_t looks = 16; // a part
        parts_ = std::clamp(std::bit_ceil(count / aPart), std::size_t{2}, std::size_t{1024});
        std::vector<std::uint64_t> seen(parts_ * looks);
        std::uint64_t chance = count;
        for (std::uint64_t& key : seen) {
            chance = chance * 6364136223846793005U + 1442695040888963407U; // Knuth's
            key = sortKey(items[(chance >> 32U) % count]);
        }
        std::ranges::sort(seen);
        for (std::size_t i = looks; i < seen.size(); i += looks)
            if (starts_.empty() || starts_.back() != seen[i]) starts_.push_back(seen[i]);
        starts_.resize(parts_ - 1, std::numeric_limits<std::uint64_t>::max());
    }
    std::size_t parts() const { return parts_; }
    std::size_t partOf(std::uint64_t key) const {
        std::size_t part = 0;
        for (std::size_t step = parts_ / 2; step > 0; step /= 2)
            part += starts_[part + step - 1] <= key ? step : 0;
        return part;
    }

  private:
    std::size_t parts_;
    std::vector<std::uint64_t> starts_; // of each part but the first
};

// sizes[piece * parts + part], of the items, becomes where the piece's first of that part goes, the
// parts in their order and in each the pieces in theirs. Returns where each part begins, and the
// end.
inline std::vector<std::size_t> placesFromSizes(std::vector<std::uint32_t>& sizes,
                                                std::size_t parts) {
    std::vector<std::size_t> begins;
    begins.reserve(parts + 1);
    std::size_t next = 0;
    for (std::size_t p = 0; p < parts; ++p) {
        begins.push_back(next);
        for (std::size_t i = p; i < sizes.size(); i += parts) {
            const std::size_t size = sizes[i];
            sizes[i] = static_cast<std::uint32_t>(next);
            next += size;
        }
    }
    begins.push_back(next);
    return begins;
}

// Brings the items to their parts, in spare. Returns where each part begins, and the end.
template <class Item>
std::vector<std::size_t> part(const Item* items, Item* spare, std::size_t count, unsigned threads) {
    const Parting parting(items, count);
    const std::size_t parts = parting.parts();
    const std::size_t pieces = (count + itemsAPiece - 1) / itemsAPiece;
    std::vector<std::uint32_t> places(pieces * parts);
    Room<std::uint16_t> partsOf(count);
    forPieces(count, threads, [&](std::size_t begin, std::size_t end) {
        std::uint32_t* const sizes = places.data() + begin / itemsAPiece * parts;
        for (std::size_t i = begin; i < end; ++i) {
            const std::size_t own = parting.partOf(sortKey(items[i]));
            partsOf[i] = static_cast<std::uint16_t>(own);
            ++sizes[own];
        }
    });
    std::vector<std::size_t> begins = placesFromSizes(places, parts);
    forPieces(count, threads, [&](std::size_t begin, std::size_t end) {
        std::uint32_t* const own = places.data() + begin / itemsAPiece * parts;
        for (std::size_t i = begin; i < end; ++i)
            spare[own[partsOf[i]]++] = items[i];
    });
    return begins;
}

} // namespace radix

// Sorts the items by sortKey, equal ones as they stood. spare: as much room. finish(from, to,
// count) puts into to, in order, what lies in from; it runs on any thread, over parts of the items
// that are in order among themselves, and may write both. At most 2^32 - 1 items.
template <class Item, class Finish>
void radixSort(Item* items, Item* spare, std::size_t count, Finish finish, unsigned threads) {
    constexpr std::size_t alone = 16384; // so many fit a processor's own cache
    if (count <= alone) {
        std::copy_n(items, count, spare);
        finish(spare, items, count);
        return;
    }
    const auto begins = radix::part(items, spare, count, threads);
    runParallel(
        begins.size() - 1,
        [&](std::size_t p) {
            const std::size_t begin = begins[p];
            finish(spare + begin, items + begin, begins[p + 1] - begin);
        },
        threads);
}
template <class Item>
void radixSort(Room<Item>& items, unsigned threads) {
    Room<Item> spare(items.size());
    radixSort(items.data(), spare.data(), items.size(), radix::sortInto<Item>, threads);
}

// Few enough keys that a count of each fits a processor's own cache.
inline constexpr std::size_t fewKeys = 4096;

// Items of keys below keys (at most fewKeys) in the order of the keys, equal ones as they stood,
// without moving the items themselves: put(place, i) says where the i-th goes, on any thread.
// Returns where each key's items begin, and the end. keyOf(i): asked twice.
template <class KeyOf, class Put>
std::vector<std::size_t> countingSort(std::size_t count, std::size_t keys, KeyOf keyOf, Put put,
                                      unsigned threads) {
    const std::size_t pieces = (count + itemsAPiece - 1) / itemsAPiece;
    std::vector<std::uint32_t> places(pieces * keys);
    forPieces(count, threads, [&](std::size_t begin, std::size_t end) {
        std::uint32_t* const sizes = places.data() + begin / itemsAPiece * keys;
        for (std::size_t i = begin; i < end; ++i)
            ++sizes[keyOf(i)];
    });
    std::vector<std::size_t> begins = radix::placesFromSizes(places, keys);
    forPieces(count, threads, [&](std::size_t begin, std::size_t end) {
        std::uint32_t* const own = places.data() + begin / itemsAPiece * keys;
        for (std::size_t i = begin; i < end; ++i)
            put(own[keyOf(i)]++, i);
    });
    return begins;
}

} // namespace norvel::adodb
