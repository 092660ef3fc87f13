#include "tests/platform/grid/window/GroupFixture.h"

#include <array>

namespace norvel::tests {

using namespace adodb;

void GroupTest::openPlain() {
    static const std::array<Variant, 6> cities{"Torino", "roma",          "Roma",
                                               "Milano", Variant::null(), ""};
    customers_ = makeClientRecordset();
    adodb::Fields& fields = customers_->Fields();
    fields.Append("codice", adInteger);
    fields.Append("nome", adVarWChar, 40);
    fields.Append("citta", adVarWChar, 40, adFldIsNullable);
    fields.Append("zona", adVarWChar, 10);
    fields.Append("saldo", adDouble);
    customers_->Open();
    for (int i = 0; i < 60; ++i)
        customers_->AddNew({"codice", "nome", "citta", "zona", "saldo"},
                           {i + 1, "Cliente " + std::to_string(60 - i),
                            cities[static_cast<std::size_t>(i % 6)], i % 4 < 2 ? "Nord" : "Sud",
                            i * 1.25});
    customers_->MoveFirst();
    openOver(customers_);
}

void GroupTest::openGroups(std::vector<std::string> fields) {
    openPlain();
    groupBy(std::move(fields));
}

void GroupTest::groupBy(std::vector<std::string> fields) {
    grid_->Style().DataView = grid::dataViewGroups;
    grid_->Style().GroupColumns = std::move(fields);
    grid_->Changed();
    robot_.pump();
}

std::vector<std::string> GroupTest::lines() {
    std::vector<std::string> found;
    for (RowCount row = 0; row < grid_->LineCount(); ++row)
        found.push_back(grid_->IsGroupRow(row) ? grid_->LineText(row)
                                               : grid_->CellText(row, Codice));
    return found;
}

wxPoint GroupTest::onLine(RowCount row) const {
    const wxRect r = grid_->GroupRect(row);
    return {r.x + r.width / 2, r.y + r.height / 2};
}

wxPoint GroupTest::onSign(RowCount row) const {
    return centre(grid_->GroupSignRect(row));
}

std::int64_t GroupTest::currentCode() const {
    return customers_->Fields()("codice").Value().toI8();
}

} // namespace norvel::tests
