// Rows in groups: what order puts equal values together, and where the groups begin.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/sort/SortOrder.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <span>
#include <string>
#include <vector>

namespace norvel::adodb {

// By the fields, ascending, then by what sort names beside them. Of a field that is named twice the
// first one counts.
std::vector<SortKey> groupKeys(const std::vector<std::string>& fields,
                               const std::vector<SortKey>& sort);
// As a Sort text.
std::string sortText(const std::vector<SortKey>& keys);

// The groups by these columns of a list that is in their order. Few groups cost little, however
// many rows: a group's end is searched for in steps that double.
Grouping groupsOf(const ColumnStore& store, const RowList& list, std::span<const int> columns);

} // namespace norvel::adodb
