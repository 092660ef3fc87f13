#include "platform/grid/groups/GroupText.h"

#include "platform/runtime/Text.h"

namespace norvel::grid {

std::string groupText(const Column& column, std::string_view value, bool null, adodb::RowCount rows,
                      bool more) {
    std::string text = column.Caption + ": ";
    if (!trimText(value).empty())
        text += value;
    else
        text += null ? "(nessun valore)" : "(vuoto)";
    return text + " (" + std::to_string(rows) + (more ? "…)" : ")");
}

} // namespace norvel::grid
