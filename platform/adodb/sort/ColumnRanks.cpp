#include "platform/adodb/sort/ColumnRanks.h"

#include "platform/adodb/sort/ColumnKeys.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <numeric>
#include <utility>

namespace norvel::adodb {

namespace {

// Puts the places of all pieces in order, kind after kind.
class Ranking {
  public:
    Ranking(ColumnKeys& keys, std::size_t rows, unsigned threads)
        : keys_(keys), fresh_(rows), threads_(threads) {
        order_.places = Room<std::uint32_t>(rows);
    }

    ColumnOrder run() {
        equals(&KeyPiece::nulls);
        numbers(&KeyPiece::numbers);
        exact();
        numbers(&KeyPiece::dates);
        if (keys_.sharedTexts())
            sharedTexts();
        else
            runs(&KeyPiece::texts);
        runs(&KeyPiece::bytes);
        equals(&KeyPiece::others);
        giveRanks();
        return std::move(order_);
    }

  private:
    // How many of a kind stand before each piece, and in all.
    template <class List>
    std::vector<std::size_t> startsOf(List KeyPiece::*list) const {
        std::vector<std::size_t> starts{0};
        for (KeyPiece& piece : keys_.pieces())
            starts.push_back(starts.back() + (piece.*list).size());
        return starts;
    }
    template <class Work>
    void eachPiece(Work work) {
        runParallel(
            keys_.pieces().size(), [&](std::size_t i) { work(keys_.pieces()[i], i); }, threads_);
    }

    void equals(std::vector<Place> KeyPiece::*list) {
        const auto starts = startsOf(list);
        eachPiece([&](KeyPiece& piece, std::size_t i) {
            std::ranges::copy(piece.*list, order_.places.data() + filled_ + starts[i]);
            std::fill_n(fresh_.data() + filled_ + starts[i], (piece.*list).size(), 0);
        });
        end(starts.back());
    }
    void numbers(std::vector<KeyedPlace> KeyPiece::*list) {
        const auto starts = startsOf(list);
        Room<KeyedPlace> items(starts.back());
        eachPiece([&](KeyPiece& piece, std::size_t i) {
            std::ranges::copy(piece.*list, items.data() + starts[i]);
            (piece.*list) = {};
        });
        radixSort(items, threads_);
        put(
            items.size(), [&](std::size_t i) { return items[i].at; },
            [&](std::size_t i) { return sortKey(items[i]) != sortKey(items[i - 1]); });
    }
    // By the nearest double first; the few that share one by all they have.
    void exact() {
        std::vector<ExactPlace> all;
        for (KeyPiece& piece : keys_.pieces())
            all.insert(all.end(), piece.exact.begin(), piece.exact.end());
        Room<KeyedPlace> items(all.size());
        for (std::uint32_t i = 0; i < items.size(); ++i)
            items[i] = keyed(all[i].key.nearest, i);
        const auto exactly = [&](const KeyedPlace& item) -> const Decimal& {
            return all[item.at].key.exact;
        };
        Room<KeyedPlace> spare(all.size());
        radixSort(
            items.data(), spare.data(), items.size(),
            [&](KeyedPlace* from, KeyedPlace* to, std::size_t count) {
                radix::sortInto(from, to, count);
                for (std::size_t i = 0; i < count;) {
                    std::size_t end = i + 1;
                    while (end < count && sortKey(to[end]) == sortKey(to[i]))
                        ++end;
                    if (end - i > 1) std::ranges::stable_sort(to + i, to + end, {}, exactly);
                    i = end;
                }
            },
            threads_);
        put(
            items.size(), [&](std::size_t i) { return all[items[i].at].at; },
            [&](std::size_t i) { return !(all[items[i].at].key == all[items[i - 1].at].key); });
    }

    // The keys of all pieces; what add(piece) says is added to their numbers.
    template <class Add>
    Room<RunItem> runItems(RunKeys KeyPiece::*list, Add add) {
        const auto starts = startsOf(list);
        Room<RunItem> items(starts.back());
        eachPiece([&](KeyPiece& piece, std::size_t i) {
            RunItem* next = items.data() + starts[i];
            const std::uint64_t more = add(starts[i]);
            (piece.*list).each([&](std::uint64_t* number) {
                *number += more;
                *next++ = {number[1], number};
            });
        });
        return items;
    }
    void runs(RunKeys KeyPiece::*list) {
        Room<RunItem> items = runItems(list, [](std::size_t) { return 0; });
        Room<std::uint8_t> fresh(items.size());
        sortRuns(items, fresh.data(), threads_);
        put(
            items.size(), [&](std::size_t i) { return static_cast<Place>(*items[i].number); },
            [&](std::size_t i) { return fresh[i] != 0; });
    }
    // The keys get ranks first, then the rows that use them are put in order by those.
    void sharedTexts() {
        const auto keyStarts = startsOf(&KeyPiece::texts);
        Room<RunItem> items = runItems(&KeyPiece::texts, [](std::size_t before) { return before; });
        Room<std::uint8_t> fresh(items.size());
        sortRuns(items, fresh.data(), threads_);
        Room<std::uint32_t> ranks(items.size());
        std::uint32_t rank = 0;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (i > 0) rank += fresh[i];
            ranks[*items[i].number] = rank;
        }
        if (items.size() > 0 && rank < fewKeys)
            return usersOfFew(keyStarts, ranks, rank + std::size_t{1});
        const auto starts = startsOf(&KeyPiece::uses);
        Room<PackedPlace> users(starts.back());
        eachPiece([&](const KeyPiece& piece, std::size_t i) {
            PackedPlace* next = users.data() + starts[i];
            for (const KeyPiece::Use& use : piece.uses)
                *next++ = packed(ranks[keyStarts[i] + use.key], use.at);
        });
        radixSort(users, threads_);
        put(
            users.size(), [&](std::size_t i) { return static_cast<Place>(users[i]); },
            [&](std::size_t i) { return sortKey(users[i]) != sortKey(users[i - 1]); });
    }

    void usersOfFew(const std::vector<std::size_t>& keyStarts, const Room<std::uint32_t>& ranks,
                    std::size_t count) {
        const auto starts = startsOf(&KeyPiece::uses);
        Room<std::uint16_t> users(starts.back());
        Room<Place> at(starts.back());
        eachPiece([&](const KeyPiece& piece, std::size_t i) {
            std::size_t next = starts[i];
            for (const KeyPiece::Use& use : piece.uses) {
                users[next] = static_cast<std::uint16_t>(ranks[keyStarts[i] + use.key]);
                at[next++] = use.at;
            }
        });
        std::uint32_t* const places = order_.places.data() + filled_;
        const auto begins = countingSort(
            users.size(), count, [&](std::size_t i) { return users[i]; },
            [&](std::size_t place, std::size_t i) { places[place] = at[i]; }, threads_);
        std::fill_n(fresh_.data() + filled_, users.size(), std::uint8_t{0});
        for (std::size_t key = 0; key < count; ++key)
            fresh_[filled_ + begins[key]] = 1;
        end(users.size());
    }

    // So many of a kind, in order; differs(i): from the one before.
    template <class At, class Differs>
    void put(std::size_t count, At at, Differs differs) {
        std::uint32_t* const places = order_.places.data() + filled_;
        std::uint8_t* const fresh = fresh_.data() + filled_;
        forPieces(count, threads_, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i) {
                places[i] = at(i);
                fresh[i] = i > 0 && differs(i) ? 1 : 0;
            }
        });
        end(count);
    }
    // The first of a kind differs from what stands before.
    void end(std::size_t count) {
        if (count == 0) return;
        fresh_[filled_] = 1;
        filled_ += count;
    }

    void giveRanks() {
        const std::size_t rows = fresh_.size();
        order_.fresh = Room<std::uint64_t>((rows + 63) / 64);
        std::vector<std::uint32_t> before((rows + itemsAPiece - 1) / itemsAPiece + 1);
        forPieces(rows, threads_, [&](std::size_t begin, std::size_t end) {
            std::uint32_t count = 0;
            for (std::size_t word = begin; word < end; word += 64) {
                std::uint64_t bits = 0;
                for (std::size_t i = word; i < std::min(end, word + 64); ++i)
                    bits |= std::uint64_t{fresh_[i]} << (i - word);
                order_.fresh[word / 64] = bits;
                count += static_cast<std::uint32_t>(std::popcount(bits));
            }
            before[begin / itemsAPiece + 1] = count;
        });
        std::partial_sum(before.begin(), before.end(), before.begin());
        order_.ranks = Room<std::uint32_t>(rows);
        forPieces(rows, threads_, [&](std::size_t begin, std::size_t end) {
            std::uint32_t rank = before[begin / itemsAPiece] - 1; // the very first is fresh: 0
            for (std::size_t i = begin; i < end; ++i) {
                rank += fresh_[i];
                order_.ranks[order_.places[i]] = rank;
            }
        });
    }

    ColumnKeys& keys_;
    ColumnOrder order_;
    Room<std::uint8_t> fresh_; // of each place in the order
    std::size_t filled_ = 0;
    unsigned threads_;
};

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

// Where the first run at or behind this place begins, or the end.
std::size_t nextRun(const ColumnOrder& order, std::size_t at) {
    const std::size_t all = order.places.size();
    for (; at < all && at % 64 != 0; ++at)
        if (order.startsRun(at)) return at;
    for (std::size_t word = (at + 63) / 64; word < order.fresh.size(); ++word)
        if (const std::uint64_t bits = order.fresh[word]; bits != 0)
            return word * 64 + static_cast<std::size_t>(std::countr_zero(bits));
    return all;
}

// Calls take(begin, end) for the runs of equals that begin in [from, to), the last one first.
template <class Take>
void eachRunBackwards(const ColumnOrder& order, std::size_t from, std::size_t to, Take take) {
    std::size_t end = none;
    for (std::size_t word = (to + 63) / 64; word-- > from / 64;) {
        std::uint64_t bits = order.fresh[word];
        while (bits != 0) {
            const auto top = static_cast<unsigned>(std::bit_width(bits)) - 1;
            bits &= ~(std::uint64_t{1} << top);
            const std::size_t begin = word * 64 + top;
            if (end == none) end = nextRun(order, begin + 1);
            take(begin, end);
            end = begin;
        }
    }
}

} // namespace

void ColumnOrder::list(std::vector<std::uint32_t>& list, bool ascending, unsigned threads) const {
    forPieces(places.size(), threads, [&](std::size_t begin, std::size_t end) {
        if (ascending) {
            std::copy_n(places.data() + begin, end - begin, list.data() + begin);
            return;
        }
        std::uint32_t* const behindAll = list.data() + list.size();
        eachRunBackwards(*this, begin, end, [&](std::size_t first, std::size_t behind) {
            std::copy(places.data() + first, places.data() + behind, behindAll - behind);
        });
    });
}

std::vector<std::uint32_t> ColumnOrder::picked(std::span<const std::uint32_t> some, bool ascending,
                                               unsigned threads) const {
    std::vector<std::uint64_t> wanted((places.size() + 63) / 64);
    for (const std::uint32_t place : some)
        wanted[place / 64] |= std::uint64_t{1} << (place % 64);
    const auto isWanted = [&](std::uint32_t place) {
        return (wanted[place / 64] >> (place % 64) & std::uint64_t{1}) != 0;
    };
    const std::size_t pieces = (places.size() + itemsAPiece - 1) / itemsAPiece;
    std::vector<std::vector<std::uint32_t>> found(pieces);
    forPieces(places.size(), threads, [&](std::size_t begin, std::size_t end) {
        std::vector<std::uint32_t>& own = found[begin / itemsAPiece];
        const auto take = [&](std::size_t first, std::size_t behind) {
            for (std::size_t i = first; i < behind; ++i)
                if (isWanted(places[i])) own.push_back(places[i]);
        };
        if (ascending)
            take(begin, end);
        else
            eachRunBackwards(*this, begin, end, take);
    });
    if (!ascending) std::ranges::reverse(found);
    std::vector<std::uint32_t> all;
    all.reserve(some.size());
    for (const auto& part : found)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

std::size_t ColumnOrder::bytes() const {
    return ranks.bytes() + places.bytes() + fresh.bytes();
}

ColumnOrder orderRows(const ColumnStore& store, int column, std::span<const RowNumber> rows,
                      unsigned threads) {
    ColumnKeys keys(store, column, rows, threads);
    return Ranking(keys, rows.size(), threads).run();
}

std::shared_ptr<const ColumnOrder> KeptOrder::reaching(std::size_t rows) const {
    const std::scoped_lock lock(mutex_);
    return order_ && order_->ranks.size() >= rows ? order_ : nullptr;
}

std::size_t KeptOrder::bytes() const {
    const std::scoped_lock lock(mutex_);
    return order_ ? order_->bytes() : 0;
}

std::shared_ptr<const ColumnOrder> KeptOrder::extended(const ColumnStore& store, int column,
                                                       std::size_t rows, unsigned threads) {
    const std::scoped_lock one(computing_);
    if (auto there = reaching(rows)) return there;
    RowList all(static_cast<std::size_t>(store.rows()));
    std::iota(all.begin(), all.end(), RowNumber{0});
    auto made = std::make_shared<const ColumnOrder>(orderRows(store, column, all, threads));
    const std::scoped_lock lock(mutex_);
    order_ = made;
    return made;
}

} // namespace norvel::adodb
