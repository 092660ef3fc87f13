// A filter ready to run over the columns of a store.
#pragma once

#include "platform/adodb/filter/Criteria.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <functional>
#include <memory>
#include <vector>

namespace norvel::adodb {

class FilterProgram {
  public:
    // Raises 3265 for a column that is not there, 3001 for a value that its column cannot be
    // compared with.
    static std::shared_ptr<const FilterProgram> compile(const Criteria& criteria,
                                                        const std::vector<ColumnInfo>& columns);
    virtual ~FilterProgram();

    // Appends the rows from first up to, not including, last that match, ascending. Over many rows
    // it runs on several threads; threads: at most so many, 0: as it sees fit.
    virtual void run(const ColumnStore& store, RowNumber first, RowNumber last, RowList& hits,
                     unsigned threads = 0) const = 0;
    // Appends those of the given rows (in any order, which is kept) that match.
    virtual void runOver(const ColumnStore& store, const RowList& rows, RowList& hits,
                         unsigned threads = 0) const = 0;
    virtual bool matches(const ColumnStore& store, RowNumber row) const = 0;
    // True where every row that this keeps is known to be one that the other keeps: a needle that
    // grew, a further condition. False where it cannot be told.
    virtual bool narrows(const FilterProgram& other) const = 0;
};

} // namespace norvel::adodb
