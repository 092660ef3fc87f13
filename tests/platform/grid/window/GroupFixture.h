// A grid over a real recordset whose rows fall into groups.
#pragma once

#include "tests/platform/grid/window/GridFixture.h"

#include <string>
#include <vector>

namespace norvel::tests {

// 60 customers: codice (1 to 60), nome, citta ("Torino", "roma", "Roma", "Milano", Null, ""), zona
// ("Nord", "Sud"), saldo.
class GroupTest : public GridTest {
  protected:
    enum Field { Codice, Nome, Citta, Zona, Saldo };
    void openGroups(std::vector<std::string> fields);
    void openPlain();
    // What stands on the lines from the first on: of a group its text, of a row its codice.
    std::vector<std::string> lines();
    std::string line(adodb::RowCount row) { return grid_->LineText(row); }
    // A point of a line beside its sign.
    wxPoint onLine(adodb::RowCount row) const;
    wxPoint onSign(adodb::RowCount row) const;
    void groupBy(std::vector<std::string> fields);
    std::int64_t currentCode() const;

    adodb::RecordsetRef customers_;
};

} // namespace norvel::tests
