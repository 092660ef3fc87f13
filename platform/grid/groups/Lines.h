// What stands under the headings, line by line: rows, and above each group of rows a line of its
// own. Plain data, without a recordset.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/grid/groups/Expansion.h"
#include "platform/grid/groups/PrefixSums.h"

#include <functional>
#include <optional>
#include <vector>

namespace norvel::grid {

// A group: its level (0: the outermost) and its number among the groups of that level.
struct GroupId {
    int level = -1;
    adodb::RowCount number = -1;
    bool operator==(const GroupId&) const = default;
};

// A line is a row, or the line above the rows (or the groups) of a group. Lines count from 0, and
// so do rows: as the recordset that was grouped has them.
struct Line {
    adodb::RowCount row = -1; // of a group: its first one
    GroupId group;            // of a row: none
    bool IsGroup() const { return group.level >= 0; }
    bool operator==(const Line&) const = default;
};

// The lines on show: a closed group hides what is in it. Without groups every row is a line.
// Finding a line or a row, opening and closing take steps as the logarithm of the groups.
class NR_API Lines {
  public:
    // The value of a row's group of this level.
    using ValueOf = std::function<Variant(int level, adodb::RowCount row)>;

    void SetPlain(adodb::RowCount rows);
    // Which groups are open: as expansion says; value is asked for a few groups only.
    void SetGroups(adodb::Grouping groups, const Expansion& expansion, const ValueOf& value);
    int Levels() const { return static_cast<int>(levels_.size()); }

    adodb::RowCount Count() const;
    adodb::RowCount Rows() const { return rows_; }
    Line At(adodb::RowCount line) const; // line below Count()
    // The line of a row; -1: a closed group hides it.
    adodb::RowCount LineOfRow(adodb::RowCount row) const;
    // The same, or the line of the closed group that hides it.
    adodb::RowCount NearestLine(adodb::RowCount row) const;
    // -1: a closed group hides it.
    adodb::RowCount LineOfGroup(GroupId group) const;

    // The rows of a group: [first, first + count).
    struct Span {
        adodb::RowCount first = 0, count = 0;
    };
    Span RowsOf(GroupId group) const;
    GroupId GroupOf(adodb::RowCount row, int level) const;
    // The innermost group that a row is in, or the one around a group; none: there is none.
    std::optional<GroupId> Parent(const Line& line) const;
    // The rows from one line to another, in that direction: of a closed group's line all its rows,
    // of an open one's none of its own. none: there are none.
    struct Range {
        adodb::RowCount first = 0, last = 0; // first > last: upwards
        bool operator==(const Range&) const = default;
    };
    std::optional<Range> RowsBetween(adodb::RowCount from, adodb::RowCount to) const;

    // The group of these values; none where it is not there.
    std::optional<GroupId> Find(const GroupPath& path, const ValueOf& value) const;

    bool IsOpen(GroupId group) const;
    void SetOpen(GroupId group, bool open);
    void SetAllOpen(bool open);
    // The groups that hide the row, the outermost first.
    std::vector<GroupId> HidingRow(adodb::RowCount row) const;

  private:
    struct Level {
        std::vector<adodb::RowCount> starts;
        std::vector<bool> open;
        PrefixSums lines; // of each group, itself included, as if those around it were open
    };
    const Level& level(int number) const { return levels_[static_cast<std::size_t>(number)]; }
    Level& level(int number) { return levels_[static_cast<std::size_t>(number)]; }
    bool innermost(int number) const { return number + 1 == Levels(); }
    adodb::RowCount groupCount(int number) const;
    adodb::RowCount firstInside(GroupId group) const;
    adodb::RowCount contentLines(GroupId group) const;
    void openAsBefore(const Expansion& expansion, const ValueOf& value);
    void countLines();
    struct Found {
        adodb::RowCount line = 0;
        bool hidden = false; // the line is that of a closed group
    };
    Found findRow(adodb::RowCount row, int untilLevel) const;

    std::vector<Level> levels_;
    adodb::RowCount rows_ = 0;
};

} // namespace norvel::grid
