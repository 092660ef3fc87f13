// The changes of the current row that are not saved yet.
#pragma once

#include "platform/adodb/Recordset.h"

#include <map>
#include <optional>
#include <string>

namespace norvel::grid {

// Why cells of rows that nobody can change are not edited.
inline constexpr const char* readOnlyRows =
    "I record di questo elenco sono di sola lettura: non si possono modificare.";

// Cells are changed one after the other by Begin and Set; the recordset holds the changes as an
// edit in progress until Save or Undo. Fields are numbers. Every member that takes the recordset
// raises what it raises, and then nothing has changed here.
class NR_API RowEdit {
  public:
    bool Pending() const { return !values_.empty(); }

    // A cell is entered: what it holds now is what UndoCell returns to.
    void Begin(int field);
    void Set(adodb::Recordset& recordset, const Variant& value); // of the cell entered last
    // The cell entered last is as it was then; the row's other changes stay.
    void UndoCell(adodb::Recordset& recordset);
    void Save(adodb::Recordset& recordset);
    void Undo(adodb::Recordset& recordset);
    // The recordset has saved or undone them by itself, or has left the row.
    void Forget() { values_.clear(); }

    // How a changed cell is shown, which a clone of the recordset does not know yet; null: it is
    // not changed.
    const std::string* Text(int field) const;

  private:
    struct Changed {
        Variant value;
        std::string text;
    };
    std::map<int, Changed> values_;
    int field_ = -1;
    std::optional<Variant> before_; // its change when it was entered; nullopt: it had none
};

} // namespace norvel::grid
