// The order of rows by the values of some columns.
#pragma once

#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

struct SortKey {
    std::string name; // of the column, without brackets
    bool ascending = true;
};

// "f1 [ASC|DESC], [f 2] …", any number of blanks between the words; empty: no sort. Raises 3001
// where the text breaks the grammar.
std::vector<SortKey> parseSort(std::string_view text);

// NULLs come first ascending; texts by Italian collation, case-blind; equal rows keep the order of
// their numbers, whatever the direction.
class SortOrder {
  public:
    // Raises 3265 for a column that is not there, DB_E_CANTORDER for one that is named twice.
    static std::shared_ptr<const SortOrder> make(const std::vector<SortKey>& keys,
                                                 const std::vector<ColumnInfo>& columns);
    virtual ~SortOrder();

    // Puts rows of the store, each named once, into this order. The orders of whole columns are
    // computed once and kept (ColumnStore::derived()). threads: at most so many, 0: as it sees fit.
    virtual void sort(const ColumnStore& store, RowList& rows, unsigned threads = 0) const = 0;
    // Both lists are in this order; the result is all of them in this order.
    virtual RowList merge(const ColumnStore& store, const RowList& a, const RowList& b) const = 0;
    // <0, 0, >0 by the values alone.
    virtual int compare(const ColumnStore& store, RowNumber a, RowNumber b) const = 0;
    // True where the other order by the same columns is this one with every direction turned.
    virtual bool reverses(const SortOrder& other) const = 0;
};

} // namespace norvel::adodb
