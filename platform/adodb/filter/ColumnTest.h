// One condition on one column, ready to run.
#pragma once

#include "platform/adodb/filter/Criteria.h"
#include "platform/adodb/filter/FoldedColumn.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <cstdint>
#include <memory>
#include <string>

namespace norvel::adodb {

// A column's values in one row group, and what is kept of them.
class Cells {
  public:
    Cells(const ColumnStore& store, std::size_t group, int column)
        : segment(store.group(group).segment(column)),
          type(store.columns()[static_cast<std::size_t>(column)].type), store_(store),
          group_(group), column_(column) {}

    const Segment& segment;
    const DataTypeEnum type;

    // Those of the whole group, for a look at so many of its rows. Null where folding would cost
    // more than it spares: of a small group, or for few rows where it was not done yet.
    const FoldedSegment* folded(std::size_t looks) const;

  private:
    const ColumnStore& store_;
    std::size_t group_;
    int column_;
    mutable std::shared_ptr<const FoldedSegment> folded_;
};

// What a value is compared with depends on the column's type:
// - a number or True/False with a number: as numbers (True is -1); with a Boolean: any number but 0
//   is True, and only = and <> are allowed; with a date: days; with a text: as the text it is.
// - a quoted text with a text: = and <> case-blind, < and > by Italian collation. With any other
//   type it is compared with the value's text as the grid shows it, by = and <> and LIKE; by < and
//   > it is read as a number or a date by Italian conventions.
// - #…# with a date: the moment; a literal without a time is midnight. With a text: the text
//   inside.
// Values of another type than their column's (a text in a number column) are compared as their own
// type's; where that makes no sense the row does not match. NULL matches "= NULL" only. Columns of
// bytes know NULL alone.
class ColumnTest {
  public:
    // Raises 3001 where the clause's value cannot be compared with the column.
    static std::shared_ptr<const ColumnTest> make(const FilterClause& clause,
                                                  const ColumnInfo& column);
    virtual ~ColumnTest();

    // Rows count from 0 in the group. Writes those from begin up to, not including, end that pass,
    // ascending, to rows, which has room for end - begin. Returns how many.
    virtual std::size_t select(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                               RowNumber* rows) const;
    // Keeps those of the ascending rows that pass, in their order. Returns how many.
    virtual std::size_t refine(const Cells& cells, RowNumber* rows, std::size_t count) const;
    bool row(const Segment& segment, DataTypeEnum type, std::uint32_t row) const;
    virtual bool value(const Variant& value) const = 0; // never NULL

    // True where every value that passes this is known to pass the other.
    virtual bool implies(const ColumnTest& other) const = 0;
    // Tests with the same key pass the same values of a column.
    virtual std::string key() const = 0;
    // What looking at a row costs, roughly: of the conditions that hold together the cheap ones run
    // first.
    enum class Cost { Number, Text, Search, Collation };
    virtual Cost cost() const = 0;
    // True where a run over a whole group is so fast that few rows only are worth looking at one by
    // one.
    virtual bool scans(const Segment&) const { return false; }

  protected:
    virtual bool null() const { return false; }
    // select and refine by the values that lie in the segment, whatever stands there for NULL and
    // exceptional rows. These look at the rows one by one.
    virtual std::size_t selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                    RowNumber* rows) const;
    virtual std::size_t refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const;
    virtual bool plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const;
};

using ColumnTestRef = std::shared_ptr<const ColumnTest>;

// select and refine by a question asked of each row's number. Without a branch: what rows answer
// is hardly ever predictable.
template <class Test>
std::size_t selectWhere(std::uint32_t begin, std::uint32_t end, RowNumber* rows, Test test) {
    std::size_t count = 0;
    for (std::uint32_t row = begin; row < end; ++row) {
        rows[count] = row;
        count += static_cast<std::size_t>(test(row));
    }
    return count;
}
template <class Test>
std::size_t refineWhere(RowNumber* rows, std::size_t count, Test test) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const RowNumber row = rows[i];
        rows[kept] = row;
        kept += static_cast<std::size_t>(test(row));
    }
    return kept;
}

} // namespace norvel::adodb
