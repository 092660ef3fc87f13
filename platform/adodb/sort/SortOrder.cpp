#include "platform/adodb/sort/SortOrder.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/sort/CellOrder.h"
#include "platform/adodb/sort/ColumnRanks.h"
#include "platform/adodb/sort/RadixSort.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>
#include <utility>

namespace norvel::adodb {

namespace {

struct Direction {
    int column = 0;
    DataTypeEnum type = adEmpty;
    bool ascending = true;
};

// Where one list is so much shorter, its rows look up their places in the other.
constexpr std::size_t muchShorter = 16;
// Where two lists are merged whose values have no ranks yet, so many ranks of the whole store are
// made in the time that one row takes to look up its place by values.
constexpr std::size_t ranksALookUp = 64;
// Where so few of the rows are to be sorted, that is done by their ranks; more are picked from all.
constexpr std::size_t fewRows = 16;

template <class Less>
RowList mergeLists(const RowList& a, const RowList& b, Less less) {
    RowList merged;
    merged.reserve(a.size() + b.size());
    const RowList& few = a.size() < b.size() ? a : b;
    const RowList& many = a.size() < b.size() ? b : a;
    if (few.size() * muchShorter > many.size()) {
        std::merge(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(merged), less);
        return merged;
    }
    auto from = many.begin();
    for (const RowNumber row : few) {
        const auto place = std::lower_bound(from, many.end(), row, less);
        merged.insert(merged.end(), from, place);
        merged.push_back(row);
        from = place;
    }
    merged.insert(merged.end(), from, many.end());
    return merged;
}

class Order : public SortOrder {
  public:
    explicit Order(std::vector<Direction> keys) : keys_(std::move(keys)) {}

    void sort(const ColumnStore& store, RowList& rows, unsigned threads) const override {
        if (rows.empty() || keys_.empty()) {
            std::ranges::sort(rows);
            return;
        }
        const auto kept = keptOrders(store, rows, threads);
        if (kept.size() == keys_.size())
            sortByKept(kept, rows, threads);
        else
            sortByOwn(store, rows, threads);
    }

    RowList merge(const ColumnStore& store, const RowList& a, const RowList& b) const override {
        const auto kept = ranksToMerge(store, a, b);
        if (kept.size() < keys_.size())
            return mergeLists(a, b, [&](RowNumber x, RowNumber y) {
                const int order = compare(store, x, y);
                return order != 0 ? order < 0 : x < y;
            });
        return mergeLists(a, b, [&](RowNumber x, RowNumber y) {
            for (std::size_t k = 0; k < keys_.size(); ++k) {
                const std::uint32_t left = kept[k]->ranks[x];
                const std::uint32_t right = kept[k]->ranks[y];
                if (left != right) return (left < right) == keys_[k].ascending;
            }
            return x < y;
        });
    }

    int compare(const ColumnStore& store, RowNumber a, RowNumber b) const override {
        const auto left = store.find(a);
        const auto right = store.find(b);
        for (const Direction& key : keys_) {
            const int order = compareCells(left.group->segment(key.column), left.row,
                                           right.group->segment(key.column), right.row, key.type);
            if (order != 0) return key.ascending ? order : -order;
        }
        return 0;
    }

    bool reverses(const SortOrder& otherOrder) const override {
        const auto* other = dynamic_cast<const Order*>(&otherOrder);
        return other && !keys_.empty() &&
               std::ranges::equal(keys_, other->keys_, [](const Direction& a, const Direction& b) {
                   return a.column == b.column && a.ascending != b.ascending;
               });
    }

  private:
    using Kept = std::vector<std::shared_ptr<const ColumnOrder>>;

    static std::size_t reach(const RowList& rows) {
        return rows.empty() ? 0 : std::size_t{*std::ranges::max_element(rows)} + 1;
    }

    // The orders of the columns that are kept by now; fewer than keys where a small part of a
    // column that has none yet, or has grown since, is better put in order by itself.
    Kept keptOrders(const ColumnStore& store, const RowList& rows, unsigned threads) const {
        Kept found;
        const std::size_t needed = reach(rows);
        const bool worth = rows.size() >= static_cast<std::size_t>(store.rows()) / 2;
        for (const Direction& key : keys_) {
            const auto keeper = store.derived().of<KeptOrder>(key.column);
            auto order = keeper->reaching(needed);
            if (!order && worth) order = keeper->extended(store, key.column, needed, threads);
            if (!order) break;
            found.push_back(std::move(order));
        }
        return found;
    }

    // By the last key first, then by each before it, equal ones as they stand.
    void sortByKept(const Kept& kept, RowList& rows, unsigned threads) const {
        sortByOne(*kept.back(), keys_.back(), rows, threads);
        for (std::size_t k = keys_.size() - 1; k-- > 0;)
            sortStably(rows, *kept[k], keys_[k], threads);
    }

    static void sortByOne(const ColumnOrder& order, const Direction& key, RowList& rows,
                          unsigned threads) {
        const std::size_t all = order.places.size();
        if (rows.size() == all) {
            order.list(rows, key.ascending, threads);
        } else if (rows.size() >= all / fewRows) {
            rows = order.picked(rows, key.ascending, threads);
        } else {
            if (!std::ranges::is_sorted(rows)) std::ranges::sort(rows);
            sortStably(rows, order, key, threads);
        }
    }

    // The same by the values of these rows alone.
    void sortByOwn(const ColumnStore& store, RowList& rows, unsigned threads) const {
        if (!std::ranges::is_sorted(rows)) std::ranges::sort(rows);
        std::vector<std::uint32_t> places(rows.size());
        std::iota(places.begin(), places.end(), 0U);
        for (std::size_t k = keys_.size(); k-- > 0;) {
            const ColumnOrder own = orderRows(store, keys_[k].column, rows, threads);
            sortStably(places, own, keys_[k], threads);
        }
        std::ranges::transform(places, places.begin(),
                               [&](std::uint32_t place) { return rows[place]; });
        rows = std::move(places);
    }

    static void sortStably(std::vector<std::uint32_t>& places, const ColumnOrder& order,
                           const Direction& key, unsigned threads) {
        const Room<std::uint32_t>& ranks = order.ranks;
        const std::size_t values = order.values();
        if (values <= fewKeys && places.size() > values) {
            const auto last = static_cast<std::uint32_t>(values - 1);
            std::vector<std::uint32_t> sorted(places.size());
            countingSort(
                places.size(), values,
                [&](std::size_t i) {
                    const std::uint32_t rank = ranks[places[i]];
                    return key.ascending ? rank : last - rank;
                },
                [&](std::size_t place, std::size_t i) { sorted[place] = places[i]; }, threads);
            places = std::move(sorted);
            return;
        }
        Room<PackedPlace> items(places.size());
        forPieces(places.size(), threads, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                items[i] = packed(directed(ranks[places[i]], key), places[i]);
        });
        radixSort(items, threads);
        forPieces(places.size(), threads, [&](std::size_t begin, std::size_t end) {
            for (std::size_t i = begin; i < end; ++i)
                places[i] = static_cast<std::uint32_t>(items[i]);
        });
    }

    static std::uint32_t directed(std::uint32_t rank, const Direction& key) {
        return key.ascending ? rank : ~rank;
    }

    // The ranks of every key, or fewer where a few comparisons of values cost less than ranks that
    // are not there.
    Kept ranksToMerge(const ColumnStore& store, const RowList& a, const RowList& b) const {
        Kept found;
        const std::size_t needed = std::max(reach(a), reach(b));
        const std::size_t few = std::min(a.size(), b.size());
        const bool worth = few * ranksALookUp > static_cast<std::size_t>(store.rows());
        for (const Direction& key : keys_) {
            const auto keeper = store.derived().of<KeptOrder>(key.column);
            auto ranks = keeper->reaching(needed);
            if (!ranks && worth) ranks = keeper->extended(store, key.column, needed, 0);
            if (!ranks) break;
            found.push_back(std::move(ranks));
        }
        return found;
    }

    std::vector<Direction> keys_;
};

int columnNamed(const std::string& name, const std::vector<ColumnInfo>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (equalsText(columns[i].name, name)) return static_cast<int>(i);
    throw adoError(adErrItemNotFound, "L'ordinamento nomina il campo «" + name + "».");
}

} // namespace

SortOrder::~SortOrder() = default;

std::shared_ptr<const SortOrder> SortOrder::make(const std::vector<SortKey>& keys,
                                                 const std::vector<ColumnInfo>& columns) {
    std::vector<Direction> directions;
    std::vector<bool> named(columns.size());
    for (const SortKey& key : keys) {
        const auto column = static_cast<std::size_t>(columnNamed(key.name, columns));
        if (named[column])
            throw adoError(dbCantOrder, "Il campo «" + key.name + "» è nominato più volte.");
        named[column] = true;
        directions.push_back({static_cast<int>(column), columns[column].type, key.ascending});
    }
    return std::make_shared<Order>(std::move(directions));
}

} // namespace norvel::adodb
