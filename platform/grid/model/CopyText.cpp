#include "platform/grid/model/CopyText.h"

#include "platform/grid/model/CellText.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <string_view>

namespace norvel::grid {

using adodb::RowBlock;
using adodb::RowCount;

namespace {

constexpr RowCount rowsAtOnce = 1024;

std::string quoted(std::string_view text) {
    std::string cell = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            if (i + 1 >= text.size() || text[i + 1] != '\n') cell += '\n';
            continue;
        }
        if (text[i] == '"') cell += '"';
        cell += text[i];
    }
    return cell + '"';
}

void appendRows(std::string& text, const RowBlock& block, const std::vector<int>& fields) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(block.rows); ++row) {
        if (!text.empty()) text += "\r\n";
        std::size_t read = 0;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (i > 0) text += '\t';
            if (fields[i] >= 0) text += copiedCell(block.values[read++][row]);
        }
    }
}

} // namespace

std::string copiedCell(const Variant& value) {
    if (!value.isText()) return cellText(value);
    std::string text = toValidUtf8(value.text());
    std::ranges::replace(text, '\0', ' '); // would end the clipboard's text
    return text.find_first_of("\t\r\n\"") == std::string::npos ? text : quoted(text);
}

std::string copiedRows(RowReader& reader, const std::vector<std::pair<RowCount, RowCount>>& ranges,
                       const std::vector<int>& fields) {
    std::vector<int> read;
    std::ranges::copy_if(fields, std::back_inserter(read), [](int field) { return field >= 0; });
    std::string text;
    const RowCount end = reader.Rows();
    for (const auto& [first, last] : ranges)
        for (RowCount row = first; row <= std::min(last, end - 1);) {
            const RowCount count = std::min({rowsAtOnce, last - row + 1, end - row});
            const RowBlock block = reader.Values(row, count, read);
            if (block.rows == 0) break;
            appendRows(text, block, fields);
            row += block.rows;
        }
    return text;
}

} // namespace norvel::grid
