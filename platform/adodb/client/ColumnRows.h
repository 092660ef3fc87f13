// The rows on show of a recordset of this engine, read as columns: for what goes through all of
// them.
#pragma once

#include "platform/adodb/Recordset.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <memory>
#include <optional>

namespace norvel::adodb {

class RowSet;
class View;

// Keeps the rows as they are, whatever becomes of the recordset. The owner thread alone asks for
// numbers; the values of the rows may then be read by any thread, while the owner changes none.
class NR_API ColumnRows {
  public:
    // nullopt where the recordset is of another making, or not open.
    static std::optional<ColumnRows> of(const Recordset& recordset);

    RowCount count() const; // of the rows on show
    // The numbers of the rows at the places [first, first + places), as far as there are rows.
    void numbers(RowCount first, RowCount places, RowList& numbers) const;
    // Whether the row at each place is the one of that number.
    bool inStoreOrder() const;
    const ColumnStore& store() const;

  private:
    ColumnRows(std::shared_ptr<RowSet> rows, std::shared_ptr<View> view);
    std::shared_ptr<RowSet> rows_;
    std::shared_ptr<View> view_;
};

} // namespace norvel::adodb
