#include "platform/adodb/sort/SortOrder.h"

#include "platform/adodb/Errors.h"
#include "platform/adodb/sort/CellOrder.h"
#include "platform/adodb/sort/ColumnRanks.h"
#include "platform/adodb/sort/ParallelSort.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <functional>
#include <iterator>
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
        if (!std::ranges::is_sorted(rows)) std::ranges::sort(rows);
        if (keys_.empty() || rows.size() < 2) return;
        Ranks places = ranksOf(store, keys_.front(), rows, threads);
        for (std::size_t k = 1; k < keys_.size(); ++k)
            refine(places, ranksOf(store, keys_[k], rows, threads), threads);
        const auto sorted = sortMade<std::uint64_t>(
            rows.size(), [&](std::size_t i) { return pair(places[i], rows[i]); }, std::less<>(),
            threads);
        std::ranges::transform(sorted, rows.begin(),
                               [](std::uint64_t each) { return static_cast<RowNumber>(each); });
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
                const std::uint32_t left = (*kept[k])[x];
                const std::uint32_t right = (*kept[k])[y];
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
    static std::uint64_t pair(std::uint32_t high, std::uint32_t low) {
        return std::uint64_t{high} << 32U | low;
    }
    static std::size_t reach(const RowList& rows) {
        return rows.empty() ? 0 : std::size_t{*std::ranges::max_element(rows)} + 1;
    }

    // Of the rows, which ascend, in the key's direction. A small part of a column that has no ranks
    // yet, or has grown since, is ranked by itself.
    static Ranks ranksOf(const ColumnStore& store, const Direction& key, const RowList& rows,
                         unsigned threads) {
        const auto keeper = store.derived().of<KeptRanks>(key.column);
        const std::size_t needed = std::size_t{rows.back()} + 1;
        auto kept = keeper->reaching(needed);
        if (!kept && rows.size() >= static_cast<std::size_t>(store.rows()) / 2)
            kept = keeper->extended(store, key.column, needed, threads);
        Ranks ranks;
        if (kept) {
            ranks.reserve(rows.size());
            for (const RowNumber row : rows)
                ranks.push_back((*kept)[row]);
        } else {
            ranks = rankRows(store, key.column, rows, threads);
        }
        if (!key.ascending)
            for (std::uint32_t& rank : ranks)
                rank = ~rank;
        return ranks;
    }

    // Tells apart by further what is equal in places.
    static void refine(Ranks& places, const Ranks& further, unsigned threads) {
        using Item = std::pair<std::uint64_t, std::uint32_t>;
        const auto sorted = sortMade<Item>(
            places.size(),
            [&](std::size_t i) {
                return Item{pair(places[i], further[i]), static_cast<std::uint32_t>(i)};
            },
            [](const Item& a, const Item& b) { return a.first < b.first; }, threads);
        std::uint32_t place = 0;
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (i > 0 && sorted[i].first != sorted[i - 1].first) ++place;
            places[sorted[i].second] = place;
        }
    }

    // The ranks of every key, or fewer where a few comparisons of values cost less than ranks that
    // are not there.
    std::vector<std::shared_ptr<const Ranks>>
    ranksToMerge(const ColumnStore& store, const RowList& a, const RowList& b) const {
        std::vector<std::shared_ptr<const Ranks>> found;
        const std::size_t needed = std::max(reach(a), reach(b));
        const std::size_t few = std::min(a.size(), b.size());
        const bool worth = few * muchShorter > static_cast<std::size_t>(store.rows());
        for (const Direction& key : keys_) {
            const auto keeper = store.derived().of<KeptRanks>(key.column);
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
