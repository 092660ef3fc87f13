// What every provider that writes changed rows does alike.
#pragma once

#include "platform/adodb/provider/Provider.h"
#include "platform/adodb/store/Batch.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::adodb {

// Whether the change gives the column a value.
bool givesValue(const RowChange& change, int column);

// An Update's row as it is to become, an Insert's with Empty for what was not given.
std::vector<Variant> rowToBe(const RowChange& change);

// Whether that row says the whole key of its table, without a Null.
bool givesKey(const RowChange& change, const std::vector<Variant>& row);

// Raises DB_E_CONCURRENCYVIOLATION where a column to be written (any of a table, of a Delete) is no
// longer what was read. Of a row that may hold values of other rows every one is looked at: it is
// the table's own row where they all agree.
void checkUnchanged(const RowChange& change, const std::vector<Variant>& now);

// A key may stand for several rows (NULLs in it), a trigger may leave the change out.
void checkOneRow(std::int64_t changed);

// The columns for a SELECT, those that no table has as NULL.
std::string columnList(const RowChange& change,
                       const std::function<std::string(std::string_view column)>& quoted);

// The row that read puts into the batch, as a fetch would have it; of a column that no table has,
// what was read before. DB_E_CONCURRENCYVIOLATION where it puts none.
std::vector<Variant> readBack(const RowChange& change, const std::function<void(Batch&)>& read);

} // namespace norvel::adodb
