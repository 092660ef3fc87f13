#include "tests/platform/grid/export/Articles.h"

namespace norvel::tests {

using namespace adodb;

RecordsetRef fabricated(const std::vector<std::pair<std::string, DataTypeEnum>>& fields,
                        const std::vector<std::vector<Variant>>& rows) {
    RecordsetRef recordset = makeClientRecordset();
    std::vector<Variant> names;
    for (const auto& [name, type] : fields) {
        recordset->Fields().Append(name, type, type == adVarWChar ? 50 : 0, adFldIsNullable);
        names.emplace_back(name);
    }
    recordset->SetLockType(adLockOptimistic);
    recordset->Open();
    for (const auto& row : rows) {
        recordset->AddNew(names, row);
        recordset->Update();
    }
    if (!rows.empty()) recordset->MoveFirst();
    return recordset;
}

RecordsetRef articles() {
    const Variant null = Variant::null();
    return fabricated(
        {{"codice", adInteger},
         {"nome", adVarWChar},
         {"prezzo", adCurrency},
         {"peso", adDouble},
         {"data", adDate},
         {"attivo", adBoolean},
         {"note", adLongVarWChar}},
        {{1, "Vite M4", Currency{12'3400}, 0.5, Date{40617}, true, "prima\r\nseconda"},
         {2, "Rondella <4> & \"dado\"; più", Currency{-5000}, 1234567.25, Date{40617.75}, false,
          "à è ì"},
         {3, null, null, null, null, null, null}});
}

grid::Columns columnsOf(Recordset& recordset) {
    grid::Columns columns;
    for (int i = 0; i < recordset.Fields().Count(); ++i) {
        grid::Column column;
        column.DataField = recordset.Fields()(i).Name();
        column.Caption = column.DataField;
        column.Caption[0] = static_cast<char>(column.Caption[0] - 'a' + 'A');
        column.DataType = recordset.Fields()(i).Type();
        column.Order = i;
        columns.Add(column);
    }
    return columns;
}

} // namespace norvel::tests
