#include "platform/grid/groups/Lines.h"

#include "platform/adodb/sort/CellOrder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace norvel::grid {

using adodb::RowCount;

void Lines::SetPlain(RowCount rows) {
    levels_.clear();
    rows_ = rows;
}

void Lines::SetGroups(adodb::Grouping groups, const Expansion& expansion, const ValueOf& value) {
    rows_ = groups.rows;
    levels_.clear();
    for (auto& starts : groups.starts) {
        Level& made = levels_.emplace_back();
        made.open.assign(starts.size(), expansion.All());
        made.starts = std::move(starts);
    }
    openAsBefore(expansion, value);
    countLines();
}

// Groups that are not as all are; those that are not there are passed over.
void Lines::openAsBefore(const Expansion& expansion, const ValueOf& value) {
    for (const GroupPath& path : expansion.Others())
        if (const auto group = Find(path, value))
            level(group->level).open[static_cast<std::size_t>(group->number)] = !expansion.All();
}

// Level by level, among the groups inside the one found before, which ascend by their values.
std::optional<GroupId> Lines::Find(const GroupPath& path, const ValueOf& value) const {
    if (path.empty() || path.size() > levels_.size()) return std::nullopt;
    GroupId found;
    Span around{0, rows_};
    for (const Variant& wanted : path) {
        const int inside = found.level + 1;
        const std::vector<RowCount>& starts = level(inside).starts;
        const auto begin = std::ranges::lower_bound(starts, around.first);
        const auto end = std::ranges::lower_bound(starts, around.first + around.count);
        const auto at = std::partition_point(begin, end, [&](RowCount row) {
            return adodb::compareCells(value(inside, row), wanted) < 0;
        });
        if (at == end || adodb::compareCells(value(inside, *at), wanted) != 0) return std::nullopt;
        found = {inside, at - starts.begin()};
        around = RowsOf(found);
    }
    return found;
}

void Lines::countLines() {
    for (int number = Levels() - 1; number >= 0; --number) {
        const RowCount groups = groupCount(number);
        std::vector<RowCount> counts;
        counts.reserve(static_cast<std::size_t>(groups));
        for (RowCount g = 0; g < groups; ++g)
            counts.push_back(1 + (IsOpen({number, g}) ? contentLines({number, g}) : 0));
        level(number).lines = PrefixSums(std::move(counts));
    }
}

RowCount Lines::groupCount(int number) const {
    return static_cast<RowCount>(level(number).starts.size());
}

// The number of the first group inside, one level further in.
RowCount Lines::firstInside(GroupId group) const {
    const std::vector<RowCount>& inner = level(group.level + 1).starts;
    if (group.number == groupCount(group.level)) return static_cast<RowCount>(inner.size());
    const RowCount first = level(group.level).starts[static_cast<std::size_t>(group.number)];
    return std::ranges::lower_bound(inner, first) - inner.begin();
}

// What an open group has below its own line.
RowCount Lines::contentLines(GroupId group) const {
    if (innermost(group.level)) return RowsOf(group).count;
    const PrefixSums& inner = level(group.level + 1).lines;
    return inner.Sum(firstInside({group.level, group.number + 1})) - inner.Sum(firstInside(group));
}

RowCount Lines::Count() const {
    if (levels_.empty()) return rows_;
    return levels_.front().lines.Sum(groupCount(0));
}

Line Lines::At(RowCount line) const {
    if (levels_.empty()) return {line, {}};
    GroupId group;
    for (int number = 0;; ++number) {
        const PrefixSums& lines = level(number).lines;
        const RowCount before = number == 0 ? 0 : lines.Sum(firstInside(group));
        group = {number, lines.IndexAt(before + line)};
        line -= lines.Sum(group.number) - before;
        const RowCount first = level(number).starts[static_cast<std::size_t>(group.number)];
        if (line == 0) return {first, group};
        --line;
        if (innermost(number)) return {first + line, {}};
    }
}

// Walks from the outermost group of the row inwards: as far as its group of that level, or as a
// closed one.
Lines::Found Lines::findRow(RowCount row, int untilLevel) const {
    Found found{0, false};
    GroupId group;
    for (int number = 0; number < Levels(); ++number) {
        const PrefixSums& lines = level(number).lines;
        const RowCount before = number == 0 ? 0 : lines.Sum(firstInside(group));
        group = GroupOf(row, number);
        found.line += lines.Sum(group.number) - before;
        if (number == untilLevel) return found;
        if (!IsOpen(group)) return {found.line, true};
        ++found.line;
    }
    found.line += row - (levels_.empty() ? 0 : RowsOf(group).first);
    return found;
}

RowCount Lines::LineOfRow(RowCount row) const {
    const Found found = findRow(row, Levels());
    return found.hidden ? -1 : found.line;
}

RowCount Lines::NearestLine(RowCount row) const {
    return findRow(row, Levels()).line;
}

RowCount Lines::LineOfGroup(GroupId group) const {
    const Found found = findRow(RowsOf(group).first, group.level);
    return found.hidden ? -1 : found.line;
}

Lines::Span Lines::RowsOf(GroupId group) const {
    const std::vector<RowCount>& starts = level(group.level).starts;
    const auto at = static_cast<std::size_t>(group.number);
    const RowCount end = at + 1 < starts.size() ? starts[at + 1] : rows_;
    return {starts[at], end - starts[at]};
}

GroupId Lines::GroupOf(RowCount row, int number) const {
    const std::vector<RowCount>& starts = level(number).starts;
    return {number, std::ranges::upper_bound(starts, row) - starts.begin() - 1};
}

std::optional<GroupId> Lines::Parent(const Line& line) const {
    const int own = line.IsGroup() ? line.group.level : Levels();
    if (own == 0) return std::nullopt;
    return GroupOf(line.row, own - 1);
}

std::optional<Lines::Range> Lines::RowsBetween(RowCount from, RowCount to) const {
    const Line top = At(std::min(from, to));
    const Line bottom = At(std::max(from, to));
    RowCount last = bottom.row;
    if (bottom.IsGroup()) last += IsOpen(bottom.group) ? -1 : RowsOf(bottom.group).count - 1;
    if (last < top.row) return std::nullopt;
    return from <= to ? Range{top.row, last} : Range{last, top.row};
}

bool Lines::IsOpen(GroupId group) const {
    return level(group.level).open[static_cast<std::size_t>(group.number)];
}

void Lines::SetOpen(GroupId group, bool open) {
    if (IsOpen(group) == open) return;
    level(group.level).open[static_cast<std::size_t>(group.number)] = open;
    const RowCount content = contentLines(group);
    const RowCount by = open ? content : -content;
    const RowCount row = RowsOf(group).first;
    for (;;) {
        level(group.level).lines.Add(group.number, by);
        if (group.level == 0) return;
        group = GroupOf(row, group.level - 1);
        if (!IsOpen(group)) return;
    }
}

void Lines::SetAllOpen(bool open) {
    for (Level& each : levels_)
        each.open.assign(each.starts.size(), open);
    countLines();
}

std::vector<GroupId> Lines::HidingRow(RowCount row) const {
    std::vector<GroupId> hiding;
    for (int number = 0; number < Levels(); ++number)
        if (const GroupId group = GroupOf(row, number); !IsOpen(group)) hiding.push_back(group);
    return hiding;
}

} // namespace norvel::grid
