#include "platform/adodb/group/GroupRows.h"

#include "platform/adodb/sort/CellOrder.h"
#include "platform/adodb/sort/ColumnRanks.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>

namespace norvel::adodb {

std::vector<SortKey> groupKeys(const std::vector<std::string>& fields,
                               const std::vector<SortKey>& sort) {
    std::vector<SortKey> keys;
    const auto add = [&](const SortKey& key) {
        const bool named = std::ranges::any_of(
            keys, [&](const SortKey& other) { return equalsText(other.name, key.name); });
        if (!named) keys.push_back(key);
    };
    for (const std::string& field : fields)
        add({field, true});
    std::ranges::for_each(sort, add);
    return keys;
}

std::string sortText(const std::vector<SortKey>& keys) {
    std::string text;
    for (const SortKey& key : keys)
        text += (text.empty() ? "[" : ", [") + replaceText(key.name, "]", "]]") +
                (key.ascending ? "]" : "] DESC");
    return text;
}

namespace {

using Equal = std::function<bool(RowNumber, RowNumber)>;

// By the ranks of the column's values where they are kept, else by the values.
Equal equalIn(const ColumnStore& store, int column, std::size_t reach) {
    if (auto kept = store.derived().of<KeptOrder>(column)->reaching(reach))
        return [kept](RowNumber a, RowNumber b) { return kept->ranks[a] == kept->ranks[b]; };
    const DataTypeEnum type = store.columns()[static_cast<std::size_t>(column)].type;
    return [&store, column, type](RowNumber a, RowNumber b) {
        const auto left = store.find(a);
        const auto right = store.find(b);
        return compareCells(left.group->segment(column), left.row, right.group->segment(column),
                            right.row, type) == 0;
    };
}

// Where the run of equals that begins at first ends, at end at the latest.
RowCount runEnd(const RowList& list, RowCount first, RowCount end, const Equal& equal) {
    const auto at = [&](RowCount i) { return list[static_cast<std::size_t>(i)]; };
    RowCount inside = first;
    RowCount step = 1;
    while (inside + step < end && equal(at(first), at(inside + step))) {
        inside += step;
        step *= 2;
    }
    for (step = std::min(step, end - inside); step > 0; step /= 2)
        while (inside + step < end && equal(at(first), at(inside + step)))
            inside += step;
    return inside + 1;
}

} // namespace

Grouping groupsOf(const ColumnStore& store, const RowList& list, std::span<const int> columns) {
    Grouping groups;
    groups.rows = static_cast<RowCount>(list.size());
    const std::size_t reach = list.empty() ? 0 : std::size_t{*std::ranges::max_element(list)} + 1;
    std::vector<RowCount> outer;
    if (!list.empty()) outer.push_back(0);
    for (const int column : columns) {
        const Equal equal = equalIn(store, column, reach);
        std::vector<RowCount> starts;
        for (std::size_t g = 0; g < outer.size(); ++g) {
            const RowCount end = g + 1 < outer.size() ? outer[g + 1] : groups.rows;
            for (RowCount first = outer[g]; first < end; first = runEnd(list, first, end, equal))
                starts.push_back(first);
        }
        outer = starts;
        groups.starts.push_back(std::move(starts));
    }
    return groups;
}

namespace {

constexpr RowCount blockRows = 4096;

// Goes over rows of values and notes where a group of each level begins.
class GroupFinder {
  public:
    explicit GroupFinder(std::size_t levels) { groups_.starts.resize(levels); }

    void take(const RowBlock& block) {
        for (RowCount row = 0; row < block.rows; ++row)
            takeRow(block, static_cast<std::size_t>(row));
    }
    Grouping& groups() { return groups_; }

  private:
    void takeRow(const RowBlock& block, std::size_t row) {
        bool differs = groups_.rows == 0;
        if (differs) last_.resize(block.values.size());
        for (std::size_t level = 0; level < block.values.size(); ++level) {
            const Variant& value = block.values[level][row];
            differs = differs || compareCells(value, last_[level]) != 0;
            if (!differs) continue;
            groups_.starts[level].push_back(groups_.rows);
            last_[level] = value;
        }
        ++groups_.rows;
    }

    Grouping groups_;
    std::vector<Variant> last_; // the values of the row before
};

} // namespace

// Of any recordset, by what it offers. A fetch that broke off is met by asking for no more rows
// than came.
Grouping Recordset::GroupBy(const std::vector<std::string>& fields) {
    std::vector<Variant> named;
    named.reserve(fields.size());
    for (const std::string& field : fields)
        named.emplace_back(Fields().Item(field).Name());
    SetSort(sortText(groupKeys(fields, parseSort(Sort()))));
    GroupFinder finder(fields.size());
    RowCount left = std::max<RowCount>(0, RecordCount());
    if (left > 0) MoveFirst();
    while (left > 0) {
        const RowBlock block = GetRows(std::min(left, blockRows), {}, named);
        if (block.rows == 0) break;
        finder.take(block);
        left -= block.rows;
    }
    return std::move(finder.groups());
}

} // namespace norvel::adodb
