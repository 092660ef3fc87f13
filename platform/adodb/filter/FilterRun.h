// A filter's conditions, run over the row groups of a store.
#pragma once

#include "platform/adodb/filter/Conditions.h"

#include <vector>

namespace norvel::adodb {

// As FilterProgram says; a row matches where all conditions of one alternative hold, or there are
// no alternatives.
void runFilter(const ColumnStore& store, const std::vector<Conditions>& alternatives,
               RowNumber first, RowNumber last, RowList& hits, unsigned threads);
void runFilterOver(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                   const RowList& rows, RowList& hits, unsigned threads);
bool rowMatches(const ColumnStore& store, const std::vector<Conditions>& alternatives,
                RowNumber row);

} // namespace norvel::adodb
