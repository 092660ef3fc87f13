// One condition on one column, ready to run.
#pragma once

#include "platform/adodb/filter/Criteria.h"
#include "platform/adodb/store/ColumnInfo.h"
#include "platform/adodb/store/Segment.h"

#include <cstdint>
#include <memory>
#include <span>

namespace norvel::adodb {

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

    // Clears matches[row] for every row of the segment that does not match.
    void narrow(const Segment& segment, DataTypeEnum type, std::span<std::uint8_t> matches) const;
    bool row(const Segment& segment, DataTypeEnum type, std::uint32_t row) const;
    // True where every value that passes this is known to pass the other.
    virtual bool implies(const ColumnTest& other) const = 0;

    virtual bool null() const { return false; }
    virtual bool value(const Variant& value) const = 0; // never NULL

  protected:
    // matches[row] becomes whether the value that lies in the segment passes, whatever stands there
    // for NULL and exceptional rows.
    virtual void plain(const Segment& segment, DataTypeEnum type,
                       std::span<std::uint8_t> matches) const;
    virtual bool plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const;
};

} // namespace norvel::adodb
